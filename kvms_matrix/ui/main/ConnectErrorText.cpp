#include "ConnectErrorText.h"

#include <QtGlobal>

namespace kvms_matrix {

QString ConnectErrorText::loginError(const QString& name, const ConnectErrorMsgInfo& info)
{
    if (info.errCode == QLatin1String("PASSWDERR")) {
        if (info.errNum == -1 && info.sumNum == -1 && info.lockTime == -1)
            return tr("Decoder(%1) connection failed:Incorrect user name or password!").arg(name);
        // The decoder counts attempts; what the operator wants is how many are left.
        // Both counts come from the decoder: the difference is taken where it cannot overflow.
        const qint64 left = qMax<qint64>(0, qint64(info.sumNum) - info.errNum);
        return tr("Decoder(%1) connection failed:Incorrect user name or password,%2 errors have been made,%3 "
                  "errors will be locked for %4 minutes!")
            .arg(name)
            .arg(info.errNum)
            .arg(left)
            .arg(info.lockTime);
    }
    if (info.errCode == QLatin1String("USERLOCK"))
        return tr("Decoder(%1) has been locked,it will unlock after %2 seconds.").arg(name).arg(info.unlockTime);
    if (info.errCode == QLatin1String("DEVNOACTIVE"))
        return tr("Decoder(%1) connection failed:Device not active!").arg(name);
    return tr("Decoder(%1) connection failed:unknow error!").arg(name);
}

QString ConnectErrorText::connectFailed(int code, const QString& description)
{
    if (code == -1)
        return tr("Decoder connect failed(-1, connect server failed).");
    return tr("Decoder connect failed(%1, %2).").arg(code).arg(description);
}

} // namespace kvms_matrix
