#pragma once

namespace vdec {

class RequestRouter;

// Requests about scenes: store the wall under an id, list, apply and delete.
class SceneRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
