#include "DevFileDlg.h"

#include "DialogStyle.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kMaxFiles = 1000; // a decoder may answer with anything

// Text of a fixed-size field that may lack its terminating zero.
QString fieldText(const char* field, size_t size)
{
    return QString::fromUtf8(field, int(qstrnlen(field, uint(size))));
}

} // namespace

DevFileDlg::DevFileDlg(const QList<DevPlayFile_t>& files, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("devFileDlg"));
    setWindowTitle(tr("USB video files"));
    applyDialogStyle(this);
    m_table = new QTableWidget(0, 4, this);
    m_table->setHorizontalHeaderLabels({ tr("File"), tr("Size"), tr("Duration"), tr("Modified") });
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const DevPlayFile_t& file : files.mid(0, kMaxFiles)) {
        if (file.isDirectory)
            continue;
        const int row = m_table->rowCount();
        m_table->insertRow(row);
        m_table->setItem(row, 0, new QTableWidgetItem(fieldText(file.fileName, sizeof file.fileName)));
        m_table->setItem(row, 1, new QTableWidgetItem(tr("%1 KiB").arg(qMax(0, file.sizeKiB))));
        const int secs = qMax(0, file.durationSec);
        m_table->setItem(row, 2,
            new QTableWidgetItem(QStringLiteral("%1:%2").arg(secs / 60).arg(secs % 60, 2, 10, QLatin1Char('0'))));
        m_table->setItem(row, 3, new QTableWidgetItem(fieldText(file.modified, sizeof file.modified)));
    }
    if (m_table->rowCount() > 0)
        m_table->selectRow(0);
    m_play = new QPushButton(tr("Play"), this);
    m_play->setDefault(true);
    auto* close = new QPushButton(tr("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_play);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addLayout(buttons);
    resize(560, 360);
    const auto play = [this] {
        const QString path = chosenPath();
        if (path.isEmpty())
            return;
        emit signalPlayFile(path);
        accept();
    };
    connect(m_play, &QPushButton::clicked, this, play);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, play);
    connect(close, &QPushButton::clicked, this, &DevFileDlg::reject);
}

QString DevFileDlg::chosenPath() const
{
    const QList<QTableWidgetItem*> chosen = m_table->selectedItems();
    return chosen.isEmpty() ? QString() : QStringLiteral("/") + m_table->item(chosen.first()->row(), 0)->text();
}

} // namespace kvms_matrix
