#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaMethod>
#include <QObject>
#include <QVariantList>
#include <QVector>

// Records every signal a class declares (not its bases'), in the order they arrive, on the
// recorder's thread. Each is received through a queued connection, so an argument type that
// cannot be queued shows up as a missing event.
class SignalRecorder : public QObject {
public:
    struct Event {
        QByteArray name;
        QVariantList args;
    };

    SignalRecorder(QObject* sender, const QMetaObject& declaring);

    QList<QByteArray> names() const;
    // The arguments of the recorded signals of this name, oldest first.
    QList<QVariantList> argsOf(const QByteArray& name) const;
    int count(const QByteArray& name) const { return argsOf(name).size(); }
    int total() const { return m_events.size(); }
    void clear() { m_events.clear(); }

    int qt_metacall(QMetaObject::Call call, int id, void** args) override;

private:
    QVector<QMetaMethod> m_signals;
    QList<Event> m_events;
};
