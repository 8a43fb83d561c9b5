#pragma once

namespace vdec {

class RequestRouter;

// Requests about the unit's own inputs: HDMI connectors and the files on its USB stick.
class InputRequests {
public:
    static void registerIn(RequestRouter& router);
};

} // namespace vdec
