#pragma once

namespace vdec {

class RequestRouter;

// Requests about windows: create, delete, list, move, full screen and division.
class WindowRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
