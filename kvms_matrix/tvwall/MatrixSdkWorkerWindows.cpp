// MatrixSdkWorker: the windows of a wall: reading them with their divisions and sources,
// creating and removing spliced and floating windows, dividing, clearing, full screen and
// moving floating windows.
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SourceConverter.h"
#include "SourceRecords.h"
#include "TaskKeys.h"
#include "WallGeometry.h"
#include "WallHandle.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace kvms_matrix {

namespace {

// The decoder's (window id, division) pairs. A division a decoder could not mean (below 1 or
// above 25) is read as 1, so a bad answer cannot make the module build huge lists.
class DivisionTable {
public:
    explicit DivisionTable(CMHANDLE sdk)
    {
        SdkArray<WindowDivision_t> pairs(sdk);
        SdkCallLog::Timer timer;
        m_count = CMatrix_WindowGetDivision(sdk, pairs.out());
        const QString elapsed = timer.elapsed();
        QStringList ids;
        QStringList divisions;
        for (int i = 0; i < m_count && pairs.get(); ++i) {
            m_pairs.push_back(pairs[i]);
            ids.append(QString::number(pairs[i].windowId));
            divisions.append(QString::number(pairs[i].division));
        }
        SdkCallLog::write(SdkCallLog::kDivisions,
            { QStringLiteral("CMatrix_WindowGetDivision"), SdkCallLog::pointer(sdk), ids.join(QLatin1Char(',')),
                divisions.join(QLatin1Char(',')), QString::number(m_count), SdkCallLog::now(), elapsed });
    }

    // The division of the first pair of this window, or `missing` when there is none.
    int of(int windowId, int missing) const
    {
        for (const WindowDivision_t& pair : m_pairs) {
            if (pair.windowId == windowId)
                return pair.division >= 1 && pair.division <= 25 ? pair.division : 1;
        }
        return missing;
    }
    int count() const { return m_count; }

private:
    int m_count = 0;
    std::vector<WindowDivision_t> m_pairs;
};

int addWindows(CMHANDLE sdk, const std::vector<MatrixWindow_t>& records, bool replace)
{
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowAdd(sdk, records.data(), int(records.size()), replace);
    SdkCallLog::timed("CMatrix_WindowAdd", sdk, ret, timer.elapsedMs());
    return ret;
}

int deleteWindows(CMHANDLE sdk, const std::vector<uint32_t>& ids)
{
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowDel(sdk, ids.data(), int(ids.size()));
    SdkCallLog::timed("CMatrix_WindowDel", sdk, ret, timer.elapsedMs());
    return ret;
}

int setSources(CMHANDLE sdk, int windowId, const std::vector<DeviceInfo_t>& descriptors)
{
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowDeviceAdd(sdk, windowId, descriptors.data(), int(descriptors.size()), true);
    SdkCallLog::timed("CMatrix_WindowDeviceAdd", sdk, ret, timer.elapsedMs());
    return ret;
}

} // namespace

