#include "ModuleLoader.h"

#include "BaseForm.h"
#include "ModuleInitialization.h"

bool ModuleLoader::load(const QString& path)
{
    library_.setFileName(path);
    // Everything resolved up front: a plug-in that misses a symbol fails here, not mid-session.
    library_.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library_.load()) {
        error_ = library_.errorString();
        return false;
    }
    using Entry = ModuleInitialization* (*)();
    const auto entry = reinterpret_cast<Entry>(library_.resolve("kvms_module_entry"));
    if (!entry) {
        error_ = QStringLiteral("%1 has no kvms_module_entry").arg(path);
        return false;
    }
    entry_ = entry();
    if (!entry_) {
        error_ = QStringLiteral("%1 gave no entry object").arg(path);
        return false;
    }
    entry_->moduleInit();
    return true;
}

kvms_base::BaseForm* ModuleLoader::createPage()
{
    return entry_ ? entry_->createForm() : nullptr;
}
