#pragma once

#include "MatrixBannerInfo.h"

#include <QPoint>
#include <QWidget>

class QMenu;

namespace kvms_matrix {

// The banner's rectangle on the canvas with its text in its colours. The operator drags it
// (kept inside the canvas); a double-click asks for the banner settings; its menu deletes it.
class MatrixBannerWt : public QWidget {
    Q_OBJECT

public:
    explicit MatrixBannerWt(QWidget* parent = nullptr);

    void setBanner(const MatrixBannerInfo& banner);
    const MatrixBannerInfo& banner() const { return m_banner; }

signals:
    void signalBannerMoved(); // released after a drag, at its new place
    void signalBannerDoubleClicked();
    void signalDeleteBanner();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    MatrixBannerInfo m_banner;
    QMenu* m_menu = nullptr;
    QPoint m_pressOffset;
    bool m_pressed = false;
    bool m_moved = false;
};

} // namespace kvms_matrix
