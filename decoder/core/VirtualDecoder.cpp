#include "VirtualDecoder.h"

#include "DecoderCore.h"
#include "net/Socket.h"
#include "net/TcpServer.h"
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
    port_ = server->port();
    core_ = std::move(core);
    server_ = std::move(server);
    server_->start();
    return true;
}

void VirtualDecoder::stop()
{
    if (server_)
        server_->stop();
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
