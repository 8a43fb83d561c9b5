#pragma once

#include <QByteArray>
#include <QSize>

// A 1920x1080 picture with what a camera sees in it (sky, buildings, windows, people,
// sensor noise), JPEG-encoded once: its size and decoding cost are a camera's.
class ScenePicture {
public:
    static QByteArray jpeg(QSize size = { 1920, 1080 }, int quality = 85);
};
