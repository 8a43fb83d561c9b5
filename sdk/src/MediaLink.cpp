#include "MediaLink.h"

#include "Session.h"

namespace cmatrix::sdk {

int MediaLink::acquire(
    Session& session, uint64_t generation, std::shared_ptr<Connection>& out, std::optional<Clock::time_point> until)
{
    std::unique_lock<WriteGate> lock(gate_, std::defer_lock);
    if (until ? !lock.try_lock_until(*until) : (lock.lock(), false))
        return CMATRIX_ERR_TIMEOUT;
    if (!connection_ || !connection_->isOpen()) {
        connection_.reset();
        if (const int rc = session.openMedia(generation, connection_, until.value_or(session.deadline()));
            rc != CMATRIX_OK)
            return rc;
    }
    out = connection_;
    return CMATRIX_OK;
}

void MediaLink::close()
{
    std::shared_ptr<Connection> connection;
    {
        std::lock_guard<WriteGate> lock(gate_);
        connection = std::move(connection_);
    }
    if (connection)
        connection->stop();
}

} // namespace cmatrix::sdk
