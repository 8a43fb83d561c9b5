#pragma once

#include "MatrixSelectWt.h"
#include "MouseMovePos.h"

#include "MatrixWindowInfo.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

class QAction;
class QMenu;

namespace kvms_matrix {

class MatrixPanelWt;

// A floating (roaming) window on the canvas: one panel inside a 1-pixel border, dragged freely
// within the canvas and resized with its selection frame's handles. It reports intent only:
// the canvas turns a finished move into the window's new rectangle in wall units.
class FloatingWt : public QWidget {
    Q_OBJECT

public:
    explicit FloatingWt(const MatrixWindowInfo& window, QWidget* parent);
    ~FloatingWt() override;

    const MatrixWindowInfo& windowInfo() const { return m_window; }
    void setWindowInfo(const MatrixWindowInfo& window);
    // The new rectangle after a move or resize; the rest of the record is the canvas's.
    void setWallRect(const QRect& wallRect);
    int windowId() const { return m_window.windowId; }
    MatrixPanelWt* panel() const { return m_panel; }
    QString panelKey() const;
    MatrixSelectWt* selectWt() const { return m_selectWt; }

    bool isSelected() const { return m_selected; }
    void setSelected(bool selected);
    bool isMoving() const { return m_moving; }
    // The two menu entries the source kind switches, and the one always there.
    QAction* playbackAction() const { return m_playbackAction; }
    QAction* clearAction() const { return m_clearAction; }

signals:
    void signalVideoPanelDropEvent(int windowId, int subWindowId, int windowType);
    void signalFloatingWtMove();
    void signalFloatingSelected();

public slots:
    void slotMouseMove(MouseMovePos mouseMouveType, bool press);
    void slotMenuActionTriggered(QAction* action);
    void slotMouseRelease();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void placeSelectFrame();
    void layoutPanel();
    void updateMenuActions();
    int firstSubWindowId() const;

    MatrixWindowInfo m_window;
    MatrixPanelWt* m_panel = nullptr;
    QPointer<MatrixSelectWt> m_selectWt;
    QMenu* m_menu = nullptr;
    QAction* m_playbackAction = nullptr;
    QAction* m_clearAction = nullptr;
    QAction* m_deleteAction = nullptr;
    bool m_selected = false;
    bool m_moving = false;
    MouseMovePos m_moveKind = None;
    QPoint m_pressOffset;
};

} // namespace kvms_matrix
