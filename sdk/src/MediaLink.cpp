#include "MediaLink.h"

#include "Session.h"

namespace cmatrix::sdk {

int MediaLink::acquire(
    Session& session, uint64_t generation, std::shared_ptr<Connection>& out, std::optional<Clock::time_point> until)
{
    if (!until)
        gate_.enter();
    else if (!gate_.enter(*until))
        return CMATRIX_ERR_TIMEOUT;
    struct Leave {
        WriteGate& gate;
        ~Leave() { gate.leave(); }
    } leave { gate_ };
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
    gate_.enter();
    connection = std::move(connection_);
    gate_.leave();
    if (connection)
        connection->stop();
}

} // namespace cmatrix::sdk
