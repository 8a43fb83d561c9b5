#pragma once

namespace vdec {

class RequestRouter;

// Requests about the banner, the screens' colours and the audio output.
class OutputRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
