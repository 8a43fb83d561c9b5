#pragma once

namespace vdec {

class RequestRouter;

// Requests about the sources bound to the sub-windows of a window.
class SourceRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
