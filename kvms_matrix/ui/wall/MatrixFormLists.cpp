// MatrixForm: the scene and loop lists beside the wall, and the loop settings dialog.
#include "MatrixForm.h"

#include "ControlMatrixWt.h"
#include "LoopSettingsDlg.h"
#include "MatrixListItem.h"
#include "MatrixSdkWorker.h"
#include "SourcePane.h"

#include "SystemAssistant.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kMaxScenes = 6;
constexpr int kMaxListed = 1024; // a decoder may answer with anything

// A small flat button showing a page icon (a resource path) or a glyph.
QPushButton* sideButton(const QString& objectName, const QString& look, const QString& tip, QWidget* parent)
{
    auto* button = look.startsWith(QLatin1Char(':')) ? new QPushButton(QIcon(look), QString(), parent)
                                                     : new QPushButton(look, parent);
    button->setObjectName(objectName);
    button->setToolTip(tip);
    button->setFlat(true);
    button->setFixedSize(24, 24);
    return button;
}

MatrixListItem* itemWidget(QWidget* item)
{
    return qobject_cast<MatrixListItem*>(item);
}

// The row of a list whose widget is `item`, or -1.
int rowOf(const QListWidget* list, const QWidget* item)
{
    for (int i = 0; i < list->count(); ++i)
        if (list->itemWidget(list->item(i)) == item)
            return i;
    return -1;
}

QList<MatrixListItem*> itemsOf(const QListWidget* list)
{
    QList<MatrixListItem*> items;
    for (int i = 0; i < list->count(); ++i)
        if (auto* w = itemWidget(list->itemWidget(list->item(i))))
            items.append(w);
    return items;
}

} // namespace

void MatrixForm::buildLists(QWidget* side)
{
    m_sceneList = new QListWidget(side);
    m_sceneList->setObjectName(QStringLiteral("matrixSceneList"));
    m_loopList = new QListWidget(side);
    m_loopList->setObjectName(QStringLiteral("matrixLoopList"));
    for (QListWidget* list : { m_sceneList, m_loopList }) {
        list->setStyleSheet(QStringLiteral("QListWidget{border:0px;} QListWidget::item{min-height:26px;}"));
        list->setSelectionMode(QAbstractItemView::NoSelection);
        list->setFocusPolicy(Qt::NoFocus);
    }
    m_side = new QWidget(side);
    auto* content = new QVBoxLayout(m_side);
    content->setContentsMargins(0, 0, 0, 0);
    const auto header = [this](const QString& title, QListWidget* list, const QString& addTip) {
        auto* arrow
            = sideButton(QStringLiteral("matrix_arrow_bt"), QStringLiteral("\u25BE"), tr("Fold the list"), m_side);
        arrow->setCheckable(true);
        auto* add = sideButton(QStringLiteral("matrix_add_bt"), QStringLiteral(":/page_icons/add.png"), addTip, m_side);
        auto* row = new QHBoxLayout;
        row->addWidget(arrow);
        row->addWidget(new QLabel(title, m_side), 1);
        row->addWidget(add);
        auto* layout = static_cast<QVBoxLayout*>(m_side->layout());
        layout->addLayout(row);
        layout->addWidget(list, 1);
        return qMakePair(arrow, add);
    };
    const auto scene = header(tr("Scenes"), m_sceneList, tr("Save the wall as a new scene"));
    const auto loop = header(tr("Loops"), m_loopList, tr("New loop"));
    m_sceneAddBtn = scene.second;
    m_loopAddBtn = loop.second;
    m_hideSideBtn = sideButton(
        QStringLiteral("matrix_hide_wt_bt"), QStringLiteral("\u00BB"), tr("Hide the scene and loop lists"), side);
    m_hideSideBtn->setCheckable(true);
    auto* outer = new QVBoxLayout(side);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_hideSideBtn, 0, Qt::AlignRight);
    outer->addWidget(m_side, 1);

    connect(scene.first, &QPushButton::toggled, this, &MatrixForm::slotSceneArrowBtnClicked);
    connect(loop.first, &QPushButton::toggled, this, &MatrixForm::slotLoopArrowBtnClicked);
    connect(m_sceneAddBtn, &QPushButton::clicked, this, &MatrixForm::slotSceneAddBtnClicked);
    connect(m_loopAddBtn, &QPushButton::clicked, this, &MatrixForm::slotLoopAddBtnClicked);
    connect(m_hideSideBtn, &QPushButton::toggled, this, &MatrixForm::slotHideWtBtClicked);
    auto* rename = new QShortcut(QKeySequence(Qt::Key_F2), this);
    rename->setContext(Qt::WidgetWithChildrenShortcut);
    connect(rename, &QShortcut::activated, this, &MatrixForm::renameSelectedScene);
}

