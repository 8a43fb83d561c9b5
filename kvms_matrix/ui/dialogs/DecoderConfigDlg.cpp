// DecoderConfigDlg: its layout, the search, activation and network settings.
#include "DecoderConfigDlg.h"

#include "DialogStyle.h"

#include "LoginDlg.h"
#include "MatrixSdkWorker.h"
#include "NetworkSettingsDlg.h"
#include "WallConfigStore.h"

#include "KSingleton.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kMaxFound = 256;

QPushButton* button(const QString& icon, const QString& text, QWidget* parent)
{
    return new QPushButton(QIcon(QStringLiteral(":/page_icons/%1.png").arg(icon)), text, parent);
}

} // namespace

DecoderConfigDlg::DecoderConfigDlg(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("matrixDecoderConfigDlg"));
    applyDialogStyle(this);
    setWindowTitle(tr("Decoder configuration"));
    setWindowIcon(QIcon(QStringLiteral(":/page_icons/configure.png")));
    resize(760, 560);
    buildLayout();
    loadSaved();

    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    const auto queued = Qt::QueuedConnection;
    connect(
        worker, &MatrixSdkWorker::signalSearchMatrixResult, this, &DecoderConfigDlg::slotSearchMatrixResult, queued);
    connect(worker, &MatrixSdkWorker::signalActiveDecoderFinished, this, &DecoderConfigDlg::slotActiveDecoderFinished,
        queued);
    connect(
        worker, &MatrixSdkWorker::signalConnectMatrixResult, this, &DecoderConfigDlg::slotConnectMatrixResult, queued);
    connect(worker, &MatrixSdkWorker::signalConnectErrorMsg, this, &DecoderConfigDlg::slotConnectErrorMsg, queued);
    connect(worker, &MatrixSdkWorker::signalSetLayoutResult, this, &DecoderConfigDlg::slotSetLayoutResult, queued);
}

void DecoderConfigDlg::buildLayout()
{
    m_found = new QTableWidget(0, 5, this);
    m_found->setObjectName(QStringLiteral("foundDecoders"));
    m_found->setHorizontalHeaderLabels({ tr("Address"), tr("Port"), tr("Device id"), tr("Version"), tr("State") });
    m_found->horizontalHeader()->setStretchLastSection(true);
    m_found->verticalHeader()->hide();
    m_found->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_found->setSelectionMode(QAbstractItemView::SingleSelection);
    m_found->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_searchBtn = button(QStringLiteral("search"), tr("Search"), this);
    m_addFoundBtn = button(QStringLiteral("add"), tr("Add to wall"), this);
    m_addAddressBtn = button(QStringLiteral("add"), tr("Add by address..."), this);
    m_activateBtn = button(QStringLiteral("activate"), tr("Activate..."), this);
    m_networkBtn = button(QStringLiteral("network"), tr("Network settings..."), this);
    auto* foundButtons = new QHBoxLayout;
    for (QPushButton* b : { m_searchBtn, m_addFoundBtn, m_addAddressBtn, m_activateBtn, m_networkBtn })
        foundButtons->addWidget(b);
    foundButtons->addStretch(1);
    auto* foundBox = new QGroupBox(tr("Decoders found"), this);
    auto* foundLayout = new QVBoxLayout(foundBox);
    foundLayout->addWidget(m_found);
    foundLayout->addLayout(foundButtons);

    m_name = new QLineEdit(this);
    m_name->setMaxLength(31);
    m_rows = new QSpinBox(this);
    m_cols = new QSpinBox(this);
    for (QSpinBox* box : { m_rows, m_cols }) {
        box->setRange(1, WallConfigStore::kMaxGrid);
        box->setValue(2);
    }
    m_relayout = new QCheckBox(tr("Lay the grid out anew (clears the wall's windows, scenes and loops)"), this);
    m_relayout->setChecked(true);
    m_wallDecoders = new QListWidget(this);
    m_wallDecoders->setObjectName(QStringLiteral("wallDecoders"));
    m_removeBtn = button(QStringLiteral("remove"), tr("Remove"), this);
    auto* wallForm = new QFormLayout;
    wallForm->addRow(tr("Name"), m_name);
    auto* grid = new QHBoxLayout;
    grid->addWidget(m_rows);
    grid->addWidget(new QLabel(tr("rows by"), this));
    grid->addWidget(m_cols);
    grid->addWidget(new QLabel(tr("columns"), this));
    grid->addStretch(1);
    wallForm->addRow(tr("Screens"), grid);
    wallForm->addRow(tr("Decoders (the first is the main one)"), m_wallDecoders);
    wallForm->addRow(QString(), m_removeBtn);
    wallForm->addRow(QString(), m_relayout);
    auto* wallBox = new QGroupBox(tr("TV wall"), this);
    wallBox->setLayout(wallForm);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("configStatus"));
    m_status->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_saveBtn = button(QStringLiteral("wall"), tr("Save and connect"), this);
    buttons->addButton(m_saveBtn, QDialogButtonBox::AcceptRole);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(foundBox, 1);
    layout->addWidget(wallBox, 1);
    layout->addWidget(m_status);
    layout->addWidget(buttons);

    connect(m_searchBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotSearchBtnClicked);
    connect(m_addFoundBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotAddFoundClicked);
    connect(m_found, &QTableWidget::cellDoubleClicked, this, &DecoderConfigDlg::slotAddFoundClicked);
    connect(m_addAddressBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotAddByAddressClicked);
    connect(m_activateBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotActivateClicked);
    connect(m_networkBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotNetworkClicked);
    connect(m_removeBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotRemoveClicked);
    connect(m_saveBtn, &QPushButton::clicked, this, &DecoderConfigDlg::slotSaveClicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &DecoderConfigDlg::reject);
}

