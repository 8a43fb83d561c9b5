#pragma once

#include <QString>
#include <QWidget>

namespace kvms_matrix {

// The module's dark look for its dialogs, which are top-level windows and so outside the
// page's style rules.
inline void applyDialogStyle(QWidget* dialog)
{
    dialog->setStyleSheet(QStringLiteral(
        "QDialog{background:#0e1624;color:#d8dee9;}"
        "QLabel,QCheckBox,QRadioButton,QGroupBox{color:#d8dee9;}"
        "QLabel{background:transparent;border:none;}"
        "QGroupBox{border:1px solid #2e3b55;border-radius:4px;margin-top:14px;padding-top:6px;}"
        "QGroupBox::title{subcontrol-origin:margin;left:8px;padding:0 4px;}"
        "QLineEdit,QSpinBox,QTableWidget,QListWidget{background:#1e293d;color:#d8dee9;"
        "border:1px solid #2e3b55;selection-background-color:#0659a4;}"
        "QHeaderView::section{background:#1e293d;color:#d8dee9;border:0px;border-right:1px solid #2e3b55;"
        "padding:3px;}"
        "QPushButton{background:#1e293d;border:1px solid #2e3b55;border-radius:3px;color:#d8dee9;"
        "padding:4px 12px;}"
        "QPushButton:hover{background:#2e3b55;}"
        "QPushButton:disabled{color:#6b7280;}"));
}

} // namespace kvms_matrix
