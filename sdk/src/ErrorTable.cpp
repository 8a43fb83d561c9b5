#include "CMatrixSDK.h"

#include <iterator>

namespace {

// The one table of result codes; ErrorCodeInfo.xml carries the same texts.
const CMatrixErrorInfo kErrors[] = {
    { CMATRIX_OK, "Success" },
    { CMATRIX_ERR_FAILED, "Operation failed" },
    { CMATRIX_ERR_INVALID_PARAM, "Invalid parameter" },
    { CMATRIX_ERR_INVALID_HANDLE, "Invalid connection handle" },
    { CMATRIX_ERR_TIMEOUT, "The decoder did not answer in time" },
    { CMATRIX_ERR_CONNECT, "Connect server failed" },
    { CMATRIX_ERR_NOT_LOGGED_IN, "Not logged in" },
    { CMATRIX_ERR_PASSWORD, "Incorrect user name or password" },
    { CMATRIX_ERR_USER_LOCKED, "The account is locked" },
    { CMATRIX_ERR_NOT_ACTIVATED, "Device not active" },
    { CMATRIX_ERR_DISCONNECTED, "The connection to the decoder was closed" },
    { CMATRIX_ERR_PROTOCOL, "Malformed message" },
    { CMATRIX_ERR_TOO_LARGE, "Message too large" },
    { CMATRIX_ERR_NO_MEMORY, "Out of memory" },
    { CMATRIX_ERR_NOT_SUPPORTED, "Not supported by the decoder" },
    { CMATRIX_ERR_WINDOW_NOT_FOUND, "The window does not exist" },
    { CMATRIX_ERR_DIVISION, "The window division is not supported" },
    { CMATRIX_ERR_SCENE_NOT_FOUND, "The scene does not exist" },
    { CMATRIX_ERR_SCHEME_NOT_FOUND, "The loop does not exist" },
    { CMATRIX_ERR_LIMIT, "The decoder has reached its limit" },
    { CMATRIX_ERR_BUSY, "The decoder is busy" },
    { CMATRIX_ERR_FILE_NOT_FOUND, "File not found" },
    { CMATRIX_ERR_FILE_IO, "File read or write failed" },
    { CMATRIX_ERR_FIRMWARE, "Invalid firmware file" },
    { CMATRIX_ERR_ALREADY_ACTIVE, "The device is already active" },
    { CMATRIX_ERR_AUTH, "Authentication failed" },
    { CMATRIX_ERR_MEDIA_NOT_FOUND, "The media distribution does not exist" },
    { CMATRIX_ERR_DECODE, "The picture could not be decoded" },
    { CMATRIX_ERR_FRAME, "Invalid media frame" },
    { CMATRIX_ERR_SUBWINDOW, "The sub-window does not exist" },
    { CMATRIX_ERR_GEOMETRY, "The window lies outside the wall" },
    { CMATRIX_ERR_WINDOW_EXISTS, "The window already exists" },
    { CMATRIX_ERR_NAME, "The name is empty or too long" },
    { CMATRIX_ERR_WEAK_PASSWORD, "The password is too weak" },
    { CMATRIX_ERR_CONFIG, "Invalid configuration file" },
    { CMATRIX_ERR_DEVICE_NOT_FOUND, "No device answered" },
    { CMATRIX_ERR_LOOP_RUNNING, "The window displays in turn" },
    { CMATRIX_ERR_SOURCE_ON_WALL, "The source is already on the wall" },
};

} // namespace

extern "C" int CMatrix_GetErrorTable(const CMatrixErrorInfo** table)
{
    if (table)
        *table = kErrors;
    return int(std::size(kErrors));
}

extern "C" const char* CMatrix_GetErrorText(int code)
{
    for (const CMatrixErrorInfo& e : kErrors)
        if (e.code == code)
            return e.description;
    return nullptr;
}