void MatrixForm::slotSceneArrowBtnClicked(bool checked)
{
    m_sceneList->setVisible(!checked);
    if (auto* arrow = qobject_cast<QPushButton*>(sender()))
        arrow->setText(checked ? QStringLiteral("\u25B8") : QStringLiteral("\u25BE"));
}

void MatrixForm::slotLoopArrowBtnClicked(bool checked)
{
    m_loopList->setVisible(!checked);
    if (auto* arrow = qobject_cast<QPushButton*>(sender()))
        arrow->setText(checked ? QStringLiteral("\u25B8") : QStringLiteral("\u25BE"));
}

void MatrixForm::slotHideWtBtClicked(bool checked)
{
    m_side->setVisible(!checked);
    m_hideSideBtn->setText(checked ? QStringLiteral("\u00AB") : QStringLiteral("\u00BB"));
    m_hideSideBtn->setToolTip(checked ? tr("Show the scene and loop lists") : tr("Hide the scene and loop lists"));
}

// ---- scenes ------------------------------------------------------------------------------

void MatrixForm::addSceneItem(int sceneId, const QString& name, bool renameNow)
{
    auto* row = new QListWidgetItem(m_sceneList);
    auto* item = new MatrixListItem(sceneId, name, QStringLiteral(":/matrix_images/images/scene_n.png"), true);
    row->setSizeHint(QSize(0, 28));
    m_sceneList->setItemWidget(row, item);
    connect(item, &MatrixListItem::signalItemClicked, this, &MatrixForm::slotSceneItemClicked);
    connect(item, &MatrixListItem::signalItemDoubleClicked, this, &MatrixForm::slotSceneItemDoubleClicked);
    connect(item, &MatrixListItem::signalEditItemName, this, &MatrixForm::slotSceneEditItemName);
    connect(item, &MatrixListItem::signalDeleteItem, this, &MatrixForm::slotSceneDeleteItem);
    connect(item, &MatrixListItem::signalNameEmpty, this, &MatrixForm::slotSceneNameEmpty);
    if (renameNow)
        item->beginRename();
}

void MatrixForm::slotGetSceneInfoResult(QList<MatrixSceneInfo> sceneInfoList)
{
    m_sceneList->clear();
    for (const MatrixSceneInfo& scene : sceneInfoList.mid(0, kMaxListed))
        addSceneItem(scene.sceneId, scene.sceneName, false);
}

bool MatrixForm::sceneNameTaken(const QString& name, QWidget* except) const
{
    for (MatrixListItem* item : itemsOf(m_sceneList))
        if (item != except && item->name() == name)
            return true;
    return false;
}

void MatrixForm::slotSceneAddBtnClicked()
{
    if (m_sceneList->count() >= kMaxScenes) {
        SystemAssistant::messageAlert(tr("The upper limit of the scene has been reached."), this);
        return;
    }
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle)
        return;
    QString name;
    for (int n = 1; name.isEmpty() || sceneNameTaken(name, nullptr); ++n)
        name = tr("Scene %1").arg(n);
    addSceneItem(-1, name, false);
    QWidget* item = m_sceneList->itemWidget(m_sceneList->item(m_sceneList->count() - 1));
    m_worker->saveScene(handle, -1, name, item);
}

void MatrixForm::slotSaveSceneResult(int result, int sceneId, QString sceneName, void* item)
{
    if (result != 0)
        SystemAssistant::messageAlert(tr("Save scene failed(%1).").arg(result), this);
    // The pointer is only compared with the rows still listed, never followed blindly.
    const int row = rowOf(m_sceneList, static_cast<QWidget*>(item));
    if (row < 0) {
        // The list was read again meanwhile; read it once more to show what the decoder has.
        if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
            m_worker->getScene(handle);
        return;
    }
    if (result != 0) {
        delete m_sceneList->takeItem(row);
        return;
    }
    auto* widget = itemWidget(m_sceneList->itemWidget(m_sceneList->item(row)));
    widget->setId(sceneId);
    widget->setName(sceneName);
}

