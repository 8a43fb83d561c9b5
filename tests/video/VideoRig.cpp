#include "VideoRig.h"

#include "MonitorClient.h"
#include "QueuedSignalSpy.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include "media/VideoDecoder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

VideoRig::Handle VideoRig::wallOn(int division)
{
    decoder_ = fixture_.startDecoder();
    sdk_ = std::make_unique<kvmstest::SdkSession>();
    if (!decoder_ || sdk_->connect(decoder_) != CMATRIX_OK || CMatrix_SetMatrix(*sdk_, 1, 1, "Wall") != CMATRIX_OK)
        return {};
    const MatrixWindow_t cell = kvmstest::window(1, 0, 0, 32768, 32768);
    if (CMatrix_WindowAdd(*sdk_, &cell, 1, true) != CMATRIX_OK
        || CMatrix_WindowSetDivision(*sdk_, 1, division) != CMATRIX_OK)
        return {};
    return connectWorker(decoder_);
}

MatrixWindowInfo VideoRig::withCamera(int division, int sub, const QString& ip, quint16 port, int channel, int stream)
{
    MatrixWindowInfo window = windowInfo(1, division);
    MatrixDeviceInfo& d = window.subWindows[sub - 1].device;
    d.deviceType = 1;
    d.deviceId = QStringLiteral("NVR%1&%2").arg(ip.section(QLatin1Char('.'), 3)).arg(channel);
    d.deviceName = QStringLiteral("Camera %1").arg(channel);
    d.ip = ip;
    d.port = port;
    d.channel = channel;
    d.streamIndex = stream;
    d.userName = QStringLiteral("admin");
    d.password = QStringLiteral("secret");
    return window;
}

int VideoRig::bind(const Handle& handle, const MatrixWindowInfo& window, int sub)
{
    QueuedSignalSpy bound(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult);
    worker()->setWindowSignalSource(handle, window, sub, false);
    return bound.wait(scaled(10000)) ? bound.at(0).at(0).toInt() : INT_MIN;
}

VideoRig::Handle VideoRig::playGate(int division, int stream, const QString& ip)
{
    failure_ = QStringLiteral("no wall");
    if (!cameras_.start(ip, { "Gate" })) {
        failure_ = cameras_.error();
        return {};
    }
    const Handle h = wallOn(division);
    const int bound = h ? bind(h, withCamera(division, 1, ip, cameras_.port(), 1, stream), 0) : INT_MIN;
    if (bound != 0) {
        failure_ = h ? QStringLiteral("binding answered %1").arg(bound) : failure_;
        return {};
    }
    failure_ = QStringLiteral("the camera does not play");
    return QTest::qWaitFor([this] { return playing(video(1)); }, scaled(15000)) ? h : Handle();
}

bool VideoRig::playing(const QJsonObject& video)
{
    return video.value("state").toString() == QLatin1String("playing");
}

QJsonObject VideoRig::video(int sub) const
{
    const QJsonObject state = MonitorClient(decoder_->address(), decoder_->httpPort()).state();
    const QJsonArray windows = state.value("windows").toArray();
    if (windows.isEmpty())
        return {};
    return windows.at(0).toObject().value("subWindows").toArray().at(sub - 1).toObject().value("video").toObject();
}

QList<QByteArray> VideoRig::clipPictures(const QString& pattern)
{
    const QDir dir(QStringLiteral(KVMS_TEST_CLIP_DIR));
    const QStringList clips = dir.entryList({ pattern });
    QFile file(clips.isEmpty() ? QString() : dir.filePath(clips.first()));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray all = file.readAll();
    const QByteArray delimiter("\x00\x00\x00\x01\x09", 5);
    QList<QByteArray> out;
    for (int start = all.indexOf(delimiter); start >= 0;) {
        const int next = all.indexOf(delimiter, start + 5);
        out.append(all.mid(start, next < 0 ? -1 : next - start));
        start = next;
    }
    return out;
}

QList<QImage> VideoRig::clipFrames(const QString& pattern)
{
    vdec::VideoDecoder decoder;
    QList<QImage> out;
    for (const QByteArray& unit : clipPictures(pattern)) {
        QImage frame;
        if ((decoder.isOpen() || decoder.open(vdec::VideoDecoder::Codec::H264))
            && decoder.decode(reinterpret_cast<const uint8_t*>(unit.constData()), size_t(unit.size()), 0)
            && decoder.toImage(QSize(), frame))
            out.append(frame.convertToFormat(QImage::Format_RGB32));
    }
    return out;
}

double VideoRig::offClip(const QImage& picture, const QList<QImage>& frames)
{
    double nearest = 255;
    for (const QImage& frame : frames) {
        if (frame.size() != picture.size() || frame.format() != picture.format())
            continue;
        qint64 sum = 0; // alpha is opaque in both: only colours differ
        for (qsizetype i = 0; i < frame.sizeInBytes(); ++i)
            sum += std::abs(int(picture.constBits()[i]) - int(frame.constBits()[i]));
        nearest = std::min(nearest, double(sum) * 4 / 3 / double(frame.sizeInBytes()));
    }
    return nearest;
}

bool VideoRig::settle()
{
    const bool settled = settleWorker();
    sdk_.reset();
    fixture_.cleanup();
    decoder_ = nullptr;
    cameras_.stop();
    return settled;
}
