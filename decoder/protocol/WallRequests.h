#pragma once

namespace vdec {

class RequestRouter;

// Requests about the grid, the screens and the decoder's role in the wall.
class WallRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
