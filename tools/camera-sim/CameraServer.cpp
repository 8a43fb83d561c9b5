#include "CameraServer.h"

#include "ClipMaker.h"
#include "StreamFeeder.h"

#include <glib-unix.h>
#include <unistd.h>

#include <QTextStream>

std::mutex& CameraServer::feedersMutex_ = *new std::mutex;
std::set<StreamFeeder*>& CameraServer::feeders_ = *new std::set<StreamFeeder*>;

namespace {

constexpr guint kTickMs = 10; // a quarter of a picture's time: late by 10 ms at most

// The payloader sends each picture as soon as it has it; the shared pipeline serves
// every watcher of the stream. Every key picture of a clip already carries its parameter
// sets: letting the payloader insert them again broke each key picture on the receiving
// side, and the picture smeared from then on.
const char* const kLaunch = "( appsrc name=src is-live=true format=time do-timestamp=true "
                            "caps=video/x-h264,stream-format=byte-stream,alignment=au,framerate=25/1 "
                            "! rtph264pay name=pay0 pt=96 config-interval=0 aggregate-mode=zero-latency )";

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
    return G_SOURCE_REMOVE;
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
        std::lock_guard<std::mutex> lock(feedersMutex_);
        feeders_.insert(feeder);
    }
    g_object_weak_ref(G_OBJECT(media), onMediaGone, feeder);
}

void CameraServer::onMediaGone(gpointer data, GObject*)
{
    auto* feeder = static_cast<StreamFeeder*>(data);
    {
        std::lock_guard<std::mutex> lock(feedersMutex_);
        feeders_.erase(feeder);
    }
    delete feeder;
}

gboolean CameraServer::onTick(gpointer)
{
    const int64_t now = g_get_monotonic_time();
    std::lock_guard<std::mutex> lock(feedersMutex_);
    for (StreamFeeder* f : feeders_)
        f->pushDue(now);
    return G_SOURCE_CONTINUE;
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
    const guint tick = g_timeout_add(kTickMs, onTick, this);
    const guint term = g_unix_signal_add(SIGTERM, quitLoop, loop_);
    const guint interrupt = g_unix_signal_add(SIGINT, quitLoop, loop_);
    g_main_loop_run(loop_);
    g_source_remove(tick);
    g_source_remove(term);
    g_source_remove(interrupt);
    if (input)
        g_source_remove(input);
}
