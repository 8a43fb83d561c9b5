// Media: distributions of local sources, and frames shown in a sub-window. Frames
// travel on connections of their own (see MediaLink), never on the control one.

#include "ApiSupport.h"
#include "MediaDistribution.h"
#include "MediaRegistry.h"
#include "Messages.h"

#include <optional>

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

namespace {

// The request around a frame adds a few ids and a length to it.
constexpr size_t kFrameOverhead = 16;

int checkFrame(const unsigned char* frame, int length)
{
    if (!frame || length <= 0)
        return CMATRIX_ERR_INVALID_PARAM;
    if (size_t(length) > WireHeader::kMaxPayload - kFrameOverhead)
        return CMATRIX_ERR_TOO_LARGE;
    return CMATRIX_OK;
}

int displayFrame(Session& session, int windowId, int channel, const unsigned char* frame, int length,
    std::optional<Clock::time_point> until)
{
    if (const int rc = checkFrame(frame, length); rc != CMATRIX_OK)
        return rc;
    std::shared_ptr<Connection> connection;
    if (const int rc = session.displayLink().acquire(session, session.mediaGeneration(), connection, until);
        rc != CMATRIX_OK)
        return rc;
    DisplayFrameRequest request;
    request.windowId = windowId;
    request.channel = channel;
    request.frame.assign(frame, frame + length);
    Empty answer;
    return connection->call(MessageType::DisplayFrame, request, answer, until.value_or(session.deadline()));
}
} // namespace

extern "C" {

CMMDHANDLE CMatrix_StartMediaDistribute(CMHANDLE handle, const char* sourceName, int channel, char* url, int urlSize)
{
    try {
        const std::shared_ptr<Session> session = HandleRegistry::instance().find(handle);
        if (!session || !sourceName || !url || urlSize <= 0)
            return nullptr;
        // Taken first: a reconnect while this runs leaves the distribution dead, not
        // pointed at another decoder.
        const uint64_t generation = session->mediaGeneration();
        const StartMediaRequest request { sourceName, channel };
        StartMediaAnswer answer;
        if (session->call(MessageType::StartMediaDistribute, request, answer) != CMATRIX_OK)
            return nullptr;
        auto distribution = std::make_shared<MediaDistribution>(session, answer.mediaId, generation);
        // A distribution that cannot carry frames is of no use: undone at once.
        if (distribution->open() != CMATRIX_OK) {
            distribution->stop();
            return nullptr;
        }
        copyOut(answer.url, url, urlSize);
        return MediaRegistry::instance().add(std::move(distribution));
    } catch (...) {
        return nullptr;
    }
}

int CMatrix_StopMediaDistribute(CMMDHANDLE media)
{
    try {
        const std::shared_ptr<MediaDistribution> distribution = MediaRegistry::instance().remove(media);
        if (!distribution)
            return CMATRIX_ERR_INVALID_HANDLE;
        return distribution->stop();
    } catch (...) {
        return CMATRIX_ERR_FAILED;
    }
}

int CMatrix_SendMediaFrame(CMMDHANDLE media, const unsigned char* frame, int length)
{
    try {
        const std::shared_ptr<MediaDistribution> distribution = MediaRegistry::instance().find(media);
        if (!distribution)
            return CMATRIX_ERR_INVALID_HANDLE;
        if (const int rc = checkFrame(frame, length); rc != CMATRIX_OK)
            return rc;
        return distribution->send(frame, length);
    } catch (const std::bad_alloc&) {
        return CMATRIX_ERR_NO_MEMORY;
    } catch (...) {
        return CMATRIX_ERR_FAILED;
    }
}

int CMatrix_DisplayFrame(CMHANDLE handle, int windowId, int channel, const unsigned char* frame, int length)
{
    return withSession(handle,
        [&](Session& session) { return displayFrame(session, windowId, channel, frame, length, std::nullopt); });
}

int CMatrix_DisplayFrameWithin(
    CMHANDLE handle, int windowId, int channel, const unsigned char* frame, int length, int timeoutMs)
{
    return withSession(handle, [&](Session& session) {
        if (timeoutMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        return displayFrame(
            session, windowId, channel, frame, length, Clock::now() + std::chrono::milliseconds(timeoutMs));
    });
}

} // extern "C"
