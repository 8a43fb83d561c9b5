#pragma once

#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// One screen output of a decoder, as placed on a TV wall. The id carries the owning decoder's
// address up to its first '-', so a screen can be traced back to its decoder.
struct MatrixScreenInfo {
    QString id;
    int outputIndex = 0;
    int outputType = 0;
    int position = 0;
};

inline bool operator==(const MatrixScreenInfo& a, const MatrixScreenInfo& b)
{
    return a.id == b.id && a.outputIndex == b.outputIndex && a.outputType == b.outputType && a.position == b.position;
}

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixScreenInfo)
