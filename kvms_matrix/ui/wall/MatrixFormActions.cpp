// MatrixForm: the wall's context actions, the drops of loops and joining cells.
#include "MatrixForm.h"

#include "ControlMatrixWt.h"
#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"
#include "SourcePane.h"
#include "SourceRecords.h"
#include "WallPlayback.h"

#include "KSingleton.h"
#include "SystemAssistant.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>

namespace kvms_matrix {

namespace {

// Operation codes of the wall's context actions.
enum Code {
    Split = 0,
    Playback = 1,
    Clear = 2,
    ClearSome = 3,
    ClearOthers = 4,
    GrabScreen = 8,
    Background = 9,
    Unjoin = 10,
    Remove = 11,
    Full = 12,
    AudioOff = 13,
    AudioOn = 14,
    MainStream = 15,
    SubStream = 16,
    AutoStream = 17,
};

// The longest picture file name the decoder's name field takes after the "pic_" prefix.
constexpr int kMaxPictureName = 89;
} // namespace

void MatrixForm::connectActions()
{
    connect(m_canvas, &ControlMatrixWt::signalLoopListDropEvent, this, &MatrixForm::slotLoopListDropEvent);
    connect(m_canvas, &ControlMatrixWt::signalJoinWindows, this, &MatrixForm::slotJoinWindows);
    buildExtras();
    const auto queued = Qt::QueuedConnection;
    MatrixSdkWorker* w = m_worker;
    connect(w, &MatrixSdkWorker::signalSaveSceneResult, this, &MatrixForm::slotSaveSceneResult, queued);
    connect(w, &MatrixSdkWorker::signalRestoreSceneResult, this, &MatrixForm::slotRestoreSceneResult, queued);
    connect(w, &MatrixSdkWorker::signalRemoveSceneResult, this, &MatrixForm::slotRemoveSceneResult, queued);
    connect(w, &MatrixSdkWorker::signalModifySceneResult, this, &MatrixForm::slotModifySceneResult, queued);
    connect(w, &MatrixSdkWorker::signalSetLoopInfoResult, this, &MatrixForm::slotSetLoopInfoResult, queued);
    connect(w, &MatrixSdkWorker::signalRemoveLoopInfoResult, this, &MatrixForm::slotRemoveLoopInfoResult, queued);
    connect(w,
        qOverload<int, int, int, const QList<MatrixSubWindowInfo>&>(&MatrixSdkWorker::signalRestoreLoopInfoResult),
        this, qOverload<int, int, int, QList<MatrixSubWindowInfo>>(&MatrixForm::slotRestoreLoopInfoResult), queued);
    connect(w, qOverload<int, int, int, int>(&MatrixSdkWorker::signalRestoreLoopInfoResult), this,
        qOverload<int, int, int, int>(&MatrixForm::slotRestoreLoopInfoResult), queued);
}

void MatrixForm::slotRightMemuClicked(int windowId, int subWindowId, int windowType, int operatetype, int type)
{
    if (!isVisible())
        return; // another page of the module took the action
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle)
        return;
    switch (operatetype) {
    case Split:
        m_worker->setWindowSplit(handle, windowId, type);
        break;
    case Clear:
    case ClearSome:
    case ClearOthers:
        m_worker->clearWindow(handle, windowId, subWindowId, windowType);
        break;
    case GrabScreen:
        grabScreen(windowId, subWindowId, windowType);
        break;
    case Background:
        chooseBackground(windowId, subWindowId, windowType);
        break;
    case Unjoin:
    case Remove: {
        MatrixWindowInfo window;
        if (m_canvas->windowInfo(windowId, windowType, &window))
            m_worker->removeWindow(handle, window);
        break;
    }
    case Full:
        m_worker->setFullWindow(handle, windowId, subWindowId, type == 1);
        break;
    case AudioOff:
    case AudioOn:
        m_worker->setAudioOutputEnable(handle, windowId, subWindowId, windowType, operatetype == AudioOn);
        break;
    case MainStream:
        setStreamOf(windowId, subWindowId, windowType, 0);
        break;
    case SubStream:
        setStreamOf(windowId, subWindowId, windowType, 1);
        break;
    case AutoStream:
        setStreamOf(windowId, subWindowId, windowType, -1);
        break;
    case Playback:
        m_playback->openDialog(windowId, subWindowId, windowType);
        break;
    default:
        break;
    }
}

void MatrixForm::bindSource(int windowId, int subWindowId, int windowType, const MatrixDeviceInfo& source, bool picture)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    MatrixWindowInfo window;
    if (!handle || !m_canvas->windowInfo(windowId, windowType, &window))
        return;
    bool found = false;
    for (MatrixSubWindowInfo& sub : window.subWindows) {
        if (sub.subWindowId == subWindowId || (windowType == 2 && !found)) {
            sub.device = source;
            found = true;
        }
    }
    if (!found) {
        SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    if (picture)
        m_picturePending = true;
    m_worker->setWindowSignalSource(handle, window, subWindowId, picture);
}

void MatrixForm::setStreamOf(int windowId, int subWindowId, int windowType, int stream)
{
    MatrixWindowInfo window;
    if (!m_canvas->windowInfo(windowId, windowType, &window))
        return;
    for (const MatrixSubWindowInfo& sub : window.subWindows) {
        if (sub.subWindowId != subWindowId)
            continue;
        MatrixDeviceInfo device = sub.device;
        device.streamIndex = stream;
        bindSource(windowId, subWindowId, windowType, device, false);
        return;
    }
}

