#include "ControlMatrixWt.h"

#include "WindowKey.h"

#include "CanvasGeometry.h"
#include "FloatingGeometry.h"
#include "FloatingWt.h"
#include "MatrixBannerWt.h"
#include "MatrixPanelWt.h"
#include "MatrixScreenGridWt.h"

#include "SystemAssistant.h"

#include <QSet>

// The canvas's window state. Laying out and painting are in ControlMatrixWtLayout.cpp, the
// mouse and drag handling in ControlMatrixWtEvents.cpp.

namespace kvms_matrix {

ControlMatrixWt::ControlMatrixWt(QWidget* parent)
    : QWidget(parent)
    , m_gridWt(new MatrixScreenGridWt(this))
    , m_bannerWt(new MatrixBannerWt(this))
{
    // The canvas may live before the worker registers the records its signals carry.
    qRegisterMetaType<MatrixWindowInfo>("MatrixWindowInfo");
    setObjectName(QStringLiteral("controlMatrixWt"));
    setAcceptDrops(true);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(64, 36);
    m_bannerWt->hide();
    connect(m_bannerWt, &MatrixBannerWt::signalBannerMoved, this, &ControlMatrixWt::slotBannerWtMove);
    connect(m_bannerWt, &MatrixBannerWt::signalBannerDoubleClicked, this, &ControlMatrixWt::signalBannerConfig);
    connect(m_bannerWt, &MatrixBannerWt::signalDeleteBanner, this, &ControlMatrixWt::slotDelBanner);
}

ControlMatrixWt::~ControlMatrixWt()
{
    // Floating windows delete their selection frames, which are this widget's children too.
    qDeleteAll(m_floatingWts);
    m_floatingWts.clear();
}

QString ControlMatrixWt::panelKey(int windowId, int subWindowId, int windowType)
{
    return windowKey(windowId, subWindowId, windowType);
}

namespace {

// Bounds on what a decoder's answer may make the canvas build: no wall has more screens on a
// side, and no division more sub-windows.
constexpr int kMaxGridSide = 64;
constexpr int kMaxPanelsPerWindow = 25;

} // namespace

void ControlMatrixWt::setWindowInfoList(const QList<MatrixWindowInfo>& windows, int rows, int cols)
{
    m_rows = qBound(1, rows, kMaxGridSide);
    m_cols = qBound(1, cols, kMaxGridSide);
    m_windows.clear();
    m_splicedWindows.clear();
    m_fullIndex.clear();

    QSet<int> floatingIds;
    for (const MatrixWindowInfo& window : windows) {
        if (window.windowType == 2) {
            floatingIds.insert(window.windowId);
            setFloatingWindow(window);
        } else {
            storeWindow(window);
        }
    }
    const QList<int> shownFloating = m_floatingWts.keys();
    for (int id : shownFloating) {
        if (!floatingIds.contains(id))
            removeFloatingWindow(id);
    }
    if (m_currentWindowId != -1 && !findWindow(m_currentWindowId, m_currentWindowType)) {
        m_currentWindowId = -1;
        m_currentWindowType = 0;
        m_currentSubWindowId = -1;
    }
    m_gridWt->setGrid(m_rows, m_cols);
    syncPanels();
    layoutPanels();
}

void ControlMatrixWt::storeWindow(const MatrixWindowInfo& window)
{
    if (window.windowType == 1) {
        // The cells a spliced window covers are no longer windows of their own.
        for (const MatrixCellInfo& cell : window.cells) {
            m_windows.remove(cell.cellId);
            m_fullIndex.remove(WindowKey(cell.cellId, 0));
        }
        m_windows.remove(window.windowId);
        m_splicedWindows.insert(window.windowId, window);
    } else {
        m_splicedWindows.remove(window.windowId);
        m_windows.insert(window.windowId, window);
    }
}

void ControlMatrixWt::setWindowInfo(const MatrixWindowInfo& window)
{
    if (window.windowType == 2) {
        setFloatingWindow(window);
        placeFloatingWindows();
        restack();
        update();
        return;
    }
    const MatrixWindowInfo* before = findWindow(window.windowId, window.windowType);
    if (before && before->division != window.division)
        m_fullIndex.remove(WindowKey(window.windowId, window.windowType));
    storeWindow(window);
    if (window.windowType == 1) {
        m_currentWindowId = window.windowId;
        m_currentWindowType = 1;
        m_currentSubWindowId = -1;
    }
    syncPanels();
    layoutPanels();
}

void ControlMatrixWt::removeWindowInfo(int windowId, int windowType)
{
    if (windowType == 2) {
        removeFloatingWindow(windowId);
    } else if (windowType == 1) {
        if (!m_splicedWindows.contains(windowId))
            return;
        const MatrixWindowInfo spliced = m_splicedWindows.take(windowId);
        const int cellW = spliced.spanCols > 0 ? spliced.w / spliced.spanCols : spliced.w;
        const int cellH = spliced.spanRows > 0 ? spliced.h / spliced.spanRows : spliced.h;
        for (const MatrixCellInfo& cell : spliced.cells) {
            MatrixWindowInfo window;
            window.windowId = cell.cellId;
            window.windowIndex = cell.cellId - 1;
            window.x = cell.column * cellW + spliced.x;
            window.y = cell.row * cellH + spliced.y;
            window.w = cellW;
            window.h = cellH;
            MatrixSubWindowInfo sub;
            sub.subWindowId = 1;
            window.subWindows.append(sub);
            m_windows.insert(window.windowId, window);
        }
    } else {
        m_windows.remove(windowId);
    }
    m_fullIndex.remove(WindowKey(windowId, windowType));
    if (m_currentWindowId == windowId && m_currentWindowType == windowType) {
        m_currentWindowId = -1;
        m_currentWindowType = 0;
        m_currentSubWindowId = -1;
    }
    syncPanels();
    layoutPanels();
}

void ControlMatrixWt::setSubWindows(int windowId, const QList<MatrixSubWindowInfo>& subWindows)
{
    MatrixWindowInfo* window = findWindow(windowId, 0);
    if (!window)
        window = findWindow(windowId, 1);
    if (!window) {
        if (FloatingWt* floating = m_floatingWts.value(windowId)) {
            MatrixWindowInfo changed = floating->windowInfo();
            changed.subWindows = subWindows;
            changed.division = subWindows.size();
            setFloatingWindow(changed);
            update();
        }
        return;
    }
    window->subWindows = subWindows;
    window->division = subWindows.size();
    // A new division ends the full display of one of the old sub-windows.
    m_fullIndex.remove(WindowKey(windowId, window->windowType));
    syncPanels();
    layoutPanels();
}

void ControlMatrixWt::clearSubWindow(int windowId, int subWindowId, int windowType)
{
    const auto clear = [subWindowId](MatrixWindowInfo& window) {
        for (MatrixSubWindowInfo& sub : window.subWindows) {
            if (subWindowId != -1 && sub.subWindowId != subWindowId)
                continue;
            sub.device = MatrixSubWindowInfo().device;
            sub.sourceState = 0;
        }
    };
    if (windowType == 2) {
        if (FloatingWt* floating = m_floatingWts.value(windowId)) {
            MatrixWindowInfo changed = floating->windowInfo();
            clear(changed);
            floating->setWindowInfo(changed);
            floating->panel()->setPicture(QImage());
        }
        return;
    }
    MatrixWindowInfo* window = findWindow(windowId, windowType);
    if (!window)
        return;
    clear(*window);
    updateWindowPanels(*window);
    for (const MatrixSubWindowInfo& sub : window->subWindows) {
        if (subWindowId != -1 && sub.subWindowId != subWindowId)
            continue;
        if (MatrixPanelWt* panel = m_panels.value(panelKey(windowId, sub.subWindowId, windowType)))
            panel->setPicture(QImage());
    }
}

void ControlMatrixWt::toggleFullSubWindow(int windowId, int subWindowId)
{
    // The window concerned is the current one when its id matches; otherwise the ordinary
    // window of that id, then the spliced one.
    int type = -1;
    if (windowId == m_currentWindowId && findWindow(windowId, m_currentWindowType))
        type = m_currentWindowType;
    else if (findWindow(windowId, 0))
        type = 0;
    else if (findWindow(windowId, 1))
        type = 1;
    if (type < 0)
        return;
    const WindowKey key(windowId, type);
    if (m_fullIndex.contains(key)) {
        m_fullIndex.remove(key);
    } else {
        int index = subWindowId - 1;
        for (const MatrixSubWindowInfo& sub : findWindow(windowId, type)->subWindows) {
            if (sub.subWindowId == subWindowId)
                index = sub.subWindowIndex;
        }
        m_fullIndex.insert(key, index);
    }
    layoutPanels();
}

int ControlMatrixWt::fullSubWindowIndex(int windowId, int windowType) const
{
    return m_fullIndex.value(WindowKey(windowId, windowType), -1);
}

void ControlMatrixWt::setBannerInfo(const MatrixBannerInfo& banner)
{
    m_banner = banner;
    m_bannerSet = banner.w != 0;
    m_bannerWt->setBanner(banner);
    placeBanner();
}

void ControlMatrixWt::createFloatingWindow()
{
    if (!m_floatingWts.isEmpty()) {
        SystemAssistant::messageAlert(tr("Only one roaming window at most"), this);
        return;
    }
    emit signalCreateFloatingWindow(FloatingGeometry::creationWindow(size(), m_rows, m_cols, nextFloatingWindowId()));
}

int ControlMatrixWt::nextFloatingWindowId() const
{
    // Above every cell's default id, so that giving a spliced window's cells back never collides.
    int id = m_rows * m_cols;
    for (auto it = m_windows.cbegin(); it != m_windows.cend(); ++it)
        id = qMax(id, it.key());
    for (auto it = m_splicedWindows.cbegin(); it != m_splicedWindows.cend(); ++it)
        id = qMax(id, it.key());
    for (auto it = m_floatingWts.cbegin(); it != m_floatingWts.cend(); ++it)
        id = qMax(id, it.key());
    return id + 1;
}

MatrixWindowInfo* ControlMatrixWt::findWindow(int windowId, int windowType)
{
    QMap<int, MatrixWindowInfo>& map = windowType == 1 ? m_splicedWindows : m_windows;
    if (windowType == 2)
        return nullptr;
    auto it = map.find(windowId);
    return it == map.end() ? nullptr : &it.value();
}

const MatrixWindowInfo* ControlMatrixWt::findWindow(int windowId, int windowType) const
{
    return const_cast<ControlMatrixWt*>(this)->findWindow(windowId, windowType);
}

bool ControlMatrixWt::windowInfo(int windowId, int windowType, MatrixWindowInfo* out) const
{
    if (windowType == 2) {
        const FloatingWt* floating = m_floatingWts.value(windowId);
        if (floating && out)
            *out = floating->windowInfo();
        return floating != nullptr;
    }
    const MatrixWindowInfo* window = findWindow(windowId, windowType);
    if (window && out)
        *out = *window;
    return window != nullptr;
}

QList<MatrixWindowInfo> ControlMatrixWt::windowInfoList() const
{
    QList<MatrixWindowInfo> list = m_windows.values();
    list += m_splicedWindows.values();
    for (const FloatingWt* floating : m_floatingWts)
        list.append(floating->windowInfo());
    return list;
}

QWidget* ControlMatrixWt::panel(const QString& key) const
{
    if (MatrixPanelWt* found = m_panels.value(key))
        return found;
    for (const FloatingWt* floating : m_floatingWts) {
        if (floating->panelKey() == key)
            return floating->panel();
    }
    return nullptr;
}

QWidget* ControlMatrixWt::bannerWidget() const
{
    return m_bannerWt;
}

FloatingWt* ControlMatrixWt::floatingWt(int windowId) const
{
    return m_floatingWts.value(windowId);
}

void ControlMatrixWt::setFloatingWindow(const MatrixWindowInfo& window)
{
    FloatingWt* floating = m_floatingWts.value(window.windowId);
    if (floating) {
        floating->setWindowInfo(window);
        return;
    }
    floating = new FloatingWt(window, this);
    connect(floating, &FloatingWt::signalFloatingWtMove, this, &ControlMatrixWt::slotFloatingWtMove);
    connect(floating, &FloatingWt::signalFloatingSelected, this, &ControlMatrixWt::slotFloatingSelected);
    connect(floating, &FloatingWt::signalVideoPanelDropEvent, this, &ControlMatrixWt::signalVideoPanelDropEvent);
    m_floatingWts.insert(window.windowId, floating);
    floating->setGeometry(CanvasGeometry::windowRect(window, size()));
    floating->show();
}

void ControlMatrixWt::removeFloatingWindow(int windowId)
{
    FloatingWt* floating = m_floatingWts.take(windowId);
    if (!floating)
        return;
    floating->hide();
    floating->deleteLater();
}

void ControlMatrixWt::syncPanels()
{
    QSet<QString> wanted;
    const auto sync = [this, &wanted](const QMap<int, MatrixWindowInfo>& windows) {
        for (const MatrixWindowInfo& window : windows) {
            const int count = qMin(window.subWindows.size(), kMaxPanelsPerWindow);
            for (int k = 0; k < count; ++k) {
                const MatrixSubWindowInfo& sub = window.subWindows.at(k);
                const QString key = panelKey(window.windowId, sub.subWindowId, window.windowType);
                wanted.insert(key);
                MatrixPanelWt*& panel = m_panels[key];
                if (!panel)
                    panel = new MatrixPanelWt(window.windowId, sub.subWindowId, window.windowType, this);
                panel->setSubWindow(sub);
            }
        }
    };
    sync(m_windows);
    sync(m_splicedWindows);
    for (auto it = m_panels.begin(); it != m_panels.end();) {
        if (wanted.contains(it.key())) {
            ++it;
            continue;
        }
        it.value()->hide();
        it.value()->deleteLater();
        it = m_panels.erase(it);
    }
}

void ControlMatrixWt::updateWindowPanels(const MatrixWindowInfo& window)
{
    for (const MatrixSubWindowInfo& sub : window.subWindows) {
        if (MatrixPanelWt* panel = m_panels.value(panelKey(window.windowId, sub.subWindowId, window.windowType)))
            panel->setSubWindow(sub);
    }
}

} // namespace kvms_matrix
