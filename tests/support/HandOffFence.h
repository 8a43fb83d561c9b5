#pragma once

class QObject;

// Qt hands a queued signal's arguments to the receiving thread under its own locks, which
// ThreadSanitizer cannot see (the library is not instrumented). A test that reads a list the
// worker filled would then look like a race with the worker's writes. The fence makes the
// hand-off visible: the sender's thread passes it when it emits, the receiving thread before
// each event it delivers, and one mutex orders the two.
class HandOffFence {
public:
    // Each emission of the sender's signal passes the fence on the emitting thread. Watch before
    // connecting the queued receiver, so the fence is passed before the event is posted. The
    // first call (on the test's thread) also installs the delivering side.
    static void watch(const QObject* sender, int signalIndex);
};
