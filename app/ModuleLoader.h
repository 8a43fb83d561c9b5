#pragma once

#include <QLibrary>
#include <QString>

class ModuleInitialization;

namespace kvms_base {
class BaseForm;
}

// Loads a module plug-in as the host client does: resolves its entry function, initialises the
// entry object once and asks it for the module's page.
class ModuleLoader {
public:
    // False with a reason in error() when the library or its entry cannot be used.
    bool load(const QString& path);
    // The module's page (owned by the caller), or nullptr when the module has none.
    kvms_base::BaseForm* createPage();
    const QString& error() const { return error_; }

private:
    QLibrary library_;
    ModuleInitialization* entry_ = nullptr;
    QString error_;
};
