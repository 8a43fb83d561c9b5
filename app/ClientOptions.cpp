#include "ClientOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

bool ClientOptions::parse(const QStringList& arguments, ClientOptions& options, QString* error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Operator program of the TV-wall module."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
        QStringLiteral("Directory for the module's files and the log (created if missing)."), QStringLiteral("dir"));
    const QCommandLineOption catalogue(
        QStringLiteral("catalogue"), QStringLiteral("Device catalogue (JSON)."), QStringLiteral("file"));
    const QCommandLineOption language(
        QStringLiteral("lang"), QStringLiteral("Interface language, e.g. zh_CN."), QStringLiteral("code"));
    const QCommandLineOption targets(QStringLiteral("discovery-targets"),
        QStringLiteral("Where decoder searches are sent: host:port[,host:port...] on loopback."),
        QStringLiteral("list"));
    const QCommandLineOption plugin(
        QStringLiteral("plugin"), QStringLiteral("The module plug-in to load."), QStringLiteral("file"));
    parser.addOptions({ dataDir, catalogue, language, targets, plugin });
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("unexpected argument %1").arg(parser.positionalArguments().first());
        return false;
    }

    options.dataDir = parser.value(dataDir);
    if (options.dataDir.isEmpty())
        options.dataDir = QDir::home().filePath(QStringLiteral(".kvms-client"));
    options.dataDir = QDir(options.dataDir).absolutePath();
    // The program works in its data directory: paths given relative to where it was started
    // are resolved now, before that change.
    const auto absolute = [](const QString& path) { return path.isEmpty() ? path : QDir(path).absolutePath(); };
    options.catalogue = absolute(parser.value(catalogue));
    options.language = parser.value(language);
    options.discoveryTargets = parser.value(targets);
    options.pluginPath = absolute(parser.value(plugin));
    return true;
}
