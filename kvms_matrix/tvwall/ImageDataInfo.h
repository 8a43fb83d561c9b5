#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// A picture read for a window: where it came from, its encoded bytes and its size.
struct ImageDataInfo {
    QString filePath;
    QByteArray data;
    int width = 0;
    int height = 0;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::ImageDataInfo)
