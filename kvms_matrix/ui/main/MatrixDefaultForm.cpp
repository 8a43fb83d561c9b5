#include "MatrixDefaultForm.h"

#include "DecoderConfigDlg.h"

#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

namespace kvms_matrix {

MatrixDefaultForm::MatrixDefaultForm(QWidget* parent)
    : KCOMMON::KWidget(parent)
{
    setObjectName(QStringLiteral("matrixDefaultWt"));
    m_hint = new QLabel(tr("No TV-wall configuration is available. Please configure the TV-wall first."), this);
    m_hint->setObjectName(QStringLiteral("matrixDefaultHint"));
    m_hint->setStyleSheet(QStringLiteral("QLabel{\t\n\tfont:14px \"Microsoft YaHei\";\n\tcolor:#858fa2;\n}"));
    m_hint->setAlignment(Qt::AlignCenter);
    configBtn = new QPushButton(QIcon(QStringLiteral(":/page_icons/configure.png")), tr("Connect the TV wall"), this);
    configBtn->setObjectName(QStringLiteral("configBtn"));
    configBtn->setProperty("class", QStringLiteral("common_bt_style1"));
    configBtn->setMinimumWidth(180);

    auto* layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addWidget(m_hint);
    layout->addSpacing(16);
    layout->addWidget(configBtn, 0, Qt::AlignHCenter);
    layout->addStretch(1);
    connect(configBtn, &QPushButton::clicked, this, &MatrixDefaultForm::slotConfigBtnCliced);
}

void MatrixDefaultForm::slotConfigBtnCliced()
{
    auto* dialog = new DecoderConfigDlg(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DecoderConfigDlg::signalConfigurationSaved, this, &MatrixDefaultForm::signalConfigurationChanged);
    dialog->open();
}

} // namespace kvms_matrix
