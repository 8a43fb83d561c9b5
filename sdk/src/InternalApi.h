#pragma once

// Exported but not part of the public header: lets tests shorten the heartbeat so
// a silent decoder is noticed in milliseconds rather than seconds.

#include "CMatrixSDK.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Heartbeat interval and silence limit for connections the handle opens from now on. */
CMATRIX_API int CMatrixInternal_SetHeartbeat(CMHANDLE handle, int intervalMs, int silenceMs);

#ifdef __cplusplus
}
#endif
