#pragma once

namespace vdec {

class RequestRouter;

// Requests about display-in-turn schemes and the loops they run in windows.
class SchemeRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
