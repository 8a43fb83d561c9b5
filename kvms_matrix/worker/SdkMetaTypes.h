#pragma once

// SDK records that travel by value in the worker's signals.

#include "CMatrixSDK.h"

#include <QList>
#include <QMetaType>

Q_DECLARE_METATYPE(DeviceNetworkCfg_t)
Q_DECLARE_METATYPE(DevPlayFile_t)
Q_DECLARE_METATYPE(DeviceAudioInfo_t)
Q_DECLARE_METATYPE(ScreenColor)
Q_DECLARE_METATYPE(ScreenResolution_t)
