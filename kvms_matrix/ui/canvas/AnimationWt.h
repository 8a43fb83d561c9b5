#pragma once

#include "ControlMatrixWt.h"

namespace kvms_matrix {

// The canvas with one more slot: the end of a floating window's move animation, which puts
// every floating window back at the rectangle of its record.
class AnimationWt : public ControlMatrixWt {
    Q_OBJECT

public:
    explicit AnimationWt(QWidget* parent = nullptr);

public slots:
    void slotMoveAnimationFinished();
};

} // namespace kvms_matrix
