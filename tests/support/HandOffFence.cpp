#include "HandOffFence.h"

#include <QMetaObject>
#include <QObject>

#include <mutex>

namespace {

std::mutex& fence()
{
    static std::mutex mutex;
    return mutex;
}

void pass()
{
    const std::lock_guard<std::mutex> lock(fence());
}

bool beforeDelivery(void**)
{
    pass();
    return false; // deliver as usual
}

// Receives every watched signal directly, on the emitting thread, whatever its arguments.
class Passer : public QObject {
public:
    int qt_metacall(QMetaObject::Call call, int id, void** args) override
    {
        id = QObject::qt_metacall(call, id, args);
        if (id == 0 && call == QMetaObject::InvokeMetaMethod)
            pass();
        return id - 1;
    }
};

} // namespace

void HandOffFence::watch(const QObject* sender, int signalIndex)
{
    static Passer* const passer = [] {
        QInternal::registerCallback(QInternal::EventNotifyCallback, &beforeDelivery);
        return new Passer; // lives as long as the senders may emit
    }();
    QMetaObject::connect(sender, signalIndex, passer, QObject::staticMetaObject.methodCount(), Qt::DirectConnection);
}
