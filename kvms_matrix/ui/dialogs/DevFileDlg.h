#pragma once

#include "CMatrixSDK.h"

#include <QDialog>
#include <QList>

class QPushButton;
class QTableWidget;

namespace kvms_matrix {

// The files on the decoder's USB storage; the chosen one is played in the window the dialog
// was opened for.
class DevFileDlg : public QDialog {
    Q_OBJECT

public:
    DevFileDlg(const QList<DevPlayFile_t>& files, QWidget* parent = nullptr);

    QTableWidget* table() const { return m_table; }
    QPushButton* playButton() const { return m_play; }
    QString chosenPath() const;

signals:
    void signalPlayFile(QString path);

private:
    QTableWidget* m_table = nullptr;
    QPushButton* m_play = nullptr;
};

} // namespace kvms_matrix
