#pragma once

#include "HandOffFence.h"

#include <QSignalSpy>

// A QSignalSpy that receives on its own thread. The worker emits from its thread; the plain
// spy would append from there while the test reads on the main thread. Reconnected queued,
// the spy records (and wakes wait()) in the event loop of the test, as a form would receive.
class QueuedSignalSpy : public QSignalSpy {
public:
    template <typename Func>
    QueuedSignalSpy(const typename QtPrivate::FunctionPointer<Func>::Object* sender, Func signal)
        : QSignalSpy(sender, signal)
    {
        const int signalIndex = QMetaMethod::fromSignal(signal).methodIndex();
        const int member = QObject::staticMetaObject.methodCount();
        QMetaObject::disconnect(sender, signalIndex, this, member);
        HandOffFence::watch(sender, signalIndex);
        m_connected = QMetaObject::connect(sender, signalIndex, this, member, Qt::QueuedConnection);
    }

    bool isConnected() const { return isValid() && m_connected; }

private:
    bool m_connected = false;
};
