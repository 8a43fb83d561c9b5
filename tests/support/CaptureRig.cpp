#include "CaptureRig.h"

#include "KovCapThread.h"
#include "TestTimeout.h"
#include "WorkerSuite.h"

#include "LogInfo.h"

#include <QFile>
#include <QtTest>

#include <cstring>

using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

MatrixSdkWorker* CaptureRig::worker()
{
    return kvmstest::WorkerSuite::worker();
}

CaptureRig::Envelope CaptureRig::unpack(const QByteArray& packed)
{
    Envelope e;
    const auto* in = reinterpret_cast<const unsigned char*>(packed.constData());
    if (packed.size() < KAV_FIXED_HEADER_SIZE || KavUnpackFrame(in, packed.size(), &e.frame, &e.info) < 0)
        return e;
    e.typeByte = in[3];
    e.headerSize = int(e.frame.data - in);
    e.payload = QByteArray(reinterpret_cast<const char*>(e.frame.data), int(e.frame.size));
    e.ok = e.headerSize + int(e.frame.size) == packed.size();
    return e;
}

vdec::VirtualDecoder* CaptureRig::startDecoder(const kvmstest::DecoderFixture::Tweak& tweak)
{
    return fixture_.startDecoder(0, tweak);
}

CaptureRig::Handle CaptureRig::connect(const vdec::VirtualDecoder* decoder)
{
    return kvmstest::WorkerSuite::connectWorker(decoder);
}

bool CaptureRig::layOut(const Handle& handle, int windowId, int division)
{
    MatrixWindow_t window {};
    window.id = uint32_t(windowId);
    window.w = 32768;
    window.h = 32768;
    return CMatrix_SetMatrix(handle->handle(), 1, 1, "Capture") == CMATRIX_OK
        && CMatrix_WindowAdd(handle->handle(), &window, 1, true) == CMATRIX_OK
        && CMatrix_WindowSetDivision(handle->handle(), windowId, division) == CMATRIX_OK;
}

bool CaptureRig::bindSource(const Handle& handle, int windowId, int sub, const char* deviceId, int protocol)
{
    DeviceInfo_t d {};
    d.subWindow = sub;
    std::strncpy(d.devId, deviceId, sizeof d.devId - 1);
    std::strncpy(d.name, deviceId, sizeof d.name - 1);
    d.protocol = protocol;
    d.channel = sub;
    d.mode = 2;
    return CMatrix_WindowDeviceAdd(handle->handle(), windowId, &d, 1, false) == CMATRIX_OK;
}

void CaptureRig::setLogFile(const QString& path)
{
    logPath_ = path;
    vms_sdk::set_log_file(path);
}

qint64 CaptureRig::logSize() const
{
    return QFile(logPath_).size();
}

QStringList CaptureRig::logLinesSince(qint64 from) const
{
    QFile file(logPath_);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(from))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void CaptureRig::cleanup()
{
    MatrixSdkWorker* w = worker();
    w->stopCaptureThread();
    // Every entry is released through removeMdHandle while its connection is still registered.
    const auto handles = w->registeredHandles();
    for (int guard = 0; guard < 64; ++guard) {
        // One copy per round: the stops run on the worker thread, which changes the registry.
        const auto registry = w->mdRegistry();
        if (registry.empty())
            break;
        const kvms_matrix::MediaDistributeEntry e = registry.begin()->second;
        for (const Handle& h : handles)
            w->removeMdHandle(h, e.windowId, e.subWindowId, e.windowType);
        if (!w->isWorkerRunning())
            break;
        if (!QTest::qWaitFor([&] { return w->mdRegistry().size() < registry.size(); }, scaled(5000)))
            break; // an entry no registered connection owns stays; the fixture drops it
    }
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        QTRY_VERIFY_WITH_TIMEOUT(w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0, scaled(10000));
    }
    fixture_.cleanup();
}
