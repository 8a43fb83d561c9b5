#include "VirtualDecoder.h"

#include "DecoderCore.h"
#include "monitor/MonitorServer.h"
#include "net/Socket.h"
#include "net/TcpServer.h"
#include "net/UdpServer.h"
#include "state/StateFile.h"

#include <QDir>

namespace vdec {

VirtualDecoder::VirtualDecoder(DecoderConfig config)
    : config_(std::move(config))
{
}

VirtualDecoder::~VirtualDecoder()
{
    stop();
}

bool VirtualDecoder::start(QString* error)
{
    auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    if (server_)
        return fail(QStringLiteral("already running"));
    if (!Socket::isIpv4(config_.address))
        return fail(QStringLiteral("not an IPv4 address: %1").arg(config_.address));
    if (!config_.allowAnyAddress && !Socket::isLoopback(config_.address))
        return fail(QStringLiteral("%1 is not a loopback address").arg(config_.address));
    if (!config_.stateDir.isEmpty() && !QDir().mkpath(config_.stateDir))
        return fail(QStringLiteral("cannot create %1").arg(config_.stateDir));

    auto core = std::make_unique<DecoderCore>(config_, journal_, faults_);
    if (!core->load(error))
        return false;
    auto server = std::make_unique<TcpServer>(*core);
    if (!server->listen(config_.address, port_ ? port_ : config_.tcpPort, error))
        return false;
    auto udp = std::make_unique<UdpServer>(*core);
    if (!udp->bind(config_.address, udpPort_ ? udpPort_ : config_.udpPort, error))
        return false;
    std::unique_ptr<MonitorServer> monitor;
    if (config_.httpPort >= 0) {
        DecoderCore* state = core.get();
        TcpServer* clients = server.get();
        monitor = std::make_unique<MonitorServer>(
            config_, [state] { return state->snapshot(); }, [clients] { return clients->connectionCount(); });
        // A restart keeps the port the monitor had, as it keeps the control port.
        if (!monitor->listen(quint16(httpPort_ ? httpPort_ : config_.httpPort), error))
            return false;
    }
    port_ = server->port();
    udpPort_ = udp->port();
    core->setPorts(port_, udpPort_, monitor ? monitor->port() : 0);
    core->setRebootHook([clients = server.get()] { clients->closeConnections(); });
    core_ = std::move(core);
    server_ = std::move(server);
    server_->start();
    udp_ = std::move(udp);
    udp_->start();
    if (monitor) {
        httpPort_ = monitor->port();
        monitor_ = std::move(monitor);
        monitor_->start();
    }
    return true;
}

void VirtualDecoder::stop()
{
    if (monitor_)
        monitor_->stop(); // first: it reads the state the others are about to drop
    monitor_.reset();
    if (udp_)
        udp_->stop();
    udp_.reset();
    if (server_)
        server_->stop();
    if (core_)
        core_->halt();
    server_.reset();
}

bool VirtualDecoder::restart(QString* error)
{
    stop();
    return start(error);
}

bool VirtualDecoder::isRunning() const
{
    return server_ != nullptr;
}

QString VirtualDecoder::stateFilePath() const
{
    return StateFile(config_.stateDir).path();
}

DecoderSnapshot VirtualDecoder::snapshot() const
{
    return core_ ? core_->snapshot() : DecoderSnapshot {};
}

int VirtualDecoder::connectionCount() const
{
    return server_ ? server_->connectionCount() : 0;
}

void VirtualDecoder::killConnections()
{
    if (server_)
        server_->killConnections();
}

} // namespace vdec
