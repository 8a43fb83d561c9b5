#include "WallGeometry.h"

#include <algorithm>
#include <limits>

namespace kvms_matrix {

namespace {

int bounded(int value, int most)
{
    return std::clamp(value, 1, std::clamp(most, 1, WallGeometry::kMaxSide));
}

} // namespace

WallGeometry::WallGeometry(int rows, int cols, int maxRows, int maxCols)
    : m_rows(bounded(rows, maxRows))
    , m_cols(bounded(cols, maxCols))
    // More cells than units would make a cell 0 units wide; keep it at least 1.
    , m_unitW(std::max(kUnits / m_cols, 1))
    , m_unitH(std::max(kUnits / m_rows, 1))
    , m_asGiven(m_rows == std::max(rows, 1) && m_cols == std::max(cols, 1))
{
}

std::vector<MatrixWindow_t> WallGeometry::grid() const
{
    std::vector<MatrixWindow_t> records;
    records.reserve(size_t(m_rows) * size_t(m_cols));
    for (int r = 0; r < m_rows; ++r) {
        for (int c = 0; c < m_cols; ++c) {
            MatrixWindow_t w {};
            w.id = uint32_t(cellId(r, c));
            w.x = c * m_unitW;
            w.y = r * m_unitH;
            w.w = m_unitW;
            w.h = m_unitH;
            records.push_back(w);
        }
    }
    return records;
}

MatrixWindowInfo WallGeometry::windowOf(const MatrixWindowStatus_t& status) const
{
    const MatrixWindow_t& record = status.window;
    MatrixWindowInfo info;
    info.windowId = int(record.id);
    info.windowIndex = info.windowId > 0 ? info.windowId - 1 : -1; // an id no window can have
    info.layer = status.layer == 0 ? -1 : status.layer;
    info.x = std::clamp(record.x, 0, kUnits);
    info.y = std::clamp(record.y, 0, kUnits);
    info.w = std::clamp(record.w, 0, kUnits - info.x);
    info.h = std::clamp(record.h, 0, kUnits - info.y);
    if (status.sourceKind == 1)
        info.turnIndex = status.turnIndex > 0 ? status.turnIndex - 1 : 0;
    if (record.floating) {
        info.windowType = 2;
        return info;
    }
    if (info.w <= m_unitW && info.h <= m_unitH) {
        info.windowType = 0;
        return info;
    }
    info.windowType = 1;
    info.spanCols = std::clamp(info.w / m_unitW, 1, m_cols);
    info.spanRows = std::clamp(info.h / m_unitH, 1, m_rows);
    for (int i = 0; i < info.spanRows; ++i) {
        for (int j = 0; j < info.spanCols; ++j) {
            const qint64 cellId = qint64(info.windowId) + qint64(i) * m_cols + j;
            if (cellId >= 1 && cellId <= std::numeric_limits<int>::max())
                info.cells.append(MatrixCellInfo { int(cellId), i, j });
        }
    }
    return info;
}

MatrixWindow_t WallGeometry::recordOf(const MatrixWindowInfo& window, bool floating)
{
    MatrixWindow_t record {};
    record.id = uint32_t(window.windowId);
    record.floating = floating ? 1 : 0;
    record.x = window.x;
    record.y = window.y;
    record.w = window.w;
    record.h = window.h;
    return record;
}

std::vector<MatrixWindow_t> WallGeometry::cellsOf(const MatrixWindowInfo& spliced)
{
    const int cellW = spliced.w / std::max(spliced.spanCols, 1);
    const int cellH = spliced.h / std::max(spliced.spanRows, 1);
    std::vector<MatrixWindow_t> records;
    for (const MatrixCellInfo& cell : spliced.cells) {
        MatrixWindow_t record {};
        record.id = uint32_t(cell.cellId);
        record.x = cell.column * cellW + spliced.x;
        record.y = cell.row * cellH + spliced.y;
        record.w = cellW;
        record.h = cellH;
        records.push_back(record);
    }
    return records;
}

} // namespace kvms_matrix
