#include "LoopSettingsDlg.h"

#include "DialogStyle.h"

#include "SystemAssistant.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kMaxLoopSources = 64; // the decoder turns through at most this many
constexpr int kMaxNameLength = 32;

} // namespace

LoopSettingsDlg::LoopSettingsDlg(const MatrixLoopInfo& loop, bool editing, const QList<MatrixDeviceInfo>& available,
    const QStringList& takenNames, QWidget* parent)
    : QDialog(parent)
    , m_loop(loop)
    , m_taken(takenNames)
{
    setObjectName(QStringLiteral("loopSettingsDlg"));
    setWindowTitle(editing ? tr("Edit Loop") : tr("New Loop"));
    applyDialogStyle(this);
    m_name = new QLineEdit(loop.loopName, this);
    m_name->setMaxLength(kMaxNameLength);
    m_dwell = new QSpinBox(this);
    m_dwell->setRange(5, 3600);
    m_dwell->setSuffix(tr(" s"));
    m_dwell->setValue(loop.loopInterval >= 5 ? qMin(loop.loopInterval, 3600) : 10);
    m_available = new QListWidget(this);
    m_available->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_chosen = new QListWidget(this);
    m_chosen->setObjectName(QStringLiteral("loopChosenList"));
    m_chosen->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_chosen->setDragDropMode(QAbstractItemView::InternalMove);
    m_chosen->setDefaultDropAction(Qt::MoveAction);
    m_add = new QPushButton(tr("Add >"), this);
    m_remove = new QPushButton(tr("< Remove"), this);
    m_save = new QPushButton(tr("Save"), this);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    m_save->setDefault(true);

    for (const MatrixDeviceInfo& source : available) {
        auto* item = new QListWidgetItem(source.deviceName, m_available);
        item->setToolTip(source.deviceId);
        item->setData(Qt::UserRole, m_sources.size());
        m_sources.append(source);
    }
    // An edited loop's sources in their order; ids no longer in the catalogue keep their id.
    for (const MatrixDeviceInfo& source : loop.devices) {
        MatrixDeviceInfo known = source;
        for (const MatrixDeviceInfo& a : available)
            if (a.deviceId == source.deviceId && (a.channel == source.channel || source.channel == 0))
                known = a;
        if (known.deviceName.isEmpty())
            known.deviceName = known.deviceId;
        addChosen(known);
    }

    auto* form = new QFormLayout;
    form->addRow(tr("Name"), m_name);
    form->addRow(tr("Dwell time"), m_dwell);
    auto* lists = new QGridLayout;
    lists->addWidget(new QLabel(tr("Sources"), this), 0, 0);
    lists->addWidget(new QLabel(tr("Shown in turn (drag to order)"), this), 0, 2);
    lists->addWidget(m_available, 1, 0);
    auto* middle = new QVBoxLayout;
    middle->addStretch(1);
    middle->addWidget(m_add);
    middle->addWidget(m_remove);
    middle->addStretch(1);
    lists->addLayout(middle, 1, 1);
    lists->addWidget(m_chosen, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_save);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(lists, 1);
    layout->addLayout(buttons);
    resize(620, 420);

    connect(m_add, &QPushButton::clicked, this, [this] {
        for (QListWidgetItem* item : m_available->selectedItems())
            addChosen(m_sources.value(item->data(Qt::UserRole).toInt()));
    });
    connect(m_available, &QListWidget::itemDoubleClicked, this,
        [this](QListWidgetItem* item) { addChosen(m_sources.value(item->data(Qt::UserRole).toInt())); });
    connect(m_remove, &QPushButton::clicked, this, [this] { qDeleteAll(m_chosen->selectedItems()); });
    connect(m_save, &QPushButton::clicked, this, &LoopSettingsDlg::accept);
    connect(cancel, &QPushButton::clicked, this, &LoopSettingsDlg::reject);
}

void LoopSettingsDlg::addChosen(const MatrixDeviceInfo& source)
{
    if (m_chosen->count() >= kMaxLoopSources) {
        SystemAssistant::messageAlert(tr("A loop shows at most %1 sources.").arg(kMaxLoopSources), this);
        return;
    }
    auto* item = new QListWidgetItem(source.deviceName, m_chosen);
    item->setToolTip(source.deviceId);
    item->setData(Qt::UserRole, m_sources.size());
    m_sources.append(source);
}

MatrixLoopInfo LoopSettingsDlg::loop() const
{
    MatrixLoopInfo out = m_loop;
    out.loopName = m_name->text().trimmed();
    out.loopInterval = m_dwell->value();
    out.devices.clear();
    for (int i = 0; i < m_chosen->count(); ++i)
        out.devices.append(m_sources.value(m_chosen->item(i)->data(Qt::UserRole).toInt()));
    return out;
}

void LoopSettingsDlg::accept()
{
    const QString name = m_name->text().trimmed();
    if (name.isEmpty()) {
        SystemAssistant::messageAlert(tr("The loop name cannot be empty or all spaces."), this);
        return;
    }
    if (m_taken.contains(name)) {
        SystemAssistant::messageAlert(tr("Loop name is repeat,please input again."), this);
        return;
    }
    if (m_chosen->count() == 0) {
        SystemAssistant::messageAlert(tr("Choose at least one source to show in turn."), this);
        return;
    }
    QDialog::accept();
}

} // namespace kvms_matrix
