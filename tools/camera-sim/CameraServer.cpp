#include "CameraServer.h"

#include "ClipMaker.h"
#include "StreamFeeder.h"

#include <glib-unix.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <unistd.h>

#include <QTextStream>

#include <set>

namespace {

struct Feeders {
    std::mutex mutex;
    std::set<StreamFeeder*> all;
};

// Never destroyed: a media ends on one of GStreamer's threads, which may be while the
// program exits and its statics are being destroyed.
Feeders& feeders()
{
    static auto* registry = new Feeders;
    return *registry;
}

// The payloader sends each picture as soon as it has it; the shared pipeline serves
// every watcher of the stream. Every key picture of a clip already carries its parameter
// sets: letting the payloader insert them again broke each key picture on the receiving
// side, and the picture smeared from then on. Clients read over TCP, where packets
// need not fit an Ethernet frame: large ones cut the per-packet work of the server
// several times over (a sub stream's picture fits one). 8000 bytes still fit what
// decoders read in one go.
const char* const kLaunch = "( appsrc name=src is-live=true format=time do-timestamp=true "
                            "caps=video/x-h264,stream-format=byte-stream,alignment=au,framerate=25/1 "
                            "! rtph264pay name=pay0 pt=96 mtu=8000 config-interval=0 aggregate-mode=zero-latency )";

// Pictures go out interleaved on the client's RTSP connection in writes smaller than a
// segment; with Nagle's algorithm on, one could wait for the client's delayed ACK of the
// one before.
void onClientConnected(GstRTSPServer*, GstRTSPClient* client, gpointer)
{
    GstRTSPConnection* connection = gst_rtsp_client_get_connection(client);
    GSocket* socket = connection ? gst_rtsp_connection_get_write_socket(connection) : nullptr;
    if (socket)
        g_socket_set_option(socket, IPPROTO_TCP, TCP_NODELAY, 1, nullptr);
}

gboolean quitLoop(gpointer loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_CONTINUE;
}

gboolean stdinReady(gint fd, GIOCondition, gpointer loop)
{
    char buffer[256];
    const ssize_t n = read(fd, buffer, sizeof buffer);
    if (n > 0)
        return G_SOURCE_CONTINUE; // input is read and ignored
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_CONTINUE; // removed by run() as it returns
}

} // namespace

CameraServer::~CameraServer()
{
    for (auto& [key, e] : endpoints_) {
        if (e.source)
            g_source_remove(e.source);
        g_object_unref(e.server);
    }
    if (loop_)
        g_main_loop_unref(loop_);
}

bool CameraServer::prepare(const SimSettings& settings, QString* error)
{
    settings_ = settings;
    const ClipMaker maker(settings.clipDir.isEmpty() ? ClipMaker::defaultDir() : settings.clipDir);
    for (SimCamera& camera : settings_.cameras) {
        const std::pair<QString, quint16> key { camera.address, camera.port };
        Endpoint& e = endpoints_[key];
        if (!e.server) {
            e.server = gst_rtsp_server_new();
            gst_rtsp_server_set_address(e.server, camera.address.toUtf8().constData());
            gst_rtsp_server_set_service(e.server, QByteArray::number(camera.port).constData());
            g_signal_connect(e.server, "client-connected", G_CALLBACK(onClientConnected), nullptr);
        }
        for (const bool sub : { false, true }) {
            auto stream = std::make_unique<Stream>();
            stream->corrupt = camera.corrupt;
            const QString clip
                = maker.clip(camera.name, sub ? settings.subSize : settings.mainSize, settings.clipSeconds, error);
            if (clip.isEmpty() || !stream->clip.load(clip, error))
                return false;
            const QString kind = sub ? QStringLiteral("sub") : QStringLiteral("main");
            mount(e.server, QStringLiteral("/ch%1/%2").arg(camera.channel).arg(kind), stream.get());
            mount(e.server, QStringLiteral("/%1/%2").arg(CameraList::slug(camera.name), kind), stream.get());
            streams_.push_back(std::move(stream));
        }
    }
    for (auto& [key, e] : endpoints_) {
        GError* failure = nullptr;
        e.source = gst_rtsp_server_attach(e.server, nullptr);
        if (!e.source) {
            *error = QStringLiteral("cannot listen on %1:%2").arg(key.first).arg(key.second);
            g_clear_error(&failure);
            return false;
        }
        e.port = quint16(gst_rtsp_server_get_bound_port(e.server));
    }
    return true;
}

