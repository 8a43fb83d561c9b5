#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

namespace kvmstest {

// tools/camera-sim as a child process: small, short clips (encoded once into the build
// tree and reused by later runs), an address of the test's own and any free port
// unless one is given. Stopped by stop() or the destructor.
class CameraSim {
public:
    ~CameraSim();

    static bool available(); // the program was built
    // False, with the reason in error(), when it did not get ready in time.
    bool start(
        const QString& address, const QStringList& cameras, quint16 port = 0, const QStringList& extraArguments = {});
    void stop();
    quint16 port() const { return port_; }
    const QString& error() const { return error_; }

private:
    std::unique_ptr<QProcess> process_;
    quint16 port_ = 0;
    QString error_;
};

} // namespace kvmstest
