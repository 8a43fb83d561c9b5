#pragma once

#include "MouseMovePos.h"

#include "KWidget.h"

#include <QPoint>

namespace kvms_matrix {

// The frame around a selected floating window: small square handles that report the mouse to
// the window they frame. Only the handles take the mouse; the window below stays clickable.
class MatrixSelectWt : public KCOMMON::KWidget {
    Q_OBJECT

public:
    explicit MatrixSelectWt(QWidget* parent = nullptr);

    // Normal mode: four corner handles; edge mode: handles at the middle of the left, right and
    // bottom edges.
    void setEdgeMode(bool edges);
    bool isEdgeMode() const { return m_edgeMode; }
    MouseMovePos handleAt(const QPoint& pos) const;
    MouseMovePos handle() const { return m_handle; }
    bool isPressed() const { return m_pressed; }
    // Where the mouse was at the last move, in global coordinates.
    QPoint mouseGlobalPos() const { return m_globalPos; }

signals:
    void signalMouseMove(MouseMovePos mouseMouveType, bool press);
    void signalMouseRelease();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QVector<QPair<MouseMovePos, QRect>> handles() const;

    MouseMovePos m_handle = None;
    bool m_pressed = false;
    bool m_edgeMode = false;
    QPoint m_globalPos;
};

} // namespace kvms_matrix
