#pragma once

#include "SdkSession.h"

// One SDK handle for a test, logged in to a virtual decoder, counting its losses.
using SdkHandle = kvmstest::SdkSession;
