#include "MonitorServer.h"

#include "MonitorPage.h"
#include "SnapshotJson.h"
#include "WallPainter.h"
#include "core/DecoderSnapshot.h"

#include <QBuffer>
#include <QJsonDocument>

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace vdec {

namespace {

// Few and short-lived: the page asks twice a second, and stop() must not wait long
// for a browser that keeps a connection open.
constexpr size_t kWorkers = 4; // two may be held by MJPEG watchers
constexpr time_t kIdleSeconds = 1;

} // namespace

MonitorServer::MonitorServer(const DecoderConfig& config, SnapshotSource snapshot, CountSource clients)
    : config_(config)
    , snapshot_(std::move(snapshot))
    , clients_(std::move(clients))
    , server_(std::make_unique<httplib::Server>())
{
    server_->new_task_queue = [] { return new httplib::ThreadPool(kWorkers); };
    server_->set_keep_alive_max_count(1);
    server_->set_read_timeout(kIdleSeconds, 0);
    server_->set_write_timeout(5, 0);
    addRoutes();
}

MonitorServer::~MonitorServer()
{
    stop();
}

WallOverlays MonitorServer::overlaysOf(const DecoderSnapshot& snapshot)
{
    WallOverlays overlays;
    if (snapshot.banner.show)
        overlays.banner = snapshot.banner;
    overlays.identify = snapshot.identifyOn;
    return overlays;
}

void MonitorServer::addRoutes()
{
    server_->Get("/", [this](const httplib::Request&, httplib::Response& res) {
        res.set_header("Cache-Control", "no-store");
        res.set_content(MonitorPage::html(config_.deviceId), "text/html; charset=utf-8");
    });
    server_->Get(R"(/wall\.png)", [this](const httplib::Request& req, httplib::Response& res) {
        const int width = req.has_param("w") ? QString::fromStdString(req.get_param_value("w")).toInt() : 0;
        const DecoderSnapshot snapshot = snapshot_();
        const QImage image = WallPainter::render(snapshot, overlaysOf(snapshot), width);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        if (!image.save(&buffer, "PNG")) {
            res.status = 500;
            return;
        }
        res.set_header("Cache-Control", "no-store");
        res.set_content(png.constData(), size_t(png.size()), "image/png");
    });
    server_->Get(R"(/state\.json)", [this](const httplib::Request&, httplib::Response& res) {
        const DecoderSnapshot snapshot = snapshot_();
        const QJsonObject o = SnapshotJson::toJson(config_, snapshot, overlaysOf(snapshot), clients_());
        const QByteArray json = QJsonDocument(o).toJson(QJsonDocument::Indented);
        res.set_header("Cache-Control", "no-store");
        res.set_content(json.constData(), size_t(json.size()), "application/json");
    });
    addMjpeg();
}

void MonitorServer::addMjpeg()
{
    server_->Get(R"(/wall\.mjpeg)", [this](const httplib::Request& req, httplib::Response& res) {
        if (watchers_.fetch_add(1) >= kMaxWatchers) {
            --watchers_;
            res.status = 503;
            res.set_content("too many watchers\n", "text/plain");
            return;
        }
        const int width = req.has_param("w") ? QString::fromStdString(req.get_param_value("w")).toInt() : 0;
        res.set_header("Cache-Control", "no-store");
        res.set_chunked_content_provider(
            "multipart/x-mixed-replace; boundary=wallframe",
            [this, width, next = std::chrono::steady_clock::now()](size_t, httplib::DataSink& sink) mutable {
                if (stopping_ || !sink.is_writable())
                    return false;
                std::this_thread::sleep_until(next);
                next = std::max(next + std::chrono::milliseconds(1000 / kMjpegFps), std::chrono::steady_clock::now());
                const DecoderSnapshot snapshot = snapshot_();
                const QByteArray jpeg = jpegOf(WallPainter::render(snapshot, overlaysOf(snapshot), width));
                const std::string head = "--wallframe\r\nContent-Type: image/jpeg\r\nContent-Length: "
                    + std::to_string(jpeg.size()) + "\r\n\r\n";
                return sink.write(head.data(), head.size()) && sink.write(jpeg.constData(), size_t(jpeg.size()))
                    && sink.write("\r\n", 2);
            },
            [this](bool) { --watchers_; });
    });
}

QByteArray MonitorServer::jpegOf(const QImage& image)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 80);
    return jpeg;
}

bool MonitorServer::listen(quint16 port, QString* error)
{
    const std::string host = config_.address.toStdString();
    int bound = -1;
    if (port == 0)
        bound = server_->bind_to_any_port(host);
    else if (server_->bind_to_port(host, port))
        bound = port;
    if (bound <= 0) {
        if (error)
            *error = QStringLiteral("monitor: cannot listen on %1:%2").arg(config_.address).arg(port);
        return false;
    }
    port_ = quint16(bound);
    return true;
}

void MonitorServer::start()
{
    finished_ = false;
    stopping_ = false;
    thread_ = std::thread([this] {
        server_->listen_after_bind();
        finished_ = true;
    });
    // stop() only reaches a server that has begun to run; until then it would be lost.
    while (!server_->is_running() && !finished_)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void MonitorServer::stop()
{
    if (!thread_.joinable())
        return;
    stopping_ = true; // watchers of the moving wall end after their current picture
    server_->stop();
    thread_.join();
}

} // namespace vdec
