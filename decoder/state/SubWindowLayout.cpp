#include "SubWindowLayout.h"

#include "Window.h"
#include "WindowTable.h"

namespace vdec {

int SubWindowLayout::side(int32_t division)
{
    switch (division) {
    case 1:
        return 1;
    case 4:
        return 2;
    case 6:
    case 9:
        return 3;
    case 8:
    case 16:
        return 4;
    case 25:
        return 5;
    default:
        return 0;
    }
}

QRect SubWindowLayout::cells(int32_t division, int32_t sub)
{
    const int n = side(division);
    if (n == 0 || sub < 1 || sub > division)
        return {};
    // 6 and 8: one large cell, then the cells it leaves free, row by row.
    const int large = division == 6 ? 2 : division == 8 ? 3 : 1;
    if (sub == 1)
        return QRect(0, 0, large, large);
    int index = 1;
    for (int row = 0; row < n; ++row) {
        for (int col = 0; col < n; ++col) {
            if (row < large && col < large)
                continue;
            if (++index == sub)
                return QRect(col, row, 1, 1);
        }
    }
    return {};
}

QRect SubWindowLayout::rect(const QRect& area, int32_t division, int32_t sub)
{
    const QRect c = cells(division, sub);
    const int n = side(division);
    if (c.isEmpty() || area.isEmpty())
        return {};
    const qint64 w = area.width(), h = area.height();
    const int left = area.x() + int(c.x() * w / n);
    const int right = area.x() + int((c.x() + c.width()) * w / n);
    const int top = area.y() + int(c.y() * h / n);
    const int bottom = area.y() + int((c.y() + c.height()) * h / n);
    return QRect(left, top, right - left, bottom - top);
}

QRect SubWindowLayout::windowRect(const Window& window, int cols, int rows, QSize screen)
{
    const qint64 wallW = qint64(cols) * screen.width(), wallH = qint64(rows) * screen.height();
    const qint64 units = WindowTable::kWallUnits;
    const int left = int(window.x * wallW / units), top = int(window.y * wallH / units);
    const int right = int((qint64(window.x) + window.w) * wallW / units);
    const int bottom = int((qint64(window.y) + window.h) * wallH / units);
    return QRect(left, top, right - left, bottom - top);
}

QRect SubWindowLayout::shownRect(const Window& window, int32_t sub, int cols, int rows, QSize screen)
{
    const QRect area = windowRect(window, cols, rows, screen);
    if (window.fullScreenSub > 0)
        return window.fullScreenSub == sub ? area : QRect();
    return rect(area, window.division, sub);
}

} // namespace vdec
