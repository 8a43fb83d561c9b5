#pragma once

#include <QSize>
#include <QString>

namespace vdec {

// What a sub-window bound to a live stream is doing, as the state reports it.
struct VideoStatus {
    enum class State { Connecting, Playing, NoSignal };
    State state = State::Connecting;
    QString url; // without user and password
    bool sub = false; // the sub stream (else the main one)
    QString reason; // why there is no signal, empty while playing
    int attempts = 0; // openings tried since the source was bound
    int retryInMs = 0; // back-off before the next attempt, while without signal
    quint64 packets = 0, decoded = 0, shown = 0, dropped = 0, failed = 0;
    QSize source; // pictures as they arrive
    qint64 cameraFrame = -1; // the camera's count of the picture last shown, -1: not stamped
    qint64 cameraTimeMs = -1; // when the camera sent it (ms since the epoch), -1: not stamped
    int latencyMs = -1; // from the camera sending it to the picture shown
    int maxLateMs = 0; // the latest a picture came, against the stream's own pace
    int lastLateMs = 0; // how late the last picture came

    static QString stateName(State s)
    {
        switch (s) {
        case State::Connecting:
            return QStringLiteral("connecting");
        case State::Playing:
            return QStringLiteral("playing");
        case State::NoSignal:
            break;
        }
        return QStringLiteral("no signal");
    }
};

} // namespace vdec
