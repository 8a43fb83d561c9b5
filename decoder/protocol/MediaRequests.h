#pragma once

namespace vdec {

class RequestRouter;

// Starting and stopping media distributions. Their frames do not pass through the
// router (see FrameIngest).
class MediaRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
