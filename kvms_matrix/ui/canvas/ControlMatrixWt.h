#pragma once

#include "MatrixBannerInfo.h"
#include "MatrixWindowInfo.h"

#include <QMap>
#include <QWidget>

namespace kvms_matrix {

// Placeholder of the TV wall canvas until the real one lands: keeps the windows and draws their
// rectangles.
class ControlMatrixWt : public QWidget {
    Q_OBJECT

public:
    explicit ControlMatrixWt(QWidget* parent = nullptr);

    void setWindowInfoList(const QList<MatrixWindowInfo>& windows, int rows, int cols);
    void setWindowInfo(const MatrixWindowInfo& window);
    void removeWindowInfo(int windowId, int windowType);
    void setSubWindows(int windowId, const QList<MatrixSubWindowInfo>& subWindows);
    void clearSubWindow(int windowId, int subWindowId, int windowType);
    void toggleFullSubWindow(int windowId, int subWindowId);
    void setBannerInfo(const MatrixBannerInfo& banner);
    void createFloatingWindow();
    bool windowInfo(int windowId, int windowType, MatrixWindowInfo* out) const;
    QList<MatrixWindowInfo> windowInfoList() const;
    int rows() const { return m_rows; }
    int cols() const { return m_cols; }
    int currentWindowId() const { return -1; }
    int currentWindowType() const { return 0; }
    QWidget* panel(const QString&) const { return nullptr; }

signals:
    void signalVideoPanelDropEvent(int windowId, int subWindowId, int windowType);
    void signalLoopListDropEvent(int windowId, int subWindowId, int windowType, int id);
    void signalCreateFloatingWindow(MatrixWindowInfo windowInfo);
    void signalMoveFloatingWindow(MatrixWindowInfo windowInfo);
    void signalSetBanner(int x, int y, int width, int height);
    void signalBannerConfig();
    void signalDelBanner();
    void signalWindowSelected(int windowId, int subWindowId, int windowType);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QMap<int, MatrixWindowInfo> m_windows;
    int m_rows = 1;
    int m_cols = 1;
};

} // namespace kvms_matrix
