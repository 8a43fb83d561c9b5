#include "ControlMatrixWt.h"

#include <QPainter>

namespace kvms_matrix {

ControlMatrixWt::ControlMatrixWt(QWidget* parent)
    : QWidget(parent)
{
}

void ControlMatrixWt::setWindowInfoList(const QList<MatrixWindowInfo>& windows, int rows, int cols)
{
    m_windows.clear();
    for (const MatrixWindowInfo& w : windows)
        m_windows.insert(w.windowId, w);
    m_rows = rows;
    m_cols = cols;
    update();
}

void ControlMatrixWt::setWindowInfo(const MatrixWindowInfo& window)
{
    m_windows.insert(window.windowId, window);
    update();
}

void ControlMatrixWt::removeWindowInfo(int windowId, int)
{
    m_windows.remove(windowId);
    update();
}

void ControlMatrixWt::setSubWindows(int windowId, const QList<MatrixSubWindowInfo>& subWindows)
{
    if (m_windows.contains(windowId))
        m_windows[windowId].subWindows = subWindows;
}

void ControlMatrixWt::clearSubWindow(int, int, int) { }
void ControlMatrixWt::toggleFullSubWindow(int, int) { }
void ControlMatrixWt::setBannerInfo(const MatrixBannerInfo&) { }

void ControlMatrixWt::createFloatingWindow()
{
    MatrixWindowInfo window;
    window.windowType = 2;
    window.x = window.y = 8192;
    window.w = window.h = 16384;
    emit signalCreateFloatingWindow(window);
}

bool ControlMatrixWt::windowInfo(int windowId, int, MatrixWindowInfo* out) const
{
    if (!m_windows.contains(windowId))
        return false;
    *out = m_windows.value(windowId);
    return true;
}

QList<MatrixWindowInfo> ControlMatrixWt::windowInfoList() const
{
    return m_windows.values();
}

void ControlMatrixWt::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), QColor(0x0e, 0x16, 0x24));
    p.setPen(QColor(0x2e, 0x3b, 0x55));
    for (const MatrixWindowInfo& w : m_windows)
        p.drawRect(
            w.x * width() / 32768, w.y * height() / 32768, w.w * width() / 32768 - 1, w.h * height() / 32768 - 1);
}

} // namespace kvms_matrix
