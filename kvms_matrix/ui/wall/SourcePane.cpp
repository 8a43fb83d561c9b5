#include "SourcePane.h"

#include "DevsMgrData.h"
#include "KSingleton.h"
#include "MatrixData.h"

#include <QIcon>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kMaxItems = 5000; // the host's lists are shown, not trusted to be small

enum Role { SourceIdRole = Qt::UserRole, UrlRole, ChannelRole };

QTreeWidget* makeTree(QWidget* parent)
{
    auto* tree = new QTreeWidget(parent);
    tree->setHeaderHidden(true);
    tree->setDragEnabled(true);
    tree->setDragDropMode(QAbstractItemView::DragOnly);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    return tree;
}

// Shows the items whose name holds the text, and the parents of those.
bool filterItem(QTreeWidgetItem* item, const QString& text)
{
    bool any = false;
    for (int i = 0; i < item->childCount(); ++i)
        any = filterItem(item->child(i), text) || any;
    const bool own = text.isEmpty() || item->text(0).contains(text, Qt::CaseInsensitive);
    item->setHidden(!(own || any));
    if (any && !text.isEmpty())
        item->setExpanded(true);
    return own || any;
}

} // namespace

SourcePane::SourcePane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("matrixSourcePane"));
    m_filter = new QLineEdit(this);
    m_filter->setPlaceholderText(tr("Filter by name"));
    m_filter->setClearButtonEnabled(true);
    m_filter->addAction(QIcon(QStringLiteral(":/page_icons/filter.png")), QLineEdit::LeadingPosition);
    m_devices = makeTree(this);
    m_streams = makeTree(this);
    m_tabs = new QTabWidget(this);
    m_tabs->addTab(m_devices, QIcon(QStringLiteral(":/page_icons/camera.png")), tr("Devices"));
    m_tabs->addTab(m_streams, QIcon(QStringLiteral(":/page_icons/stream.png")), tr("Streams"));
    setStyleSheet(QStringLiteral(
        "QLineEdit{background:#1e293d;color:#d8dee9;border:1px solid #2e3b55;border-radius:3px;padding:3px;}"
        "QTabBar::tab{background:#1e293d;color:#d8dee9;border:1px solid #2e3b55;padding:4px 12px;}"
        "QTabBar::tab:selected{background:#2e3b55;}"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_tabs, 1);
    connect(m_filter, &QLineEdit::textChanged, this, &SourcePane::applyFilter);
    connect(
        KCOMMON::KSingleton<DevsMgrData>::instance(), &DevsMgrData::signalCatalogueChanged, this, &SourcePane::reload);
    connect(KCOMMON::KSingleton<MatrixData>::instance(), &MatrixData::signalStreamsChanged, this, &SourcePane::reload);
    reload();
}

void SourcePane::reload()
{
    m_devices->clear();
    m_streams->clear();
    int count = 0;
    const QIcon cameraIcon(QStringLiteral(":/page_icons/camera.png"));
    for (const DevRecord& device : KCOMMON::KSingleton<DevsMgrData>::instance()->devices()) {
        if (++count > kMaxItems)
            break;
        auto* deviceItem = new QTreeWidgetItem(m_devices, QStringList(device.name), kDeviceItem);
        deviceItem->setFlags(deviceItem->flags() & ~Qt::ItemIsDragEnabled);
        deviceItem->setData(0, SourceIdRole, device.id);
        for (const ChannelRecord& channel : device.channels) {
            if (++count > kMaxItems)
                break;
            auto* item = new QTreeWidgetItem(deviceItem, QStringList(channel.name), kChannelItem);
            item->setIcon(0, cameraIcon);
            item->setData(0, SourceIdRole, channel.id);
            item->setData(0, ChannelRole, channel.channel);
        }
    }
    m_devices->expandAll();
    count = 0;
    const QIcon streamIcon(QStringLiteral(":/page_icons/stream.png"));
    for (const MatrixStream& stream : KCOMMON::KSingleton<MatrixData>::instance()->streams()) {
        if (++count > kMaxItems)
            break;
        auto* item = new QTreeWidgetItem(m_streams, QStringList(stream.name), kChannelItem);
        item->setIcon(0, streamIcon);
        item->setToolTip(0, stream.url);
        item->setData(0, SourceIdRole, QStringLiteral("stream%1").arg(count));
        item->setData(0, UrlRole, stream.url);
    }
    applyFilter(m_filter->text());
}

void SourcePane::applyFilter(const QString& text)
{
    const QString needle = text.trimmed();
    for (QTreeWidget* tree : { m_devices, m_streams })
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            filterItem(tree->topLevelItem(i), needle);
}

bool SourcePane::currentSource(MatrixDeviceInfo* source) const
{
    *source = MatrixDeviceInfo();
    source->deviceType = 0;
    const bool devicesTab = m_tabs->currentIndex() == 0;
    return sourceOfItem((devicesTab ? m_devices : m_streams)->currentItem(), source);
}

bool SourcePane::sourceOfItem(const QTreeWidgetItem* item, MatrixDeviceInfo* source) const
{
    *source = MatrixDeviceInfo();
    source->deviceType = 0;
    if (!item || item->type() != kChannelItem)
        return false;
    const bool devicesTab = item->treeWidget() == m_devices;
    source->deviceId = item->data(0, SourceIdRole).toString();
    source->deviceName = item->text(0);
    source->displayName = item->text(0);
    if (!devicesTab) {
        source->deviceType = 9;
        source->mainUrl = item->data(0, UrlRole).toString();
        source->subUrl = source->mainUrl;
        source->streamIndex = 0;
        return true;
    }
    source->deviceType = 1;
    source->channel = item->data(0, ChannelRole).toInt();
    DevRecord device;
    if (KCOMMON::KSingleton<DevsMgrData>::instance()->deviceById(
            item->parent()->data(0, SourceIdRole).toString(), &device)) {
        source->ip = device.ip;
        source->port = device.port;
        source->userName = device.user;
        source->password = device.password;
    }
    return true;
}

} // namespace kvms_matrix
