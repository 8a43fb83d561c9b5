#pragma once

// Everything the host client library offers to modules.
#include "ClientSignals.h"
#include "LogInfo.h"
#include "PlaybackByTimeCondition.h"
#include "PlaybackRequests.h"
#include "RecordingSource.h"
#include "StreamEvent.h"