void MatrixForm::slotSceneItemClicked(QWidget* item)
{
    for (MatrixListItem* each : itemsOf(m_sceneList))
        each->setSelected(each == item);
}

void MatrixForm::slotSceneItemDoubleClicked(QWidget* item)
{
    auto* scene = itemWidget(item);
    if (!scene || scene->id() < 1)
        return;
    slotSceneItemClicked(item);
    if (const QSharedPointer<CSharedHandle> handle = requireHandle())
        m_worker->restoreScene(handle, scene->id());
}

void MatrixForm::slotRestoreSceneResult(int result)
{
    if (result != 0) {
        setTip(tr("Restore scene failed(%1).").arg(result));
        return;
    }
    // The decoder rebuilt the wall: read it back.
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getWindowInfo(handle);
}

void MatrixForm::slotSceneEditItemName(QWidget* item, QString oldName, QString newName)
{
    auto* scene = itemWidget(item);
    if (!scene)
        return;
    const QString name = newName.trimmed();
    if (name == oldName)
        return;
    if (name.isEmpty()) {
        SystemAssistant::messageAlert(tr("The scene name cannot be empty or all spaces."), this);
        scene->setName(oldName);
        return;
    }
    if (sceneNameTaken(name, item)) {
        SystemAssistant::messageAlert(tr("Scene name is repeat,please input again."), this);
        scene->setName(oldName);
        return;
    }
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle || scene->id() < 1) {
        scene->setName(oldName);
        return;
    }
    scene->setName(name);
    m_worker->modifyScene(handle, scene->id(), name);
}

void MatrixForm::slotModifySceneResult(int result, int)
{
    if (result == 0)
        return;
    setTip(tr("Rename scene failed(%1).").arg(result));
    // The list shows what the decoder kept.
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getScene(handle);
}

void MatrixForm::slotSceneNameEmpty(QWidget*)
{
    SystemAssistant::messageAlert(tr("The scene name cannot be empty or all spaces."), this);
}

