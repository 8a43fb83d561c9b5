#pragma once

#include "CSharedHandle.h"
#include "ConnectErrorMsgInfo.h"
#include "MatrixInfo.h"

#include <QDialog>
#include <QMap>
#include <QSet>
#include <QSharedPointer>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace kvms_matrix {

// The decoder configuration: find decoders (search on the configured targets, or add one by
// address), activate a factory-new unit, change a unit's network settings, and make a TV wall
// of one or more decoders with a grid. Saving logs in to every decoder of the wall, lays the
// grid out on the main decoder (the first listed) and writes the module's files.
class DecoderConfigDlg : public QDialog {
    Q_OBJECT

public:
    explicit DecoderConfigDlg(QWidget* parent = nullptr);

    QTableWidget* foundTable() const { return m_found; }
    QListWidget* wallList() const { return m_wallDecoders; }
    QPushButton* searchButton() const { return m_searchBtn; }
    QPushButton* addFoundButton() const { return m_addFoundBtn; }
    QPushButton* activateButton() const { return m_activateBtn; }
    QPushButton* networkButton() const { return m_networkBtn; }
    QPushButton* saveButton() const { return m_saveBtn; }
    QLineEdit* nameEdit() const { return m_name; }
    QSpinBox* rowsEdit() const { return m_rows; }
    QSpinBox* colsEdit() const { return m_cols; }
    QCheckBox* relayoutBox() const { return m_relayout; }
    QString statusText() const;
    // Adds a decoder to the wall (replacing one with the same address).
    void addWallDecoder(const MatrixInfo& decoder);

public slots:
    void slotSearchBtnClicked();
    void slotSearchMatrixResult(const QMap<QString, MatrixInfo>& matrices);
    void slotAddFoundClicked();
    void slotAddByAddressClicked();
    void slotActivateClicked();
    void slotActiveDecoderFinished(int result, QString text);
    void slotNetworkClicked();
    void slotRemoveClicked();
    void slotSaveClicked();
    void slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int type, void* pUser);
    void slotConnectErrorMsg(QString ip, kvms_matrix::ConnectErrorMsgInfo errorMsg, void* pUser);
    void slotSetLayoutResult(int result);

signals:
    void signalConfigurationSaved();

private:
    void buildLayout();
    void loadSaved();
    void setBusy(bool busy, const QString& status);
    bool selectedFound(MatrixInfo* decoder) const;
    QList<MatrixInfo> wallDecoders() const;
    void finishSave();

    QMap<QString, MatrixInfo> m_foundMap;
    QMap<QString, MatrixInfo> m_wallMap; // address -> decoder, order kept by the list widget
    bool m_searching = false;
    bool m_activating = false;
    bool m_laying = false;
    QSet<QString> m_pendingLogins;
    QMap<QString, QString> m_loginErrors;

    QTableWidget* m_found = nullptr;
    QListWidget* m_wallDecoders = nullptr;
    QPushButton* m_searchBtn = nullptr;
    QPushButton* m_addFoundBtn = nullptr;
    QPushButton* m_addAddressBtn = nullptr;
    QPushButton* m_activateBtn = nullptr;
    QPushButton* m_networkBtn = nullptr;
    QPushButton* m_removeBtn = nullptr;
    QPushButton* m_saveBtn = nullptr;
    QLineEdit* m_name = nullptr;
    QSpinBox* m_rows = nullptr;
    QSpinBox* m_cols = nullptr;
    QCheckBox* m_relayout = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace kvms_matrix
