#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace vms_sdk {

// Notifications of the client library about the streams it holds open. Emitted on the
// library's own threads; receivers on the GUI thread get them queued.
class ClientSignals : public QObject {
    Q_OBJECT

public:
    static ClientSignals* instance();

signals:
    // One media frame of an open stream, as the server sent it.
    void signalStreamData(const QString& streamId, const QByteArray& data);
    // Something happened to an open stream; event is a StreamEvent value.
    void signalStreamEventPush(QString streamId, int event);

private:
    ClientSignals();
};

} // namespace vms_sdk
