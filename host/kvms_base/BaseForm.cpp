#include "BaseForm.h"

namespace kvms_base {

BaseForm::BaseForm(QWidget* parent)
    : KCOMMON::KWidget(parent)
{
}

QString BaseForm::formName() const
{
    return objectName();
}

void BaseForm::formActivated() { }

void BaseForm::recoveryToInitialState() { }

} // namespace kvms_base
