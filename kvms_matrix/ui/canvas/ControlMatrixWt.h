#pragma once

#include "MatrixBannerInfo.h"
#include "MatrixWindowInfo.h"

#include <QHash>
#include <QMap>
#include <QPair>
#include <QString>
#include <QWidget>

class QAction;
class QMenu;

class QPainter;
class QRubberBand;

namespace kvms_matrix {

class CanvasMenu;
class FloatingWt;
class MatrixBannerWt;
class MatrixPanelWt;
class MatrixScreenGridWt;

// The TV wall canvas: one decoder's wall as the operator sees it. Window rectangles are kept in
// wall units exactly as the worker delivers them and turned into pixels on every layout; each
// sub-window has a panel widget, found through its key text. The canvas reports intent (drops,
// selection, moves) with signals and never talks to the worker itself.
class ControlMatrixWt : public QWidget {
    Q_OBJECT

public:
    explicit ControlMatrixWt(QWidget* parent = nullptr);
    ~ControlMatrixWt() override;

    // The key of a sub-window's panel: "windowid:%1~subwindowid:%2~windowtype:%3".
    static QString panelKey(int windowId, int subWindowId, int windowType);

    // The worker's window-info result: replaces both window maps whole and lays out again.
    void setWindowInfoList(const QList<MatrixWindowInfo>& windows, int rows, int cols);
    // One window added or changed (type 2 floating layer; 1 spliced; else ordinary), then repaint.
    void setWindowInfo(const MatrixWindowInfo& window);
    // A removed spliced window gives its cells back as one-cell windows, as the decoder does.
    void removeWindowInfo(int windowId, int windowType);
    void setSubWindows(int windowId, const QList<MatrixSubWindowInfo>& subWindows); // division result
    void clearSubWindow(int windowId, int subWindowId, int windowType); // panel emptied; -1 all
    void toggleFullSubWindow(int windowId, int subWindowId);
    void setBannerInfo(const MatrixBannerInfo& banner); // hidden when its width is 0
    void createFloatingWindow(); // message when one exists; else emits signalCreateFloatingWindow
    bool windowInfo(int windowId, int windowType, MatrixWindowInfo* out) const;
    QList<MatrixWindowInfo> windowInfoList() const; // ordinary, spliced and floating
    int rows() const { return m_rows; }
    int cols() const { return m_cols; }
    int currentWindowId() const { return m_currentWindowId; }
    int currentWindowType() const { return m_currentWindowType; }
    int currentSubWindowId() const { return m_currentSubWindowId; }
    // Index of the sub-window shown full in a window, -1 when none is.
    int fullSubWindowIndex(int windowId, int windowType) const;
    QWidget* panel(const QString& key) const;
    MatrixBannerInfo bannerInfo() const { return m_banner; }
    bool isBannerSet() const { return m_bannerSet; }
    QWidget* bannerWidget() const;
    FloatingWt* floatingWt(int windowId) const;
    CanvasMenu* contextMenu() const { return m_menu; }
    // Builds the menu for the window under a point and makes it the menu's target; null when
    // nothing lies there. contextMenuEvent pops it up.
    QMenu* prepareMenuAt(const QPoint& pos);
    // The spliced window that would cover the cells a canvas rectangle touches; false (and a
    // reason) when they are not free cells making a rectangle of two or more.
    bool joinWindowFor(const QRect& canvasRect, MatrixWindowInfo* out, QString* reason) const;
    QRubberBand* rubberBand() const { return m_rubberBand; }

    // Which window and sub-window lie under a point of the canvas; floating windows first.
    bool hitTest(const QPoint& pos, int* windowId, int* subWindowId, int* windowType) const;

signals:
    void signalVideoPanelDropEvent(int windowId, int subWindowId, int windowType);
    void signalLoopListDropEvent(int windowId, int subWindowId, int windowType, int id);
    void signalCreateFloatingWindow(MatrixWindowInfo windowInfo);
    void signalMoveFloatingWindow(MatrixWindowInfo windowInfo);
    void signalSetBanner(int x, int y, int width, int height);
    void signalBannerConfig();
    void signalDelBanner();
    void signalWindowSelected(int windowId, int subWindowId, int windowType); // selection changed
    void signalJoinWindows(MatrixWindowInfo windowInfo); // free cells to become one spliced window

public slots:
    void slotFloatingWtMove();
    void slotFloatingSelected();
    void slotBannerWtMove();
    void slotDelBanner();
    void slotMenuActionTriggered(QAction* action);
    void slotSubMenuActionTriggered(QAction* action);
    void slotJoinMenuActionTriggered(QAction* action);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    // Puts every floating window back at its record's rectangle.
    void placeFloatingWindows();

private:
    using WindowKey = QPair<int, int>; // window id, window type

    void storeWindow(const MatrixWindowInfo& window);
    void setFloatingWindow(const MatrixWindowInfo& window);
    void removeFloatingWindow(int windowId);
    MatrixWindowInfo* findWindow(int windowId, int windowType);
    const MatrixWindowInfo* findWindow(int windowId, int windowType) const;
    void syncPanels();
    void updateWindowPanels(const MatrixWindowInfo& window);
    void layoutPanels();
    void layoutWindow(const MatrixWindowInfo& window, const QSize& canvas);
    void placeOverlay();
    void placeBanner();
    void restack();
    void selectWindow(int windowId, int subWindowId, int windowType);
    void deselectFloatingWindows(FloatingWt* except);
    int nextFloatingWindowId() const;
    void paintWindow(QPainter& painter, const MatrixWindowInfo& window);
    void sendMenuCode(int subWindowId, int windowType, int code, int type);
    void startJoinBand(const QPoint& pos, bool shift);
    bool moveJoinBand(const QPoint& pos);
    bool finishJoinBand(const QPoint& pos);

    QMap<int, MatrixWindowInfo> m_windows; // ordinary, by window id
    QMap<int, MatrixWindowInfo> m_splicedWindows; // by window id
    QMap<int, FloatingWt*> m_floatingWts; // the floating layer, by window id
    QHash<QString, MatrixPanelWt*> m_panels; // panels of ordinary and spliced windows
    QHash<WindowKey, int> m_fullIndex; // sub-window shown full; absent means none
    int m_rows = 1;
    int m_cols = 1;
    int m_currentWindowId = -1;
    int m_currentWindowType = 0;
    int m_currentSubWindowId = -1;
    MatrixScreenGridWt* m_gridWt = nullptr;
    MatrixBannerWt* m_bannerWt = nullptr;
    MatrixBannerInfo m_banner;
    bool m_bannerSet = false;
    CanvasMenu* m_menu = nullptr;
    int m_menuWindowId = -1; // the window the open menu acts on
    int m_menuSubWindowId = -1;
    int m_menuWindowType = 0;
    QRubberBand* m_rubberBand = nullptr;
    QPoint m_bandOrigin;
    bool m_bandArmed = false; // a left press on a free cell may start a join
};

} // namespace kvms_matrix
