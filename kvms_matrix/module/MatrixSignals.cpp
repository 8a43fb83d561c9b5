#include "MatrixSignals.h"

namespace kvms_matrix {

MatrixSignals::MatrixSignals(QObject* parent)
    : QObject(parent)
{
}

} // namespace kvms_matrix
