#pragma once

#include "core/VirtualDecoder.h"

#include <QProcess>
#include <QString>

#include <memory>
#include <vector>

// Cameras of tools/camera-sim (a child process) and an in-process virtual decoder with one
// window of `division` sub-windows on a one-screen wall, each bound to a camera channel.
// Measures what playing costs: the decoder's CPU, the camera simulator's, pictures
// decoded, shown and dropped, lateness and glass-to-glass latency.
class VideoRig {
public:
    struct Result {
        double seconds = 0;
        double decoderCpu = 0; // seconds of CPU of this whole process
        double cameraCpu = 0; // seconds of CPU of camera-sim
        quint64 decoded = 0, shown = 0, dropped = 0, failed = 0;
        int maxLateMs = 0;
        double latencyP50 = -1, latencyP95 = -1, latencyMax = -1; // ms
        int playing = 0;
    };

    ~VideoRig();
    // cameras: how many camera-sim serves ("Camera 01"...); clips of the real sizes.
    bool start(int cameras, QString* error);
    // Binds channels 1..count to sub-windows 1..count of a window of `division`, with
    // stream 0 (main), 1 (sub) or -1 (Auto); waits until all play.
    bool bind(int count, int division, int stream, QString* error);
    Result measure(double seconds);
    vdec::VirtualDecoder& decoder() { return *decoder_; }
    // One snapshot through the SDK, as the worker asks it: the JPEG's size or an error.
    int snapshotCall(int width, int height);
    // The main clip of camera 1 as camera-sim encoded it.
    QString mainClip() const;

    static double processCpu(); // this process, seconds
    static double cpuOf(qint64 pid); // another process, seconds (/proc)

private:
    std::unique_ptr<QProcess> cameras_;
    quint16 cameraPort_ = 0;
    std::unique_ptr<vdec::VirtualDecoder> decoder_;
    void* sdk_ = nullptr;
};
