#pragma once

#include <QMetaType>

namespace kvms_matrix {

// What a mouse move does to a floating window: one of the selection frame's handles resizes
// it, Whole drags it.
enum MouseMovePos {
    None = 0,
    TopLeft = 1,
    TopRight = 2,
    BottomLeft = 3,
    BottomRight = 4,
    Left = 5,
    Right = 6,
    Whole = 7,
    Bottom = 8,
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MouseMovePos)
