#pragma once

#include "WallOverlays.h"
#include "core/DecoderConfig.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace httplib {
class Server;
}

namespace vdec {

struct DecoderSnapshot;

// The decoder's monitor over HTTP on its own address:
//   /            a page that shows the wall and refreshes itself
//   /wall.png    the wall as its screens show it (?w= width in pixels)
//   /wall.mjpeg  the same, moving: JPEG pictures, at most kMjpegFps a second, drawn
//                only while someone watches

//   /state.json  the state, for tests and scripts
class MonitorServer {
public:
    using SnapshotSource = std::function<DecoderSnapshot()>;
    using CountSource = std::function<int()>;
    static constexpr int kMjpegFps = 10;
    static constexpr int kMaxWatchers = 2; // a wall drawn per watcher: bounded

    MonitorServer(const DecoderConfig& config, SnapshotSource snapshot, CountSource clients);
    ~MonitorServer(); // stops
    MonitorServer(const MonitorServer&) = delete;
    MonitorServer& operator=(const MonitorServer&) = delete;

    // Binds config.address:port (0: any free port).
    bool listen(quint16 port, QString* error);
    void start();
    void stop();
    quint16 port() const { return port_; }

    // What the wall lays over its windows, read from the state.
    static WallOverlays overlaysOf(const DecoderSnapshot& snapshot);
    // The wall as a JPEG (quality 80): what the moving wall and the mimic send.
    static QByteArray jpegOf(const QImage& image);

private:
    void addRoutes();
    void addMjpeg();

    const DecoderConfig config_;
    const SnapshotSource snapshot_;
    const CountSource clients_;
    std::unique_ptr<httplib::Server> server_;
    std::thread thread_;
    std::atomic<bool> finished_ { false };
    std::atomic<bool> stopping_ { false };
    std::atomic<int> watchers_ { 0 };
    quint16 port_ = 0;
};

} // namespace vdec
