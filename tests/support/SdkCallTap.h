#pragma once

#include <QByteArray>
#include <QList>

// Sees the frame calls the module makes into the decoder SDK, on their way to it: this test
// program defines CMatrix_DisplayFrame, CMatrix_SendMediaFrame and CMatrix_StopMediaDistribute
// itself, so the module's objects linked into it call these, which note the call and pass it
// on to the SDK library. Only the latest calls are kept (frames are large).
struct SdkCall {
    enum Function { DisplayFrame, SendMediaFrame, StopMediaDistribute };

    Function function = DisplayFrame;
    void* handle = nullptr; // connection or distribution
    int windowId = 0;
    int channel = 0;
    QByteArray frame;
    int result = 0;
};

class SdkCallTap {
public:
    static constexpr int kKept = 64;

    static void clear();
    static QList<SdkCall> calls();
    static int count(); // all calls since clear(), kept or not
};