void CameraServer::mount(GstRTSPServer* server, const QString& path, Stream* stream)
{
    GstRTSPMountPoints* mounts = gst_rtsp_server_get_mount_points(server);
    GstRTSPMediaFactory* factory = gst_rtsp_media_factory_new();
    gst_rtsp_media_factory_set_launch(factory, kLaunch);
    gst_rtsp_media_factory_set_shared(factory, TRUE);
    g_signal_connect(factory, "media-configure", G_CALLBACK(onConfigure), stream);
    gst_rtsp_mount_points_add_factory(mounts, path.toUtf8().constData(), factory);
    g_object_unref(mounts);
}

void CameraServer::onConfigure(GstRTSPMediaFactory*, GstRTSPMedia* media, gpointer data)
{
    auto* stream = static_cast<Stream*>(data);
    GstElement* element = gst_rtsp_media_get_element(media);
    GstElement* appsrc = gst_bin_get_by_name_recurse_up(GST_BIN(element), "src");
    gst_object_unref(element);
    if (!appsrc)
        return;
    auto* feeder = new StreamFeeder(stream->clip, appsrc, stream->corrupt);
    gst_object_unref(appsrc);
    {
        std::lock_guard<std::mutex> lock(feeders().mutex);
        feeders().all.insert(feeder);
    }
    g_object_weak_ref(G_OBJECT(media), onMediaGone, feeder);
}

void CameraServer::onMediaGone(gpointer data, GObject*)
{
    auto* feeder = static_cast<StreamFeeder*>(data);
    {
        std::lock_guard<std::mutex> lock(feeders().mutex);
        feeders().all.erase(feeder);
    }
    delete feeder;
}

void CameraServer::tickLoop()
{
    std::unique_lock<std::mutex> lock(tickMutex_);
    while (!stopTicking_) {
        const int64_t now = g_get_monotonic_time();
        {
            std::lock_guard<std::mutex> feeding(feeders().mutex);
            for (StreamFeeder* f : feeders().all)
                f->pushDue(now);
        }
        // The next picture time of the grid all streams share, plus a millisecond so the
        // picture is due when the ticker wakes.
        const int64_t waitUs = StreamFeeder::kFrameUs - now % StreamFeeder::kFrameUs + 1000;
        tickWake_.wait_for(lock, std::chrono::microseconds(waitUs), [this] { return stopTicking_; });
    }
}

QStringList CameraServer::describe() const
{
    QStringList out;
    for (const SimCamera& c : settings_.cameras) {
        const quint16 port = endpoints_.at({ c.address, c.port }).port;
        const QString base = QStringLiteral("rtsp://%1:%2/ch%3/").arg(c.address).arg(port).arg(c.channel);
        out << QStringLiteral("%1 %2main %2sub").arg(c.name, base);
    }
    return out;
}

void CameraServer::run(bool stdinEnds)
{
    loop_ = g_main_loop_new(nullptr, FALSE);
    guint input = 0;
    if (stdinEnds)
        input = g_unix_fd_add(0, GIOCondition(G_IO_IN | G_IO_HUP | G_IO_ERR), stdinReady, loop_);
    {
        std::lock_guard<std::mutex> lock(tickMutex_);
        stopTicking_ = false;
    }
    ticker_ = std::thread([this] { tickLoop(); });
    const guint term = g_unix_signal_add(SIGTERM, quitLoop, loop_);
    const guint interrupt = g_unix_signal_add(SIGINT, quitLoop, loop_);
    g_main_loop_run(loop_);
    {
        std::lock_guard<std::mutex> lock(tickMutex_);
        stopTicking_ = true;
    }
    tickWake_.notify_all();
    ticker_.join();
    g_source_remove(term);
    g_source_remove(interrupt);
    if (input)
        g_source_remove(input);
}
