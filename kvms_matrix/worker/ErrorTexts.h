#pragma once

#include "ConnectErrorMsgInfo.h"

#include <QString>

namespace kvms_matrix {

// Operator texts for SDK result codes, from the error table shipped beside the program, and the
// SDK's login-error text turned into a record.
class ErrorTexts {
public:
    // "ErrorCodeInfo.xml" in the directory of the running program.
    static QString defaultTablePath();

    // The description of `code` in the table at `tablePath`, or the code in decimal when the table
    // is missing, unreadable or has no entry for it. The file is read on every call, so a table
    // replaced while the client runs is picked up.
    static QString describe(int code, const QString& tablePath);

    // Fills `info` from the SDK's {"ERRCODE":..,"PARAM":{..}} text; a text that is not a JSON
    // object (or null) leaves `info` as it is.
    static void parseLoginError(const char* text, ConnectErrorMsgInfo& info);
};

} // namespace kvms_matrix
