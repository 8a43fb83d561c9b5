#include "SignalRecorder.h"

#include "HandOffFence.h"

SignalRecorder::SignalRecorder(QObject* sender, const QMetaObject& declaring)
{
    const int member = QObject::staticMetaObject.methodCount();
    for (int i = declaring.methodOffset(); i < declaring.methodCount(); ++i) {
        const QMetaMethod method = declaring.method(i);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        HandOffFence::watch(sender, i);
        QMetaObject::connect(sender, i, this, member + m_signals.size(), Qt::QueuedConnection);
        m_signals.append(method);
    }
}

QList<QByteArray> SignalRecorder::names() const
{
    QList<QByteArray> result;
    for (const Event& event : m_events)
        result.append(event.name);
    return result;
}

QList<QVariantList> SignalRecorder::argsOf(const QByteArray& name) const
{
    QList<QVariantList> result;
    for (const Event& event : m_events) {
        if (event.name == name)
            result.append(event.args);
    }
    return result;
}

int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void** args)
{
    id = QObject::qt_metacall(call, id, args);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    if (id < m_signals.size()) {
        const QMetaMethod& method = m_signals.at(id);
        Event event;
        event.name = method.name();
        for (int i = 0; i < method.parameterCount(); ++i)
            event.args.append(QVariant(method.parameterType(i), args[i + 1]));
        m_events.append(event);
    }
    return id - m_signals.size();
}
