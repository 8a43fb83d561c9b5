#pragma once

#include "MatrixLoopInfo.h"

#include <QDialog>
#include <QList>

class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace kvms_matrix {

// A loop's name, dwell time and sources. The sources come from the page's device and stream
// trees; the chosen ones are shown in turn, in the order the operator drags them into.
class LoopSettingsDlg : public QDialog {
    Q_OBJECT

public:
    // `available` are the sources the operator may pick; `takenNames` the other loops' names.
    LoopSettingsDlg(const MatrixLoopInfo& loop, bool editing, const QList<MatrixDeviceInfo>& available,
        const QStringList& takenNames, QWidget* parent = nullptr);

    // The loop as set in the dialog (id kept when editing, else below 1).
    MatrixLoopInfo loop() const;

    QLineEdit* nameEdit() const { return m_name; }
    QSpinBox* dwellEdit() const { return m_dwell; }
    QListWidget* availableList() const { return m_available; }
    QListWidget* chosenList() const { return m_chosen; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* saveButton() const { return m_save; }

public slots:
    void accept() override;

private:
    void addChosen(const MatrixDeviceInfo& source);

    MatrixLoopInfo m_loop;
    QList<MatrixDeviceInfo> m_sources; // available and chosen, by the index the items carry
    QStringList m_taken;
    QLineEdit* m_name = nullptr;
    QSpinBox* m_dwell = nullptr;
    QListWidget* m_available = nullptr;
    QListWidget* m_chosen = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_save = nullptr;
};

} // namespace kvms_matrix
