// Error texts and login errors of MatrixSdkWorker.
#include "MatrixSdkWorker.h"

#include "ErrorTexts.h"

namespace kvms_matrix {

QString MatrixSdkWorker::getErrorInfo(int code)
{
    return ErrorTexts::describe(code, ErrorTexts::defaultTablePath());
}

void MatrixSdkWorker::parseConnectErrorMsg(const char* text, ConnectErrorMsgInfo& info)
{
    ErrorTexts::parseLoginError(text, info);
}

} // namespace kvms_matrix
