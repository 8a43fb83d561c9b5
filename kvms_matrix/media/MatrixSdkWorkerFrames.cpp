// MatrixSdkWorker: frames the workstation produces itself (desktop capture, still pictures,
// replayed recordings), wrapped in Kav envelopes and handed to the decoder; the registry of
// media distributions that decides which SDK call carries a recording frame.
#include "MatrixSdkWorker.h"

#include "CaptureStageClock.h"
#include "KavFrame.h"
#include "KovCapThread.h"
#include "SdkCallLog.h"
#include "SyncLocker.h"
#include "TaskKeys.h"

#include <QFile>
#include <QImage>
#include <QThread>

#include <vector>

namespace kvms_matrix {

namespace {

constexpr int kCaptureSendTimeoutMs = 60;
// A still picture travels as one frame; far below the largest message the decoder accepts.
constexpr qint64 kMaxPictureFileBytes = 16 * 1024 * 1024;

// A still picture: video block with codec 4 at one frame a second, an empty audio block.
KavStreamInfo pictureStream(int width, int height)
{
    KavStreamInfo info {};
    info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    info.videoCodec = 4;
    info.frameRateNum = 1;
    info.frameRateDen = 1;
    info.width = uint16_t(width);
    info.height = uint16_t(height);
    return info;
}

// One zeroed buffer per frame, sized for `sizeType`, packed with `frame`; empty when packing
// fails.
std::vector<unsigned char> packFrame(unsigned sizeType, const KavFrame& frame, const KavStreamInfo& info)
{
    const int capacity = KavCalcFrameSize(sizeType, frame.size);
    if (capacity <= 0)
        return {};
    std::vector<unsigned char> buffer(size_t(capacity), 0);
    const int packed = KavPackFrame(&frame, &info, buffer.data(), capacity);
    if (packed <= 0)
        return {};
    buffer.resize(size_t(packed));
    return buffer;
}

int displayFrame(
    const QSharedPointer<CSharedHandle>& handle, int windowId, int channel, const std::vector<unsigned char>& buffer)
{
    if (buffer.empty())
        return -1;
    return CMatrix_DisplayFrame(handle->handle(), windowId, channel, buffer.data(), int(buffer.size()));
}

} // namespace

int MatrixSdkWorker::sendDeviceDisplayFrame(
    QSharedPointer<CSharedHandle> handle, int windowId, int channel, const QByteArray& jpeg, int width, int height)
{
    if (!handle)
        return -1;
    KavFrame frame {};
    frame.type = KAV_TYPE_KEY;
    frame.data = reinterpret_cast<const unsigned char*>(jpeg.constData());
    frame.size = uint32_t(jpeg.size());
    const std::vector<unsigned char> buffer = packFrame(KAV_TYPE_KEY, frame, pictureStream(width, height));
    CaptureStageClock::markCurrent(CaptureStageClock::Pack); // when called by the capture loop under a clock
    if (buffer.empty())
        return -1;
    // A desktop picture that cannot be delivered at once is dropped: the next round brings a new
    // one, and a round stays short whatever the decoder does, so stopping the capture never waits
    // long on the network.
    return CMatrix_DisplayFrameWithin(
        handle->handle(), windowId, channel, buffer.data(), int(buffer.size()), kCaptureSendTimeoutMs);
}

int MatrixSdkWorker::sendDeviceDisplayFrame(
    QSharedPointer<CSharedHandle> handle, int windowId, MatrixDeviceInfo* device)
{
    // The decoder needs a moment after the source was bound before it takes the picture; the
    // pause comes first, whatever follows.
    QThread::sleep(1);
    if (!handle || !device)
        return -1;
    QFile file(device->mainUrl);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    // The file is read whole on the worker. A still picture is a few hundred kilobytes; a huge
    // file (a wrong one chosen, a device node) is refused before it is loaded.
    if (file.size() > kMaxPictureFileBytes) {
        SdkCallLog::line(
            QStringLiteral("{ funcName = sendDeviceDisplayFrame , file = %1 , size = %2 , refused: over %3 bytes }")
                .arg(device->mainUrl)
                .arg(file.size())
                .arg(kMaxPictureFileBytes));
        return -1;
    }
    const QByteArray bytes = file.read(kMaxPictureFileBytes);
    const QImage image = QImage::fromData(bytes);
    KavFrame frame {};
    frame.type = KAV_TYPE_KEY;
    frame.data = reinterpret_cast<const unsigned char*>(bytes.constData());
    frame.size = uint32_t(bytes.size());
    return displayFrame(handle, windowId, device->channel,
        packFrame(KAV_TYPE_KEY, frame, pictureStream(image.width(), image.height())));
}

int MatrixSdkWorker::sendDeviceDisplayFrame(QSharedPointer<CSharedHandle> handle, int windowId, int channel,
    VideoStreamInfo* info, char* data, int size, int frameKind)
{
    if (!handle || !info || size < 0)
        return -1;
    KavStreamInfo stream {};
    stream.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    stream.videoCodec = info->codec == 0 ? 1 : info->codec == 1 ? 2 : 0;
    stream.width = info->width;
    stream.height = info->height;
    stream.frameRateNum = info->frameRateNum;
    stream.frameRateDen = info->frameRateDen;
    // Kinds other than 1 and 2 size the buffer for an audio frame but leave the type 0, which
    // packs as a bare 17-byte header: the decoder side expects exactly that.
    KavFrame frame {};
    unsigned sizeType = KAV_TYPE_AUDIO;
    if (frameKind == 1)
        frame.type = sizeType = KAV_TYPE_KEY;
    else if (frameKind == 2)
        frame.type = sizeType = KAV_TYPE_VIDEO;
    frame.data = reinterpret_cast<const unsigned char*>(data);
    frame.size = uint32_t(size);
    const std::vector<unsigned char> buffer = packFrame(sizeType, frame, stream);
    if (buffer.empty())
        return -1;

    // An entry under the key decides, whatever handle it holds.
    bool distributed = false;
    void* mdHandle = nullptr;
    {
        SyncLocker lock(&m_mdMutex);
        const auto it = m_mdRegistry.find({ windowId, channel });
        distributed = it != m_mdRegistry.end();
        if (distributed)
            mdHandle = it->second.mdHandle;
    }
    if (distributed)
        return CMatrix_SendMediaFrame(mdHandle, buffer.data(), int(buffer.size()));
    return displayFrame(handle, windowId, channel, buffer);
}

void MatrixSdkWorker::addMdHandle(int windowId, int channel, const MediaDistributeEntry& entry)
{
    SyncLocker lock(&m_mdMutex);
    m_mdRegistry[{ windowId, channel }] = entry;
}

std::map<std::pair<int, int>, MediaDistributeEntry> MatrixSdkWorker::mdRegistry() const
{
    SyncLocker lock(&m_mdMutex);
    return m_mdRegistry;
}

void MatrixSdkWorker::removeMdHandle(
    QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType)
{
    // Stopping waits for the decoder: done on the worker thread, where the registry changes.
    WorkerTaskParam task = makeTask(TaskKind::RemoveMdHandle, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kWindowType, windowType);
    queueTask(task);
}

void MatrixSdkWorker::doRemoveMdHandle(const WorkerTaskParam& task)
{
    const QSharedPointer<CSharedHandle>& handle = task.handle;
    const int windowId = task.params.value(TaskKeys::kWindowId).toInt();
    const int subWindowId = task.params.value(TaskKeys::kSubWindowId).toInt();
    const int windowType = task.params.value(TaskKeys::kWindowType).toInt();
    if (!handle || !registeredHandles().values().contains(handle))
        return;
    bool found = false;
    void* mdHandle = nullptr;
    std::pair<int, int> key;
    {
        SyncLocker lock(&m_mdMutex);
        for (const auto& [entryKey, entry] : m_mdRegistry) { // key order: the first match wins
            if (entry.windowId == windowId && entry.subWindowId == subWindowId && entry.windowType == windowType) {
                found = true;
                mdHandle = entry.mdHandle;
                key = entryKey;
                break;
            }
        }
    }
    if (!found)
        return;
    const int ret = CMatrix_StopMediaDistribute(mdHandle); // outside the lock: it waits for the decoder
    SdkCallLog::callAt("CMatrix_StopMediaDistribute", ret);
    SyncLocker lock(&m_mdMutex);
    m_mdRegistry.erase(key); // even when the decoder refused: the handle is not used again
}

// Distributions started on a connection end with it: frames must not go to a dead handle, and
// their channels are free again for the next connection.
void MatrixSdkWorker::forgetDistributionsOf(void* connection)
{
    std::vector<void*> gone;
    {
        SyncLocker lock(&m_mdMutex);
        for (auto it = m_mdRegistry.begin(); it != m_mdRegistry.end();) {
            if (it->second.connection == connection) {
                gone.push_back(it->second.mdHandle);
                it = m_mdRegistry.erase(it);
            } else {
                ++it;
            }
        }
    }
    stopDistributions(gone);
}

// Distributions registered since `before` was taken: started for a binding that then failed.
void MatrixSdkWorker::forgetDistributionsSince(const std::map<std::pair<int, int>, MediaDistributeEntry>& before)
{
    std::vector<void*> gone;
    {
        SyncLocker lock(&m_mdMutex);
        for (auto it = m_mdRegistry.begin(); it != m_mdRegistry.end();) {
            const auto old = before.find(it->first);
            if (old == before.end() || old->second.mdHandle != it->second.mdHandle) {
                gone.push_back(it->second.mdHandle);
                it = m_mdRegistry.erase(it);
            } else {
                ++it;
            }
        }
    }
    stopDistributions(gone);
}

void MatrixSdkWorker::stopDistributions(const std::vector<void*>& mdHandles)
{
    for (void* mdHandle : mdHandles) {
        const int ret = CMatrix_StopMediaDistribute(mdHandle); // outside the lock: it waits for the decoder
        SdkCallLog::callAt("CMatrix_StopMediaDistribute", ret);
    }
}

void MatrixSdkWorker::startCaptureThread(QSharedPointer<CSharedHandle> handle, int windowId, int channel)
{
    m_capThread->setParams(std::move(handle), windowId, channel);
}

void MatrixSdkWorker::endCapture()
{
    m_capThread->stop();
}

void MatrixSdkWorker::stopCaptureThread()
{
    // Spins, without sleeping, until the current round (one capture, one send, 40 ms) is over;
    // yielding only lets the capture thread finish sooner on a busy machine.
    while (m_capThread->isRunning()) {
        m_capThread->stop();
        QThread::yieldCurrentThread();
    }
}

} // namespace kvms_matrix
