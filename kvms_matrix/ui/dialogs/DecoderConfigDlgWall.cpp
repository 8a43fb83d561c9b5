// DecoderConfigDlg: the wall's decoders, and saving (login, layout, files).
#include "DecoderConfigDlg.h"

#include "ConnectErrorText.h"
#include "MatrixSdkWorker.h"
#include "WallConfigStore.h"

#include "KSingleton.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

namespace kvms_matrix {

void DecoderConfigDlg::addWallDecoder(const MatrixInfo& decoder)
{
    if (decoder.ip.isEmpty())
        return;
    if (!m_wallMap.contains(decoder.ip)) {
        if (m_wallMap.size() >= WallConfigStore::kMaxDecoders)
            return;
        auto* item = new QListWidgetItem(m_wallDecoders);
        item->setData(Qt::UserRole, decoder.ip);
    }
    m_wallMap.insert(decoder.ip, decoder);
    for (int i = 0; i < m_wallDecoders->count(); ++i) {
        QListWidgetItem* item = m_wallDecoders->item(i);
        if (item->data(Qt::UserRole).toString() == decoder.ip)
            item->setText(tr("%1:%2  user %3").arg(decoder.ip).arg(decoder.manager_port).arg(decoder.username));
    }
}

void DecoderConfigDlg::slotRemoveClicked()
{
    QListWidgetItem* item = m_wallDecoders->currentItem();
    if (!item)
        return;
    m_wallMap.remove(item->data(Qt::UserRole).toString());
    delete item;
}

QList<MatrixInfo> DecoderConfigDlg::wallDecoders() const
{
    QList<MatrixInfo> list;
    for (int i = 0; i < m_wallDecoders->count(); ++i)
        list.append(m_wallMap.value(m_wallDecoders->item(i)->data(Qt::UserRole).toString()));
    return list;
}

void DecoderConfigDlg::slotSaveClicked()
{
    const QList<MatrixInfo> decoders = wallDecoders();
    if (decoders.isEmpty()) {
        m_status->setText(tr("Please add at least one decoder to the wall."));
        return;
    }
    if (m_name->text().trimmed().isEmpty()) {
        m_status->setText(tr("Please enter the name of the wall."));
        return;
    }
    m_pendingLogins.clear();
    m_loginErrors.clear();
    setBusy(true, tr("Logging in to the decoders..."));
    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    for (const MatrixInfo& d : decoders) {
        m_pendingLogins.insert(d.ip);
        worker->connectMatrix(d, this);
    }
}

void DecoderConfigDlg::slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int, void* pUser)
{
    if (pUser != this || !mHandle || !m_pendingLogins.contains(mHandle->ip()))
        return;
    const QString ip = mHandle->ip();
    if (result != 0) {
        // The login error with its details follows; until then the code stands for it.
        m_loginErrors.insert(ip, ConnectErrorText::connectFailed(result, MatrixSdkWorker::getErrorInfo(result)));
        return;
    }
    m_pendingLogins.remove(ip);
    if (!m_pendingLogins.isEmpty())
        return;
    if (!m_loginErrors.isEmpty()) {
        setBusy(false, QStringList(m_loginErrors.values()).join(QLatin1Char('\n')));
        return;
    }
    const QList<MatrixInfo> decoders = wallDecoders();
    if (!m_relayout->isChecked()) {
        finishSave();
        return;
    }
    m_laying = true;
    m_status->setText(tr("Laying out the TV wall..."));
    const MatrixInfo& main = decoders.first();
    KCOMMON::KSingleton<MatrixSdkWorker>::instance()->setLayout(m_name->text().trimmed(), main.type, m_rows->value(),
        m_cols->value(), WallConfigStore::layoutScreens(m_rows->value(), m_cols->value(), decoders), main.ip);
}

void DecoderConfigDlg::slotConnectErrorMsg(QString ip, ConnectErrorMsgInfo errorMsg, void* pUser)
{
    if (pUser != this || !m_pendingLogins.remove(ip))
        return;
    if (!errorMsg.errCode.isEmpty())
        m_loginErrors.insert(ip, ConnectErrorText::loginError(ip, errorMsg));
    if (m_pendingLogins.isEmpty())
        setBusy(false, QStringList(m_loginErrors.values()).join(QLatin1Char('\n')));
}

void DecoderConfigDlg::slotSetLayoutResult(int result)
{
    if (!m_laying)
        return;
    m_laying = false;
    if (result != 0) {
        setBusy(
            false, tr("Setting up the TV wall failed(%1, %2).").arg(result).arg(MatrixSdkWorker::getErrorInfo(result)));
        return;
    }
    finishSave();
}

void DecoderConfigDlg::finishSave()
{
    QList<MatrixInfo> decoders = wallDecoders();
    const QList<MatrixInfo> screens = WallConfigStore::layoutScreens(m_rows->value(), m_cols->value(), decoders);
    TvWallManagement wall;
    wall.name = m_name->text().trimmed();
    wall.main_decoder_ip = decoders.first().ip;
    wall.main_type = decoders.first().type;
    wall.row = m_rows->value();
    wall.column = m_cols->value();
    for (int i = 0; i < decoders.size(); ++i) {
        decoders[i].connect_state = 1;
        decoders[i].screenCnt = i < screens.size() ? screens.at(i).screenList.size() : 0;
        if (i > 0) {
            MatrixInfo second;
            second.ip = decoders.at(i).ip;
            second.type = decoders.at(i).type;
            second.location = i < screens.size() ? screens.at(i).location : 0;
            wall.second_ip.append(second);
        }
    }
    WallConfigStore::save(decoders, wall);
    setBusy(false, tr("The TV wall is saved."));
    emit signalConfigurationSaved();
    accept();
}

} // namespace kvms_matrix
