#pragma once

#include "CSharedHandle.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QSharedPointer>
#include <QSize>

#include <functional>

class QTimer;

namespace kvms_matrix {

class ControlMatrixWt;
class MatrixSdkWorker;

// The canvas as a live mimic of the wall: while the canvas is shown and its wall connected, asks
// the worker about once a second for the wall's picture at the canvas's size and gives every
// panel with a source the part of it under the panel. One request at a time; a tick while one is
// pending is skipped.
class CanvasMimic : public QObject {
    Q_OBJECT

public:
    using HandleSource = std::function<QSharedPointer<CSharedHandle>()>;

    CanvasMimic(MatrixSdkWorker* worker, ControlMatrixWt* canvas, HandleSource currentHandle, QObject* parent);
    ~CanvasMimic() override;

    // Starts or stops the refresh after the connection or the visibility changed.
    void sync();
    bool isRunning() const;
    int intervalMs() const;
    void setIntervalMs(int ms);

    // Gives each panel of the canvas its part of a wall picture taken at `requested` pixels.
    static void applyPicture(ControlMatrixWt* canvas, const QImage& picture, const QSize& requested);
    // Removes the pictures: the wall they showed is no longer known.
    static void clearPictures(ControlMatrixWt* canvas);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void tick();
    void onResult(int ret, QSharedPointer<CSharedHandle> handle, QImage picture);

    MatrixSdkWorker* m_worker;
    ControlMatrixWt* m_canvas;
    HandleSource m_currentHandle;
    QTimer* m_timer;
    QSharedPointer<CSharedHandle> m_shown; // the wall whose pictures the panels hold
    QSharedPointer<CSharedHandle> m_pending; // the request in flight, if any
    QElapsedTimer m_pendingSince;
    QSize m_requested;
};

} // namespace kvms_matrix
