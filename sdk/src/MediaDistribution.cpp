#include "MediaDistribution.h"

#include "Messages.h"
#include "Session.h"

namespace cmatrix::sdk {

using wire::MessageType;

MediaDistribution::MediaDistribution(std::weak_ptr<Session> session, uint32_t mediaId, uint64_t generation)
    : session_(std::move(session))
    , mediaId_(mediaId)
    , generation_(generation)
{
}

MediaDistribution::~MediaDistribution()
{
    link_.close();
}

std::shared_ptr<Session> MediaDistribution::session() const
{
    std::shared_ptr<Session> s = session_.lock();
    return s && !s->isShutDown() ? s : nullptr;
}

bool MediaDistribution::isOrphan() const
{
    return !session();
}

int MediaDistribution::open()
{
    const std::shared_ptr<Session> s = session();
    if (!s)
        return CMATRIX_ERR_INVALID_HANDLE;
    std::shared_ptr<Connection> connection;
    return link_.acquire(*s, generation_, connection);
}

int MediaDistribution::send(const unsigned char* frame, int length)
{
    const std::shared_ptr<Session> s = session();
    if (!s)
        return CMATRIX_ERR_INVALID_HANDLE;
    std::shared_ptr<Connection> connection;
    if (const int rc = link_.acquire(*s, generation_, connection); rc != CMATRIX_OK)
        return rc;
    wire::MediaFrameRequest request;
    request.mediaId = mediaId_;
    request.frame.assign(frame, frame + length);
    wire::Empty answer;
    return connection->call(MessageType::MediaFrame, request, answer, s->deadline());
}

int MediaDistribution::stop()
{
    link_.close();
    const std::shared_ptr<Session> s = session();
    if (!s)
        return CMATRIX_ERR_INVALID_HANDLE;
    // On another connection of the handle the id would mean nothing, or something else.
    if (s->mediaGeneration() != generation_)
        return CMATRIX_ERR_DISCONNECTED;
    wire::Empty answer;
    return s->call(MessageType::StopMediaDistribute, wire::IdRequest { mediaId_ }, answer);
}

} // namespace cmatrix::sdk
