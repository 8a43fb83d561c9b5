#pragma once

#include <QColor>
#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// The scrolling text laid over a wall, in wall units.
struct MatrixBannerInfo {
    QString message;
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    int direction = 0;
    int speed = 0;
    int fontPercent = 0; // font height as a percentage of the banner height
    QColor fontColor;
    QColor backColor;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixBannerInfo)
