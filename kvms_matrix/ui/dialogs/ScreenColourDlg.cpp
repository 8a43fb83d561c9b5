#include "ScreenColourDlg.h"

#include "DialogStyle.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include <cstring>

namespace kvms_matrix {

ScreenColourDlg::ScreenColourDlg(int col, int row, QWidget* parent)
    : QDialog(parent)
    , m_col(col)
    , m_row(row)
{
    setObjectName(QStringLiteral("screenColourDlg"));
    setWindowTitle(tr("Screen colour (row %1, column %2)").arg(row + 1).arg(col + 1));
    applyDialogStyle(this);
    auto* form = new QFormLayout;
    const QString names[4] = { tr("Brightness"), tr("Contrast"), tr("Saturation"), tr("Hue") };
    for (int i = 0; i < 4; ++i) {
        m_sliders[i] = new QSlider(Qt::Horizontal, this);
        m_sliders[i]->setRange(0, 100);
        m_sliders[i]->setValue(50);
        m_sliders[i]->setEnabled(false); // until the decoder has told its values
        form->addRow(names[i], m_sliders[i]);
    }
    m_apply = new QPushButton(tr("Apply"), this);
    m_apply->setEnabled(false);
    auto* close = new QPushButton(tr("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_apply);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    resize(420, 200);
    connect(m_apply, &QPushButton::clicked, this, [this] { emit signalApply(m_col, m_row, colour()); });
    connect(close, &QPushButton::clicked, this, &ScreenColourDlg::reject);
}

void ScreenColourDlg::setColour(const ScreenColor& colour)
{
    const int values[4] = { colour.brightness, colour.contrast, colour.saturation, colour.hue };
    for (int i = 0; i < 4; ++i) {
        m_sliders[i]->setValue(qBound(0, values[i], 100));
        m_sliders[i]->setEnabled(true);
    }
    m_apply->setEnabled(true);
}

ScreenColor ScreenColourDlg::colour() const
{
    ScreenColor out;
    std::memset(&out, 0, sizeof out);
    out.brightness = m_sliders[0]->value();
    out.contrast = m_sliders[1]->value();
    out.saturation = m_sliders[2]->value();
    out.hue = m_sliders[3]->value();
    return out;
}

} // namespace kvms_matrix
