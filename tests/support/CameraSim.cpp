#include "CameraSim.h"

#include "TestTimeout.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QRegularExpression>

namespace kvmstest {

namespace {

QString program()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/camera-sim");
}

} // namespace

CameraSim::~CameraSim()
{
    stop();
}

bool CameraSim::available()
{
    return QFileInfo(program()).isExecutable();
}

bool CameraSim::start(const QString& address, const QStringList& cameras, quint16 port, const QStringList& extra)
{
    stop();
    QStringList arguments { "--address", address, "--port", QString::number(port), "--clip-dir",
        QStringLiteral(KVMS_TEST_CLIP_DIR), "--clip-seconds", "4", "--main-size", "640x360", "--sub-size", "320x180",
        "--exit-with-stdin" };
    for (const QString& c : cameras)
        arguments << "--camera" << c;
    arguments << extra;
    process_ = std::make_unique<QProcess>();
    process_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // GStreamer keeps its registry and type system to the end: not leaks of the simulator.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(
        QStringLiteral("ASAN_OPTIONS"), env.value(QStringLiteral("ASAN_OPTIONS")) + QStringLiteral(":detect_leaks=0"));
    process_->setProcessEnvironment(env);
    process_->start(program(), arguments);
    // Encoding the clips the first time takes a while; later runs find them made.
    QDeadlineTimer deadline(scaled(120000));
    QByteArray out;
    while (!deadline.hasExpired() && process_->state() != QProcess::NotRunning) {
        process_->waitForReadyRead(200);
        out += process_->readAllStandardOutput();
        if (out.contains("camera-sim: ready")) {
            const QRegularExpressionMatch m
                = QRegularExpression(QStringLiteral(":(\\d+)/ch1/main")).match(QString::fromUtf8(out));
            port_ = quint16(m.captured(1).toUInt());
            return port_ != 0;
        }
    }
    error_ = QStringLiteral("camera-sim did not get ready: %1").arg(QString::fromUtf8(out));
    stop();
    return false;
}

void CameraSim::stop()
{
    if (!process_)
        return;
    if (process_->state() != QProcess::NotRunning) {
        process_->terminate();
        if (!process_->waitForFinished(5000)) {
            process_->kill();
            process_->waitForFinished(5000);
        }
    }
    process_.reset();
}

} // namespace kvmstest
