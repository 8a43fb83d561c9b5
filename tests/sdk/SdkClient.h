#pragma once

#include "FakeDecoder.h"
#include "InternalApi.h"
#include "SdkSession.h"

// An SDK handle for the scripted decoder, which takes any login.
class SdkClient : public kvmstest::SdkSession {
public:
    int connectTo(const FakeDecoder& decoder, int timeoutMs = 3000)
    {
        return connect("127.0.0.1", decoder.port(), "admin", "secret", timeoutMs);
    }
    void setHeartbeat(int intervalMs, int silenceMs) { CMatrixInternal_SetHeartbeat(handle(), intervalMs, silenceMs); }
};
