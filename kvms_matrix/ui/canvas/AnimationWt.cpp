#include "AnimationWt.h"

namespace kvms_matrix {

AnimationWt::AnimationWt(QWidget* parent)
    : ControlMatrixWt(parent)
{
}

void AnimationWt::slotMoveAnimationFinished()
{
    placeFloatingWindows();
    update();
}

} // namespace kvms_matrix
