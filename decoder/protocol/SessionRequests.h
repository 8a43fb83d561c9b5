#pragma once

namespace vdec {

class RequestRouter;

// Requests about login, logout and the clock.
class SessionRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
