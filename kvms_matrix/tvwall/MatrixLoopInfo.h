#pragma once

#include "MatrixDeviceInfo.h"

#include <QList>
#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// A display-in-turn scheme: sources shown one after another in a window.
struct MatrixLoopInfo {
    int loopId = -1; // below 1: not yet on the decoder
    QString loopName;
    int extraInt = 0;
    int loopInterval = 0; // the decoder's interval value, passed as it is
    QList<MatrixDeviceInfo> devices; // in showing order
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixLoopInfo)
