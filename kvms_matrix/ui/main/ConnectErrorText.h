#pragma once

#include "ConnectErrorMsgInfo.h"

#include <QCoreApplication>
#include <QString>

namespace kvms_matrix {

// The operator's words for a failed decoder login, shared by the main page and the dialogs
// that log in.
class ConnectErrorText {
    Q_DECLARE_TR_FUNCTIONS(kvms_matrix::ConnectErrorText)

public:
    // What a login error of decoder `name` says, by the SDK's error code text.
    static QString loginError(const QString& name, const ConnectErrorMsgInfo& info);
    // A connect result that is not 0; -1 stands for "no connection could be made".
    static QString connectFailed(int code, const QString& description);
};

} // namespace kvms_matrix