void DecoderConfigDlg::loadSaved()
{
    const TvWallManagement wall = WallConfigStore::wall();
    const QList<MatrixInfo> decoders = WallConfigStore::decoders();
    if (!wall.name.isEmpty())
        m_name->setText(wall.name);
    else
        m_name->setText(tr("TV wall"));
    if (wall.row > 0)
        m_rows->setValue(wall.row);
    if (wall.column > 0)
        m_cols->setValue(wall.column);
    // An existing wall keeps its windows unless the operator asks otherwise.
    m_relayout->setChecked(decoders.isEmpty());
    const QString mainIp = WallConfigStore::mainDecoderIp(decoders);
    for (const MatrixInfo& d : decoders)
        if (d.ip == mainIp)
            addWallDecoder(d);
    for (const MatrixInfo& d : decoders)
        if (d.ip != mainIp)
            addWallDecoder(d);
}

QString DecoderConfigDlg::statusText() const
{
    return m_status->text();
}

void DecoderConfigDlg::setBusy(bool busy, const QString& status)
{
    for (QPushButton* b : { m_searchBtn, m_saveBtn, m_activateBtn, m_networkBtn })
        b->setEnabled(!busy);
    m_status->setText(status);
}

void DecoderConfigDlg::slotSearchBtnClicked()
{
    m_searching = true;
    setBusy(true, tr("Searching for decoders..."));
    KCOMMON::KSingleton<MatrixSdkWorker>::instance()->searchMatrix();
}

void DecoderConfigDlg::slotSearchMatrixResult(const QMap<QString, MatrixInfo>& matrices)
{
    if (!m_searching)
        return;
    m_searching = false;
    m_foundMap.clear();
    m_found->setRowCount(0);
    // Entries under "VM~" and "3~" are the worker's bookkeeping of changed addresses.
    for (const MatrixInfo& d : matrices) {
        if (d.ip.contains(QLatin1Char('~')) || m_foundMap.size() >= kMaxFound)
            continue;
        m_foundMap.insert(d.ip, d);
        const int row = m_found->rowCount();
        m_found->insertRow(row);
        const QStringList cells { d.ip, QString::number(d.port), d.id, d.version,
            d.status == 1 ? tr("Active") : tr("Not active") };
        for (int c = 0; c < cells.size(); ++c)
            m_found->setItem(row, c, new QTableWidgetItem(cells.at(c)));
    }
    if (m_found->rowCount() > 0)
        m_found->selectRow(0);
    setBusy(false, tr("%n decoder(s) found.", nullptr, m_found->rowCount()));
}

bool DecoderConfigDlg::selectedFound(MatrixInfo* decoder) const
{
    const int row = m_found->currentRow();
    if (row < 0 || !m_found->item(row, 0))
        return false;
    *decoder = m_foundMap.value(m_found->item(row, 0)->text());
    return !decoder->ip.isEmpty();
}

void DecoderConfigDlg::slotAddFoundClicked()
{
    MatrixInfo found;
    if (!selectedFound(&found)) {
        m_status->setText(tr("Please select a decoder."));
        return;
    }
    // The unit reports the port it is managed on; the login uses it.
    if (found.port > 0)
        found.manager_port = found.port;
    found.type = found.type < 0 ? 0 : found.type;
    auto* dialog = new LoginDlg(found, LoginDlg::Mode::Login, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &LoginDlg::accepted, this, [this, dialog] { addWallDecoder(dialog->decoder()); });
    dialog->open();
}

void DecoderConfigDlg::slotAddByAddressClicked()
{
    MatrixInfo blank;
    blank.type = 0;
    auto* dialog = new LoginDlg(blank, LoginDlg::Mode::Add, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &LoginDlg::accepted, this, [this, dialog] { addWallDecoder(dialog->decoder()); });
    dialog->open();
}

void DecoderConfigDlg::slotActivateClicked()
{
    MatrixInfo found;
    if (!selectedFound(&found)) {
        m_status->setText(tr("Please select a decoder."));
        return;
    }
    auto* dialog = new LoginDlg(found, LoginDlg::Mode::Activate, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &LoginDlg::accepted, this, [this, dialog] {
        m_activating = true;
        setBusy(true, tr("Activating %1...").arg(dialog->decoder().ip));
        KCOMMON::KSingleton<MatrixSdkWorker>::instance()->activeDecoder(
            dialog->decoder().ip, dialog->decoder().password);
    });
    dialog->open();
}

void DecoderConfigDlg::slotActiveDecoderFinished(int result, QString text)
{
    if (!m_activating)
        return;
    m_activating = false;
    setBusy(
        false, result == 0 ? tr("The decoder is activated.") : tr("Activation failed(%1, %2).").arg(result).arg(text));
    if (result == 0)
        slotSearchBtnClicked();
}

void DecoderConfigDlg::slotNetworkClicked()
{
    MatrixInfo found;
    if (!selectedFound(&found)) {
        m_status->setText(tr("Please select a decoder."));
        return;
    }
    auto* dialog = new NetworkSettingsDlg(found, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &NetworkSettingsDlg::signalAddressChanged, this, [this](const QString&, const QString& newIp) {
        m_status->setText(tr("The decoder now answers at %1.").arg(newIp));
        slotSearchBtnClicked();
    });
    dialog->open();
}

} // namespace kvms_matrix
