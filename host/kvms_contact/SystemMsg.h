#pragma once

#include <QObject>

// System-wide notifications of the host, reached through KCOMMON::KSingleton<SystemMsg>::instance().
class SystemMsg : public QObject {
    Q_OBJECT

public:
    explicit SystemMsg(QObject* parent = nullptr);

signals:
    // The client is closing: modules stop their threads and release their connections.
    void signalQuitSystem();
};
