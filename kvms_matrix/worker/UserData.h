#pragma once

#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// Login data of one decoder account, carried by the account dialogs' signals.
struct UserData {
    QString ip;
    QString userName;
    QString password;
    QString newPassword; // only for a password change
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::UserData)
