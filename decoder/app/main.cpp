#include "DaemonOptions.h"
#include "core/VirtualDecoder.h"

#include <QGuiApplication>

#include <csignal>
#include <cstdio>
#include <pthread.h>

int main(int argc, char** argv)
{
    // Blocked before any thread starts, so every thread inherits the mask and the
    // signals wait for sigwait below.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);

    // The monitor draws text, which takes a GUI application; no display is needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("virtual-decoder"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));

    vdec::DecoderConfig config;
    QString error;
    if (!vdec::DaemonOptions::parse(app.arguments(), config, &error)) {
        fprintf(stderr, "virtual-decoder: %s\n", qPrintable(error));
        return 2;
    }
    vdec::VirtualDecoder decoder(config);
    if (!decoder.start(&error)) {
        fprintf(stderr, "virtual-decoder: %s\n", qPrintable(error));
        return 1;
    }
    printf("virtual-decoder %s listening on %s tcp=%u http=%u udp=%u\n", qPrintable(config.deviceId),
        qPrintable(decoder.address()), unsigned(decoder.port()), unsigned(decoder.httpPort()),
        unsigned(decoder.udpPort()));
    fflush(stdout);

    int signal = 0;
    sigwait(&stopSignals, &signal);
    decoder.stop();
    fprintf(stderr, "virtual-decoder: stopped on signal %d\n", signal);
    return 0;
}
