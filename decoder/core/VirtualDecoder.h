#pragma once

#include "DecoderConfig.h"
#include "DecoderSnapshot.h"
#include "FaultPlan.h"
#include "Journal.h"

#include <QString>

#include <memory>

namespace vdec {

class DecoderCore;
class MonitorServer;
class TcpServer;
class UdpServer;

// A decoder on the network, run on threads of its own so that a caller may make
// blocking calls to it from any thread, its own event loop included.
class VirtualDecoder {
public:
    explicit VirtualDecoder(DecoderConfig config = {});
    ~VirtualDecoder(); // stops
    VirtualDecoder(const VirtualDecoder&) = delete;
    VirtualDecoder& operator=(const VirtualDecoder&) = delete;

    // Restores the state directory and starts listening.
    bool start(QString* error = nullptr);
    // Closes every connection and the port, and joins all threads.
    void stop();
    // Stops and starts again on the same port and state directory, as a power
    // cycle would. Faults and the journal carry over.
    bool restart(QString* error = nullptr);
    bool isRunning() const;

    QString address() const { return config_.address; }
    quint16 port() const { return port_; }
    // The monitor page's port, 0 when there is no monitor.
    quint16 httpPort() const { return httpPort_; }
    // The discovery (UDP) port, on the same address.
    quint16 udpPort() const { return udpPort_; }
    const DecoderConfig& config() const { return config_; }
    QString stateFilePath() const;

    // The state as of now; the last state once stopped.
    DecoderSnapshot snapshot() const;
    int connectionCount() const;
    // Resets every TCP connection at once; new clients are still accepted.
    void killConnections();

    FaultPlan& faults() { return faults_; }
    Journal& journal() { return journal_; }

private:
    DecoderConfig config_;
    quint16 port_ = 0;
    Journal journal_;
    FaultPlan faults_;
    std::unique_ptr<DecoderCore> core_;
    std::unique_ptr<TcpServer> server_;
    std::unique_ptr<MonitorServer> monitor_;
    quint16 httpPort_ = 0;
    std::unique_ptr<UdpServer> udp_;
    quint16 udpPort_ = 0;
};

} // namespace vdec
