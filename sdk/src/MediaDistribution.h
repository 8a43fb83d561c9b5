#pragma once

#include "MediaLink.h"

#include <cstdint>
#include <memory>

namespace cmatrix::sdk {

class Session;

// One media distribution behind a CMMDHANDLE: the decoder's id for it and the
// connection its frames travel on. It belongs to the handle's connection it was
// started on; once the handle disconnects or connects elsewhere it is over.
class MediaDistribution {
public:
    MediaDistribution(std::weak_ptr<Session> session, uint32_t mediaId, uint64_t generation);
    ~MediaDistribution();
    MediaDistribution(const MediaDistribution&) = delete;
    MediaDistribution& operator=(const MediaDistribution&) = delete;

    uint32_t mediaId() const { return mediaId_; }
    // The handle was destroyed: nothing can be done with it any more.
    bool isOrphan() const;

    int open();
    int send(const unsigned char* frame, int length);
    // Tells the decoder and closes the connection (closed whatever the decoder says).
    int stop();

private:
    std::shared_ptr<Session> session() const;

    const std::weak_ptr<Session> session_;
    const uint32_t mediaId_;
    const uint64_t generation_;
    MediaLink link_;
};

} // namespace cmatrix::sdk
