#pragma once

#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// A failed login as the SDK describes it (its "ERRCODE"/"PARAM" text).
struct ConnectErrorMsgInfo {
    QString errCode; // "PASSWDERR", "USERLOCK", ...
    int errNum = 0; // failed attempts so far
    int sumNum = 0; // attempts allowed before the account locks
    int lockTime = 0; // lock duration in whole minutes
    int unlockTime = 0; // time until unlock, as the SDK gives it
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::ConnectErrorMsgInfo)
