#pragma once

#include <QObject>
#include <QString>

namespace kvms_base {
class BaseForm;
}

// Entry object of a module: the host creates one per module (as a plug-in instance),
// calls moduleInit() once, and asks it for the module's page.
class ModuleInitialization : public QObject {
    Q_OBJECT

public:
    explicit ModuleInitialization(QObject* parent = nullptr);
    ~ModuleInitialization() override;

    virtual void moduleInit();
    virtual void recoveryToInitialState();

    // The module's main page, created without a parent; the host takes ownership.
    // Modules without a page return nullptr.
    virtual kvms_base::BaseForm* createForm();

protected:
    // Appends the text of a resource (e.g. ":/style/x.qss") to the application's style sheet,
    // so that every module can add its own. False when there is no widget application or the
    // resource cannot be read.
    bool loadStyleSheet(const QString& resourcePath);
};