QList<MatrixWindowInfo> MatrixSdkWorker::getMatrixWindowInfo(QSharedPointer<CSharedHandle> handle, int& rows, int& cols)
{
    QList<MatrixWindowInfo> list;
    if (!WallHandle::usable(*this, handle))
        return list;
    const CMHANDLE sdk = handle->handle();

    int decoderCols = 0;
    int decoderRows = 0;
    char name[64] = {}; // read but not used
    SdkCallLog::Timer timer;
    const int ret = CMatrix_GetMatrix(sdk, &decoderCols, &decoderRows, name, int(sizeof name));
    SdkCallLog::write(SdkCallLog::kGetMatrix,
        { QStringLiteral("CMatrix_GetMatrix"), SdkCallLog::pointer(sdk), QString::number(decoderCols),
            QString::number(decoderRows), QString::number(ret), SdkCallLog::now(), timer.elapsed() });
    if (ret != CMATRIX_OK)
        return list;

    BannerInfo_t banner {};
    SdkCallLog::Timer bannerTimer;
    const int bannerRet = CMatrix_GetBanner(sdk, &banner);
    if (bannerRet != CMATRIX_OK) {
        SdkCallLog::write(SdkCallLog::kBannerFailed,
            { QStringLiteral("CMatrix_GetBanner"), QString::number(bannerRet), SdkCallLog::now() });
    } else {
        SdkCallLog::timed("CMatrix_GetBanner", sdk, bannerRet, bannerTimer.elapsedMs());
        mirrorDecoderBanner(banner);
    }

    MatrixCapacity_t capacity {};
    CMatrix_GetCapacity(sdk, &capacity);
    const WallGeometry geometry(decoderRows, decoderCols, capacity.maxRows, capacity.maxCols);
    if (!geometry.asGiven())
        SdkCallLog::line(QStringLiteral("{ funcName = getMatrixWindowInfo , grid = %1 x %2 , read as %3 x %4 }")
                             .arg(decoderRows)
                             .arg(decoderCols)
                             .arg(geometry.rows())
                             .arg(geometry.cols()));
    rows = geometry.rows();
    cols = geometry.cols();

    SdkArray<MatrixWindowStatus_t> windows(sdk);
    SdkCallLog::Timer windowTimer;
    const int count = CMatrix_WindowGet(sdk, windows.out());
    SdkCallLog::timed("CMatrix_WindowGet", sdk, count, windowTimer.elapsedMs());
    if (count <= 0 || !windows.get())
        return list;
    const DivisionTable divisions(sdk);

    // Spliced windows cannot overlap, so together they cover at most the grid: cells past that
    // are a decoder's error and are not kept.
    int cellsLeft = geometry.rows() * geometry.cols();
    for (int i = 0; i < count; ++i) {
        MatrixWindowInfo window = geometry.windowOf(windows[i]);
        if (window.cells.size() > cellsLeft) {
            SdkCallLog::line(QStringLiteral("{ funcName = getMatrixWindowInfo , windowId = %1 , cells = %2 , "
                                            "more than the grid holds }")
                                 .arg(window.windowId)
                                 .arg(window.cells.size()));
            window.cells.clear();
            window.spanRows = 1;
            window.spanCols = 1;
        }
        cellsLeft -= window.cells.size();
        const bool floating = window.windowType == 2;
        if (!floating)
            window.division = divisions.of(window.windowId, 1);
        const QList<MatrixDeviceInfo> devices = addEmptyDevice(getDeviceInfo(handle, window.windowId), window.division);
        window.subWindows = SourceRecords::subWindowsOf(devices, window.division, !floating);
        list.append(window);
    }
    return list;
}

int MatrixSdkWorker::addMatrixWindowInfo(QSharedPointer<CSharedHandle> handle, MatrixWindowInfo* window)
{
    if (!window || (window->windowType != 1 && window->windowType != 2))
        return -1;
    if (!WallHandle::usable(*this, handle))
        return -1;
    const CMHANDLE sdk = handle->handle();
    if (window->windowType == 1 && !window->cells.isEmpty()) {
        std::vector<uint32_t> cellIds;
        for (const MatrixCellInfo& cell : window->cells)
            cellIds.push_back(uint32_t(cell.cellId));
        // The cells must be gone before the spliced window can cover them.
        if (const int ret = deleteWindows(sdk, cellIds); ret != CMATRIX_OK)
            return ret;
    }
    return addWindows(sdk, { WallGeometry::recordOf(*window, window->windowType == 2) }, false);
}

int MatrixSdkWorker::removeMatrixWindow(QSharedPointer<CSharedHandle> handle, MatrixWindowInfo* window)
{
    if (!window || !WallHandle::usable(*this, handle))
        return -1;
    const CMHANDLE sdk = handle->handle();
    const int ret = deleteWindows(sdk, { uint32_t(window->windowId) });
    // A spliced window gives its cells back; when it could not be deleted they are still covered.
    if (ret == CMATRIX_OK && window->windowType == 1 && !window->cells.isEmpty())
        addWindows(sdk, WallGeometry::cellsOf(*window), false);
    return ret;
}

int MatrixSdkWorker::setMatrixWindowSplit(QSharedPointer<CSharedHandle> handle, int windowId, int split)
{
    if (!WallHandle::usable(*this, handle))
        return -1;
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowSetDivision(handle->handle(), windowId, split);
    SdkCallLog::timed("CMatrix_WindowSetDivision", handle->handle(), ret, timer.elapsedMs());
    return ret;
}

void MatrixSdkWorker::doGetWindowInfo(const WorkerTaskParam& task)
{
    int rows = 1;
    int cols = 1;
    QList<MatrixWindowInfo> list;
    if (WallHandle::usable(*this, task.handle))
        list = getMatrixWindowInfo(task.handle, rows, cols);
    emit signalGetWindowInfoResult(list, rows, cols);
}

void MatrixSdkWorker::doAddWindowInfo(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixWindowInfo> window(static_cast<MatrixWindowInfo*>(task.userData));
    const int ret = WallHandle::usable(*this, task.handle) ? addMatrixWindowInfo(task.handle, window.get()) : -1;
    emit signalAddWindowInfoResult(ret, window ? *window : MatrixWindowInfo());
}

