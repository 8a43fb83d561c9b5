#include "matrixModuleInit.h"

#include "MainMatrixForm.h"
#include "MatrixSdkWorker.h"

#include "BaseForm.h"
#include "KSingleton.h"
#include "SysPaths.h"

#include <QCoreApplication>
#include <QDir>

namespace kvms_matrix {

matrixModuleInit::matrixModuleInit(QObject* parent)
    : ModuleInitialization(parent)
{
}

matrixModuleInit::~matrixModuleInit() = default;

void matrixModuleInit::moduleInit()
{
    if (m_initialized)
        return;
    loadStyleSheet(QStringLiteral(":/style/kvms_matrix_style.qss"));
    // Constructs and initialises the worker; its thread waits for the first connect.
    KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    const QString backgrounds = SysPaths::matrixDataDir() + QStringLiteral("/backgroud_images");
    QDir dir(backgrounds);
    if (!dir.exists())
        dir.mkdir(backgrounds);
    m_initialized = true;
    QCoreApplication::processEvents();
}

kvms_base::BaseForm* matrixModuleInit::createMatrixForm()
{
    auto* form = new MainMatrixForm();
    m_form = form;
    return form;
}

kvms_base::BaseForm* matrixModuleInit::createForm()
{
    return createMatrixForm();
}

void matrixModuleInit::recoveryToInitialState()
{
    // What goes back to the start is the page's business.
    if (m_form)
        m_form->recoveryToInitialState();
}

} // namespace kvms_matrix