void MatrixForm::chooseBackground(int windowId, int subWindowId, int windowType)
{
    if (m_picturePending) {
        SystemAssistant::messageAlert(
            tr("Please add this background image after the background image was added last time."), this);
        return;
    }
    auto* dialog = new QFileDialog(this, tr("Select Image Files"), QString(), tr("Images (*.jpg)"));
    dialog->setObjectName(QStringLiteral("matrixBackgroundDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    connect(dialog, &QFileDialog::fileSelected, this, [this, windowId, subWindowId, windowType](const QString& path) {
        setBackgroundPicture(windowId, subWindowId, windowType, path);
    });
    dialog->open();
}

void MatrixForm::setBackgroundPicture(int windowId, int subWindowId, int windowType, const QString& path)
{
    const QFileInfo file(path);
    if (path.isEmpty())
        return;
    if (file.fileName().size() > kMaxPictureName) {
        SystemAssistant::messageAlert(tr("file name max len is 89!"), this);
        return;
    }
    if (m_picturePending) {
        SystemAssistant::messageAlert(
            tr("Please add this background image after the background image was added last time."), this);
        return;
    }
    // The decoder shows JPEG pictures only; a renamed file of another kind is refused here.
    QImageReader reader(path);
    if (reader.format() != "jpeg" || !reader.canRead()) {
        SystemAssistant::messageAlert(tr("The picture is not a JPEG image: %1").arg(file.fileName()), this);
        return;
    }
    MatrixDeviceInfo picture;
    picture.deviceType = 3;
    picture.deviceId = SourceRecords::fittedDeviceId(QStringLiteral("pic_") + file.completeBaseName());
    picture.displayName = QStringLiteral("pic_") + file.fileName();
    picture.deviceName = picture.displayName;
    picture.mainUrl = file.absoluteFilePath();
    picture.channel = 0;
    bindSource(windowId, subWindowId, windowType, picture, true);
}

void MatrixForm::slotSetWindowSignalSourceResult(
    int result, MatrixWindowInfo windowInfo, int subWindowId, bool addedPic)
{
    if (addedPic)
        m_picturePending = false;
    MatrixDeviceInfo device; // what the sub-window was given
    for (const MatrixSubWindowInfo& sub : windowInfo.subWindows)
        if (sub.subWindowId == subWindowId)
            device = sub.device;
    if (result == 0) {
        followProjection(windowInfo.windowId, subWindowId, device.deviceType == 4);
        m_canvas->setWindowInfo(windowInfo);
        return;
    }
    const QString name = device.displayName.isEmpty() ? device.deviceName : device.displayName;
    QString text;
    if (result == CMATRIX_ERR_LOOP_RUNNING) {
        setTip(tr("Cannot set signal source under group loop"));
        return;
    }
    if (result == CMATRIX_ERR_SOURCE_ON_WALL) {
        setTip(tr("Failed to add a video source: %1 is a video source already on the wall").arg(name));
        return;
    }
    switch (device.deviceType) {
    case 4:
    case 5:
        text = tr("Projection screen failed(%1).").arg(result);
        break;
    case 2:
        text = result == CMATRIX_ERR_LIMIT
            ? tr("device %1 create stream source failed(over max channel number or other error).").arg(name)
            : tr("device %1 set stream source failed(%2).").arg(name).arg(result);
        break;
    case 9:
        text = tr("device %1 set stream source failed(%2).").arg(name).arg(result);
        break;
    default:
        text = tr("device %1 set signal source failed(%2).").arg(name).arg(result);
        break;
    }
    // The canvas is changed only by a confirmed binding, so it still shows what the decoder holds.
    setTip(text);
}

void MatrixForm::slotLoopListDropEvent(int windowId, int, int windowType, int id)
{
    for (const MatrixLoopInfo& loop : qAsConst(m_loops)) {
        if (loop.loopId == id) {
            startLoop(loop, windowId, windowType);
            return;
        }
    }
    setTip(tr("The loop %1 is no longer on the decoder.").arg(id));
}

void MatrixForm::startLoop(const MatrixLoopInfo& loop, int windowId, int windowType)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    MatrixWindowInfo window;
    if (!handle || !m_canvas->windowInfo(windowId, windowType, &window))
        return;
    // Streams and cameras bound to the window would stay behind the turning sources.
    for (const MatrixSubWindowInfo& sub : window.subWindows)
        if (sub.device.deviceType == 2 || sub.device.deviceType == 8)
            m_worker->clearWindow(handle, windowId, sub.subWindowId, windowType);
    m_worker->restoreLoopInfo(handle, 0, windowId, loop);
}

void MatrixForm::slotRestoreLoopInfoResult(int result, int, int, int)
{
    if (result != 0)
        setTip(tr("Start loop failed(%1).").arg(result));
    else if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getWindowInfo(handle);
}

void MatrixForm::slotRestoreLoopInfoResult(int result, int, int windowId, QList<MatrixSubWindowInfo> subWindowInfoList)
{
    if (result != 0) {
        setTip(tr("Start loop failed(%1).").arg(result));
        return;
    }
    if (!subWindowInfoList.isEmpty())
        m_canvas->setSubWindows(windowId, subWindowInfoList);
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getWindowInfo(handle);
}

void MatrixForm::slotJoinWindows(MatrixWindowInfo windowInfo)
{
    if (const QSharedPointer<CSharedHandle> handle = requireHandle())
        m_worker->addWindowInfo(handle, windowInfo);
}

} // namespace kvms_matrix
