#pragma once

#include <QObject>
#include <QString>

// Switching between the host's modules, reached through KCOMMON::KSingleton<ModuleAccess>::instance().
class ModuleAccess : public QObject {
    Q_OBJECT

public:
    explicit ModuleAccess(QObject* parent = nullptr);

signals:
    // The host is leaving the current module's page for moduleName (see DictDef for the names).
    void signalModuleSwitchToAnother(const QString& moduleName);
};
