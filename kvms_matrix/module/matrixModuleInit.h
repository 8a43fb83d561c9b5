#pragma once

#include "ModuleInitialization.h"

#include <QPointer>

namespace kvms_base {
class BaseForm;
}

namespace kvms_matrix {

// The host's view of the module: prepares it once, creates the worker, and makes the module's
// page on request. One per process, reached through KCOMMON::KSingleton<matrixModuleInit> and
// handed to the host by the plug-in entry kvms_module_entry().
class matrixModuleInit : public ModuleInitialization {
    Q_OBJECT

public:
    explicit matrixModuleInit(QObject* parent = nullptr);
    ~matrixModuleInit() override;

    void moduleInit() override;
    void recoveryToInitialState() override;
    kvms_base::BaseForm* createForm() override;

    // The module's page, without a parent: the host owns it.
    kvms_base::BaseForm* createMatrixForm();

    bool isInitialized() const { return m_initialized; }

private:
    bool m_initialized = false;
    QPointer<kvms_base::BaseForm> m_form; // the latest page made, for recoveryToInitialState
};

} // namespace kvms_matrix
