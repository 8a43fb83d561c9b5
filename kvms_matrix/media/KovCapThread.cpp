#include "KovCapThread.h"

#include "MatrixSdkWorker.h"
#include "SyncLocker.h"

#include <QBuffer>
#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

namespace kvms_matrix {

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
    m_running.store(false);
}

QSharedPointer<CSharedHandle> KovCapThread::connection() const
{
    SyncLocker lock(&m_connectionMutex);
    return m_connection;
}

void KovCapThread::run()
{
    static const QImage pointer(QStringLiteral(":/matrix_images/images/cursor.png"));
    while (m_running.load()) {
        QScreen* screen = QGuiApplication::primaryScreen();
        QImage image;
        if (screen) {
            const QRect area = screen->geometry();
            image = screen->grabWindow(0, 0, 0, area.width(), area.height()).toImage();
        }
        if (!image.isNull()) {
            {
                QPainter painter(&image);
                painter.drawImage(QCursor::pos(), pointer);
            }
            const QImage scaled = image.scaled(m_width, m_height, Qt::IgnoreAspectRatio, Qt::FastTransformation);
            QByteArray jpeg;
            QBuffer buffer(&jpeg);
            buffer.open(QIODevice::WriteOnly);
            scaled.save(&buffer, "JPG");
            m_worker->sendDeviceDisplayFrame(
                connection(), m_windowId.load(), m_channel.load(), jpeg, m_width, m_height);
        }
        msleep(40);
    }
}

} // namespace kvms_matrix
