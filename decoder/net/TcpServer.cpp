#include "TcpServer.h"

#include "Connection.h"
#include "core/DecoderCore.h"

#include <poll.h>

namespace vdec {

namespace {

// Connection ids are unique in the process, so a journal kept over a restart
// never mixes two connections up.
std::atomic<uint64_t> nextConnectionId { 1 };

constexpr int kReapIntervalMs = 200;

} // namespace

TcpServer::TcpServer(DecoderCore& core)
    : core_(core)
{
}

TcpServer::~TcpServer()
{
    stop();
}

bool TcpServer::listen(const QString& address, quint16 port, QString* error)
{
    listener_ = Socket::listenTcp(address, port, error);
    port_ = listener_.valid() ? listener_.localPort() : 0;
    return listener_.valid();
}

void TcpServer::start()
{
    stopping_ = false;
    thread_ = std::thread([this] { run(); });
}

void TcpServer::stop()
{
    stopping_ = true;
    wake_.notify();
    if (thread_.joinable())
        thread_.join();
    std::vector<std::unique_ptr<Connection>> doomed;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        doomed.swap(connections_);
    }
    for (auto& c : doomed)
        c->stop();
    doomed.clear(); // joins
    listener_.reset();
}

void TcpServer::killConnections()
{
    std::lock_guard<std::mutex> lock(mutex_);
    for (auto& c : connections_)
        c->abort();
}

void TcpServer::closeConnections()
{
    std::lock_guard<std::mutex> lock(mutex_);
    for (auto& c : connections_)
        c->stop();
}

int TcpServer::connectionCount() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    int count = 0;
    for (const auto& c : connections_)
        count += c->finished() ? 0 : 1;
    return count;
}

void TcpServer::run()
{
    while (!stopping_) {
        pollfd fds[2] = { { listener_.fd(), POLLIN, 0 }, { wake_.fd(), POLLIN, 0 } };
        ::poll(fds, 2, kReapIntervalMs);
        if (fds[1].revents)
            wake_.drain();
        if (stopping_)
            break;
        if (fds[0].revents)
            acceptPending();
        reap();
    }
}

void TcpServer::acceptPending()
{
    for (;;) {
        Socket client = listener_.accept();
        if (!client.valid())
            return;
        reap();
        std::lock_guard<std::mutex> lock(mutex_);
        if (int(connections_.size()) >= core_.config().maxConnections)
            continue; // refused: closed as it goes out of scope
        connections_.push_back(std::make_unique<Connection>(std::move(client), nextConnectionId++, core_));
        connections_.back()->start();
        core_.noteEvent(QStringLiteral("connection %1 opened").arg(connections_.back()->id()));
    }
}

void TcpServer::reap()
{
    std::vector<std::unique_ptr<Connection>> ended;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        for (auto it = connections_.begin(); it != connections_.end();) {
            if ((*it)->finished()) {
                core_.noteEvent(QStringLiteral("connection %1 closed").arg((*it)->id()));
                ended.push_back(std::move(*it));
                it = connections_.erase(it);
            } else {
                ++it;
            }
        }
    }
    ended.clear(); // joined outside the lock
}

} // namespace vdec
