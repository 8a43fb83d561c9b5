#pragma once

#include "BaseForm.h"
#include "CSharedHandle.h"
#include "ConnectErrorMsgInfo.h"
#include "MatrixInfo.h"

#include <QMap>
#include <QPointer>
#include <QSharedPointer>

class QStackedWidget;

namespace kvms_matrix {

class MatrixDefaultForm;
class MatrixForm;

// The module's page in the host: the empty page while no decoder is configured, the TV wall
// page otherwise; tells the operator why a login failed.
class MainMatrixForm : public kvms_base::BaseForm {
    Q_OBJECT

public:
    explicit MainMatrixForm(QWidget* parent = nullptr);
    ~MainMatrixForm() override;

    void recoveryToInitialState() override;

    // 0 the empty page, 1 the TV wall page.
    int currentPage() const;
    MatrixDefaultForm* defaultPage() const { return matrixDefaultWt; }
    MatrixForm* tvWallPage() const { return matrixTvWallWt; }

    // A widget to bring back with the form, e.g. a dialog left open when the host switched
    // pages; it is kept while it was shown for `uniqueId` (null: any).
    void setRestoreWidget(QWidget* widget, const void* uniqueId);

public slots:
    void slotUpdateScreen();
    void slotQuitSystem();
    void slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int type, void* pUser);
    void slot_connectErrorMsg(QString ip, kvms_matrix::ConnectErrorMsgInfo errorMsg, void* pUser);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void chooseStackPage();
    QString decoderName(const QString& ip) const;

    QStackedWidget* m_stack = nullptr;
    MatrixDefaultForm* matrixDefaultWt = nullptr;
    MatrixForm* matrixTvWallWt = nullptr;
    QList<MatrixInfo> m_decoders;
    QString m_currentIp;
    QMap<QString, QString> m_decoderNames; // address -> name shown in messages
    QPointer<QWidget> m_restoreWidget;
    const void* m_restoreId = nullptr;
};

} // namespace kvms_matrix