void MatrixForm::slotSceneDeleteItem(QWidget* item)
{
    auto* scene = itemWidget(item);
    if (!scene)
        return;
    auto* box = new QMessageBox(QMessageBox::Question, tr("Delete scene"),
        tr("Are you sure you want to delete scene:%1?").arg(scene->name()), QMessageBox::Yes | QMessageBox::No, this);
    box->setObjectName(QStringLiteral("matrixDeleteSceneBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    const int sceneId = scene->id();
    connect(box, &QMessageBox::finished, this, [this, sceneId](int answer) {
        if (answer != QMessageBox::Yes)
            return;
        if (const QSharedPointer<CSharedHandle> handle = requireHandle())
            m_worker->removeScene(handle, sceneId);
    });
    box->open();
}

void MatrixForm::slotRemoveSceneResult(int result)
{
    if (result != 0)
        setTip(tr("Delete scene failed(%1).").arg(result));
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getScene(handle);
}

void MatrixForm::renameSelectedScene()
{
    for (MatrixListItem* item : itemsOf(m_sceneList)) {
        if (item->isSelected()) {
            item->beginRename();
            return;
        }
    }
}

// ---- loops -------------------------------------------------------------------------------

void MatrixForm::addLoopItem(const MatrixLoopInfo& loop)
{
    auto* row = new QListWidgetItem(m_loopList);
    auto* item = new MatrixListItem(
        loop.loopId, loop.loopName, QStringLiteral(":/matrix_images/images/matrix_tuining.png"), false);
    QStringList ids;
    for (const MatrixDeviceInfo& device : loop.devices)
        ids.append(device.deviceId);
    item->setIdList(ids);
    row->setSizeHint(QSize(0, 28));
    m_loopList->setItemWidget(row, item);
    connect(item, &MatrixListItem::signalItemClicked, this, &MatrixForm::slotLoopItemClicked);
    connect(item, &MatrixListItem::signalItemDoubleClicked, this, &MatrixForm::slotLoopItemDoubleClicked);
    connect(item, &MatrixListItem::signalEditItemClicked, this, &MatrixForm::slotLoopEditItemClicked);
    connect(item, &MatrixListItem::signalDeleteItem, this, &MatrixForm::slotLoopDeleteItem);
    connect(item, &MatrixListItem::signalNameEmpty, this, &MatrixForm::slotLoopNameEmpty);
}

void MatrixForm::slotGetLoopInfoResult(QList<MatrixLoopInfo> loopInfoList)
{
    m_loopList->clear();
    m_loops = loopInfoList.mid(0, kMaxListed);
    for (const MatrixLoopInfo& loop : qAsConst(m_loops))
        addLoopItem(loop);
}

void MatrixForm::slotLoopItemClicked(QWidget* item)
{
    for (MatrixListItem* each : itemsOf(m_loopList))
        each->setSelected(each == item);
}

void MatrixForm::slotLoopItemDoubleClicked(QWidget* item)
{
    auto* loopItem = itemWidget(item);
    if (!loopItem)
        return;
    slotLoopItemClicked(item);
    const int windowId = m_canvas->currentWindowId();
    const int windowType = m_canvas->currentWindowType();
    MatrixWindowInfo window;
    if (windowId < 0 || !m_canvas->windowInfo(windowId, windowType, &window)) {
        SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    slotLoopListDropEvent(windowId, m_canvas->currentSubWindowId(), windowType, loopItem->id());
}

void MatrixForm::slotLoopEditItemClicked(QWidget* item, QStringList)
{
    auto* loopItem = itemWidget(item);
    if (!loopItem)
        return;
    for (const MatrixLoopInfo& loop : qAsConst(m_loops))
        if (loop.loopId == loopItem->id())
            openLoopDialog(loop, true);
}

void MatrixForm::slotLoopAddBtnClicked()
{
    if (requireHandle())
        openLoopDialog(MatrixLoopInfo(), false);
}

void MatrixForm::openLoopDialog(const MatrixLoopInfo& loop, bool editing)
{
    QList<MatrixDeviceInfo> available;
    for (QTreeWidget* tree : { m_sources->deviceTree(), m_sources->streamTree() }) {
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            MatrixDeviceInfo source;
            if (m_sources->sourceOfItem(*it, &source))
                available.append(source);
        }
    }
    QStringList taken;
    for (const MatrixLoopInfo& other : qAsConst(m_loops))
        if (other.loopId != loop.loopId)
            taken.append(other.loopName);
    auto* dialog = new LoopSettingsDlg(loop, editing, available, taken, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &LoopSettingsDlg::accepted, this, [this, dialog] {
        if (const QSharedPointer<CSharedHandle> handle = requireHandle())
            m_worker->setLoopInfo(handle, dialog->loop());
    });
    dialog->open();
}

void MatrixForm::slotSetLoopInfoResult(int result, MatrixLoopInfo loop)
{
    if (result != 0)
        SystemAssistant::messageAlert(tr("Save loop %1 failed(%2).").arg(loop.loopName).arg(result), this);
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getLoopInfo(handle);
}

void MatrixForm::slotLoopDeleteItem(QWidget* item)
{
    auto* loopItem = itemWidget(item);
    if (!loopItem)
        return;
    auto* box = new QMessageBox(QMessageBox::Question, tr("Delete loop"),
        tr("Are you sure you want to delete loop:%1?").arg(loopItem->name()), QMessageBox::Yes | QMessageBox::No, this);
    box->setObjectName(QStringLiteral("matrixDeleteLoopBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    const int loopId = loopItem->id();
    connect(box, &QMessageBox::finished, this, [this, loopId](int answer) {
        if (answer != QMessageBox::Yes)
            return;
        if (const QSharedPointer<CSharedHandle> handle = requireHandle())
            m_worker->removeLoopInfo(handle, loopId);
    });
    box->open();
}

void MatrixForm::slotRemoveLoopInfoResult(int result, int)
{
    if (result != 0)
        setTip(tr("Delete loop failed(%1).").arg(result));
    if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getLoopInfo(handle);
}

void MatrixForm::slotLoopNameEmpty(QWidget*)
{
    SystemAssistant::messageAlert(tr("The loop name cannot be empty or all spaces."), this);
}

} // namespace kvms_matrix