void MatrixSdkWorker::doRemoveWindow(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixWindowInfo> window(static_cast<MatrixWindowInfo*>(task.userData));
    const int ret = WallHandle::usable(*this, task.handle) ? removeMatrixWindow(task.handle, window.get()) : -1;
    emit signalRemoveWindowResult(ret, window ? window->windowId : -1, window ? window->windowType : 0);
}

void MatrixSdkWorker::doSetWindowSplit(const WorkerTaskParam& task)
{
    const int windowId = task.params.value(TaskKeys::kWindowId, -1).toInt();
    const int split = task.params.value(TaskKeys::kWindowSplit, 1).toInt();
    int ret = -1;
    QList<MatrixSubWindowInfo> list;
    if (WallHandle::usable(*this, task.handle)) {
        ret = setMatrixWindowSplit(task.handle, windowId, split);
        if (ret == CMATRIX_OK)
            list
                = SourceRecords::subWindowsOf(addEmptyDevice(getDeviceInfo(task.handle, windowId), split), split, true);
    }
    emit signalSetWindowSplitResult(ret, windowId, list);
}

void MatrixSdkWorker::doClearWindow(const WorkerTaskParam& task)
{
    const int windowId = task.params.value(TaskKeys::kWindowId, -1).toInt();
    const int subWindowId = task.params.value(TaskKeys::kSubWindowId, -1).toInt();
    const int windowType = task.params.value(TaskKeys::kWindowType, 0).toInt();
    if (!WallHandle::usable(*this, task.handle)) {
        emit signalClearWindowResult(-1, windowId, subWindowId, windowType);
        return;
    }
    const CMHANDLE sdk = task.handle->handle();
    int ret = CMATRIX_OK;
    if (subWindowId == -1) {
        // A turning window would put a source back at its next turn.
        stopMatrixLoop(task.handle, windowId);
        ret = setSources(sdk, windowId, {});
    } else {
        // The division is only looked up for ids up to the number of pairs; a higher id (normal
        // after splicing) keeps 0, so the window's sources are all removed. Kept as designed.
        const DivisionTable table(sdk);
        const int division = windowId >= 1 && windowId <= table.count() ? table.of(windowId, 0) : 0;
        QList<MatrixDeviceInfo> devices = addEmptyDevice(getDeviceInfo(task.handle, windowId), division);
        const QString usbPath = task.params.value(TaskKeys::kFilePath).toString();
        const auto distributedBefore = mdRegistry();
        std::vector<DeviceInfo_t> descriptors;
        for (int i = 0; i < devices.size(); ++i) {
            const SourceConverter::Target target { windowId, i + 1, windowType };
            DeviceInfo_t d = i + 1 == subWindowId
                ? convertEmptyDevice(windowId, subWindowId)
                : SourceConverter::convert(*this, task.handle, devices[i], target, usbPath);
            d.subWindow = i + 1;
            descriptors.push_back(d);
        }
        ret = setSources(sdk, windowId, descriptors);
        if (ret != CMATRIX_OK)
            forgetDistributionsSince(distributedBefore);
    }
    emit signalClearWindowResult(ret, windowId, subWindowId, windowType);
}

void MatrixSdkWorker::doSetFullWindow(const WorkerTaskParam& task)
{
    const int windowId = task.params.value(TaskKeys::kWindowId, -1).toInt();
    const int subWindowId = task.params.value(TaskKeys::kSubWindowId, -1).toInt();
    const bool full = task.params.value(TaskKeys::kIsFullWindow, 0).toInt() != 0;
    int ret = -1;
    if (WallHandle::usable(*this, task.handle)) {
        SdkCallLog::Timer timer;
        ret = CMatrix_WindowSetFullScreen(task.handle->handle(), windowId, subWindowId, full ? 1 : 0);
        SdkCallLog::timed("CMatrix_WindowSetFullScreen", task.handle->handle(), ret, timer.elapsedMs());
    }
    emit signalSetFullWindowResult(ret, windowId, subWindowId);
}

void MatrixSdkWorker::doMoveFloatingWindow(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixWindowInfo> window(static_cast<MatrixWindowInfo*>(task.userData));
    if (!window || !WallHandle::usable(*this, task.handle))
        return;
    const MatrixWindow_t record = WallGeometry::recordOf(*window, true);
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowMove(task.handle->handle(), &record);
    SdkCallLog::timed("CMatrix_WindowMove", task.handle->handle(), ret, timer.elapsedMs());
}

} // namespace kvms_matrix
