#pragma once

#include "AccessUnits.h"
#include "CameraList.h"

#include <gst/rtsp-server/rtsp-server.h>

#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

class StreamFeeder;

// The RTSP side: one server per address and port in the camera list, a main and a
// sub stream per camera, and one ticker that feeds every stream being watched. A
// stream nobody watches has no pipeline and costs nothing; watchers of one stream
// share its pipeline.
class CameraServer {
public:
    CameraServer() = default;
    ~CameraServer();
    CameraServer(const CameraServer&) = delete;
    CameraServer& operator=(const CameraServer&) = delete;

    // Encodes missing clips, loads them and binds every server; prints nothing.
    bool prepare(const SimSettings& settings, QString* error);
    // The URLs each camera is served at, once prepared (ports resolved).
    QStringList describe() const;
    // Runs until SIGINT or SIGTERM, or with stdinEnds also until its standard input
    // closes (the parent that started it has gone).
    void run(bool stdinEnds);

private:
    struct Stream {
        AccessUnits clip;
        bool corrupt = false;
    };
    struct Endpoint {
        GstRTSPServer* server = nullptr;
        guint source = 0;
        quint16 port = 0;
    };

    static void onConfigure(GstRTSPMediaFactory* factory, GstRTSPMedia* media, gpointer stream);
    static void onMediaGone(gpointer data, GObject* media);
    static gboolean onTick(gpointer self);
    void mount(GstRTSPServer* server, const QString& path, Stream* stream);

    SimSettings settings_;
    std::vector<std::unique_ptr<Stream>> streams_;
    std::map<std::pair<QString, quint16>, Endpoint> endpoints_;
    GMainLoop* loop_ = nullptr;

    // Never destroyed: GStreamer's threads may finalize a stream's media after main returns.
    static std::mutex& feedersMutex_;
    static std::set<StreamFeeder*>& feeders_;
};
