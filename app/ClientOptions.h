#pragma once

#include <QString>
#include <QStringList>

// The operator program's command line.
struct ClientOptions {
    QString dataDir; // where the module's JSON and INI files and the log live
    QString catalogue; // device catalogue (JSON) given to the module through kvms_data
    QString language; // e.g. "zh_CN"; empty for the source texts
    QString discoveryTargets; // "host:port,..." for the SDK's discovery, loopback only
    QString pluginPath; // the module plug-in; beside the program unless given

    // False with a message in *error for unusable arguments; --help and --version exit inside.
    static bool parse(const QStringList& arguments, ClientOptions& options, QString* error);
};
