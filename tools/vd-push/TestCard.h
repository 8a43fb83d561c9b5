#pragma once

#include <QByteArray>
#include <QString>

// A picture to push when none is given: colour bars, a grey ramp and a caption.
class TestCard {
public:
    static QByteArray jpeg(const QString& caption, int width = 1280, int height = 720);
};
