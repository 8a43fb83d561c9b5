// The live mimic: the wall's picture cut into the canvas's panels, once a second while shown.
#include "CanvasMimic.h"

#include "ControlMatrixWt.h"
#include "MatrixPanelWt.h"
#include "MatrixSdkWorker.h"

#include <QEvent>
#include <QTimer>

namespace kvms_matrix {

namespace {

constexpr int kRefreshMs = 1000;
// A request unanswered this long is taken as lost, so that the mimic does not stall for good.
constexpr qint64 kLostAfterMs = 15000;
// The decoder refuses smaller or larger pictures.
constexpr int kMinSide = 16;
constexpr int kMaxWidth = 3840;
constexpr int kMaxHeight = 2160;

} // namespace

CanvasMimic::CanvasMimic(MatrixSdkWorker* worker, ControlMatrixWt* canvas, HandleSource currentHandle, QObject* parent)
    : QObject(parent)
    , m_worker(worker)
    , m_canvas(canvas)
    , m_currentHandle(std::move(currentHandle))
    , m_timer(new QTimer(this))
{
    m_timer->setInterval(kRefreshMs);
    connect(m_timer, &QTimer::timeout, this, &CanvasMimic::tick);
    // Queued: the worker answers from its own thread; the panels are touched only here.
    connect(
        m_worker, &MatrixSdkWorker::signalGetWallSnapshotResult, this,
        [this](int ret, QSharedPointer<CSharedHandle> handle, QByteArray, QImage picture) {
            onResult(ret, std::move(handle), std::move(picture));
        },
        Qt::QueuedConnection);
    m_canvas->installEventFilter(this);
}

CanvasMimic::~CanvasMimic()
{
    m_timer->stop();
    m_canvas->removeEventFilter(this);
}

bool CanvasMimic::isRunning() const
{
    return m_timer->isActive();
}

int CanvasMimic::intervalMs() const
{
    return m_timer->interval();
}

void CanvasMimic::setIntervalMs(int ms)
{
    m_timer->setInterval(qMax(50, ms));
}

void CanvasMimic::sync()
{
    const QSharedPointer<CSharedHandle> handle = m_currentHandle();
    if (handle != m_shown) {
        // Another wall, or none: what the panels show belongs to the old one.
        clearPictures(m_canvas);
        m_shown = handle;
    }
    const bool run = handle && m_canvas->isVisible();
    if (run && !m_timer->isActive()) {
        m_timer->start();
        tick(); // the first picture without waiting a whole interval
    } else if (!run) {
        m_timer->stop();
    }
}

bool CanvasMimic::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_canvas && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        sync();
    return QObject::eventFilter(watched, event);
}

void CanvasMimic::tick()
{
    if (m_pending && !m_pendingSince.hasExpired(kLostAfterMs))
        return;
    const QSharedPointer<CSharedHandle> handle = m_currentHandle();
    if (!handle || !m_canvas->isVisible()) {
        sync();
        return;
    }
    const QSize size = m_canvas->size();
    if (size.width() < kMinSide || size.height() < kMinSide)
        return;
    m_requested = size.boundedTo(QSize(kMaxWidth, kMaxHeight));
    m_pending = handle;
    m_pendingSince.start();
    m_worker->getWallSnapshot(handle, m_requested.width(), m_requested.height());
}

void CanvasMimic::onResult(int ret, QSharedPointer<CSharedHandle> handle, QImage picture)
{
    if (!m_pending || handle != m_pending)
        return; // another page's request, or one from before a reconnect
    m_pending.reset();
    if (handle != m_shown || !m_timer->isActive())
        return;
    if (ret != 0 || picture.isNull())
        return; // keep the last pictures; the next tick asks again
    applyPicture(m_canvas, picture, m_requested);
}

void CanvasMimic::applyPicture(ControlMatrixWt* canvas, const QImage& picture, const QSize& requested)
{
    if (picture.isNull() || requested.isEmpty())
        return;
    // The picture was taken at `requested`; the canvas may have been resized since.
    const QSize now = canvas->size();
    const qreal sx = qreal(picture.width()) / qMax(1, now.width());
    const qreal sy = qreal(picture.height()) / qMax(1, now.height());
    const QRect bounds = picture.rect();
    const QList<MatrixPanelWt*> panels = canvas->findChildren<MatrixPanelWt*>();
    for (MatrixPanelWt* panel : panels) {
        if (!panel->isVisibleTo(canvas) || panel->sourceKind() == MatrixPanelWt::SourceKind::Empty) {
            if (panel->hasPicture())
                panel->setPicture(QImage());
            continue;
        }
        const QRect onCanvas(panel->mapTo(canvas, QPoint(0, 0)), panel->size());
        const QRect part = QRect(qRound(onCanvas.x() * sx), qRound(onCanvas.y() * sy), qRound(onCanvas.width() * sx),
            qRound(onCanvas.height() * sy))
                               .intersected(bounds);
        if (part.isEmpty())
            panel->setPicture(QImage());
        else
            panel->setPicture(picture, part);
    }
}

void CanvasMimic::clearPictures(ControlMatrixWt* canvas)
{
    const QList<MatrixPanelWt*> panels = canvas->findChildren<MatrixPanelWt*>();
    for (MatrixPanelWt* panel : panels) {
        if (panel->hasPicture())
            panel->setPicture(QImage());
    }
}

} // namespace kvms_matrix
