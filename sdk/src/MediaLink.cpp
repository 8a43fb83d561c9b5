#include "MediaLink.h"

#include "Session.h"

namespace cmatrix::sdk {

int MediaLink::acquire(Session& session, uint64_t generation, std::shared_ptr<Connection>& out)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (!connection_ || !connection_->isOpen()) {
        connection_.reset();
        if (const int rc = session.openMedia(generation, connection_); rc != CMATRIX_OK)
            return rc;
    }
    out = connection_;
    return CMATRIX_OK;
}

void MediaLink::close()
{
    std::shared_ptr<Connection> connection;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        connection = std::move(connection_);
    }
    if (connection)
        connection->stop();
}

} // namespace cmatrix::sdk
