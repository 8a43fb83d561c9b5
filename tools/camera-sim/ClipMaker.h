#pragma once

#include <QSize>
#include <QString>

// Encodes a camera's test clip once and keeps it: an H.264 elementary stream (Annex
// B, an access-unit delimiter before every picture) of a moving test pattern with the
// camera's name and a running clock, 25 pictures a second, a key picture every second
// so the loop can restart at any second, no B-pictures. Serving it afterwards costs
// no encoding.
class ClipMaker {
public:
    explicit ClipMaker(QString dir);

    // The clip's path, made first if missing; empty (with a reason) on failure.
    QString clip(const QString& cameraName, QSize size, int seconds, QString* error) const;
    // Where clips go when no folder is given: $XDG_CACHE_HOME/kvms-camera-sim or ~/.cache/...
    static QString defaultDir();

private:
    QString dir_;
};
