#pragma once

#include <QImage>
#include <QString>

namespace vdec {

// What arrived for one sub-window, and the latest picture it shows.
struct SubWindowMedia {
    quint64 frames = 0; // envelopes addressed to it, good or bad
    quint64 bytes = 0; // their sizes as received
    quint64 decoded = 0; // pictures decoded and shown
    quint64 failed = 0; // bad envelopes and pictures that did not decode
    int lastCodec = -1; // video codec of the last good envelope, -1: none described
    QImage picture; // latest picture, at most the size the sub-window shows it at
    QString sourceKey; // the source bound when it arrived (see PictureStore::sourceKey)
};

} // namespace vdec
