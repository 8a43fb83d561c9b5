#include "KovCapThread.h"

#include "CaptureStageClock.h"
#include "JpegEncoder.h"
#include "MatrixSdkWorker.h"
#include "ScreenGrabber.h"
#include "SyncLocker.h"

#include <QCursor>
#include <QImage>
#include <QPainter>

namespace kvms_matrix {

namespace {

std::atomic<bool> g_fastPaths { true };

} // namespace

KovCapThread::KovCapThread(MatrixSdkWorker* worker, QObject* parent)
    : KCOMMON::KThread(parent)
    , m_worker(worker)
{
}

KovCapThread::~KovCapThread()
{
    stop();
    wait();
}

void KovCapThread::setFastPathsEnabled(bool enabled)
{
    g_fastPaths.store(enabled);
}

bool KovCapThread::fastPathsEnabled()
{
    return g_fastPaths.load();
}

void KovCapThread::setParams(QSharedPointer<CSharedHandle> connection, int windowId, int channel)
{
    {
        SyncLocker lock(&m_connectionMutex);
        m_connection = std::move(connection);
    }
    m_windowId.store(windowId);
    m_channel.store(channel);
    m_running.store(true);
    start(QThread::InheritPriority); // no effect while running: the loop just takes the new target
}

void KovCapThread::stop()
{
    std::lock_guard<std::mutex> lock(m_pauseMutex);
    m_running.store(false);
    m_pauseEnd.notify_all();
}

QSharedPointer<CSharedHandle> KovCapThread::connection() const
{
    SyncLocker lock(&m_connectionMutex);
    return m_connection;
}

void KovCapThread::run()
{
    using Clock = CaptureStageClock;
    const QImage pointer(QStringLiteral(":/matrix_images/images/cursor.png"));
    const bool fast = g_fastPaths.load();
    ScreenGrabber grabber(fast); // made here: its display connection belongs to this thread
    const JpegEncoder::Path encoding = fast ? JpegEncoder::Path::Direct : JpegEncoder::Path::Toolkit;
    while (m_running.load()) {
        {
            Clock clock(Clock::observed());
            QImage image = grabber.grab();
            clock.mark(Clock::Grab);
            if (!image.isNull()) {
                {
                    QPainter painter(&image);
                    painter.drawImage(QCursor::pos(), pointer);
                }
                clock.mark(Clock::Pointer);
                const QImage scaled = image.scaled(m_width, m_height, Qt::IgnoreAspectRatio, Qt::FastTransformation);
                clock.mark(Clock::Scale);
                const QByteArray jpeg = JpegEncoder::encode(scaled, encoding);
                clock.mark(Clock::Encode);
                // A failed send is neither retried nor logged: the next round brings a new picture.
                m_worker->sendDeviceDisplayFrame(
                    connection(), m_windowId.load(), m_channel.load(), jpeg, m_width, m_height);
                clock.mark(Clock::Send); // packing marked itself inside the sender
                clock.round().grabbed = true;
                clock.round().sharedMemory = grabber.usedSharedMemory();
            }
        }
        std::unique_lock<std::mutex> lock(m_pauseMutex);
        m_pauseEnd.wait_for(lock, std::chrono::milliseconds(40), [this] { return !m_running.load(); });
    }
}

} // namespace kvms_matrix
