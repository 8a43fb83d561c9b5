#pragma once

#include "CSharedHandle.h"

#include <QSharedPointer>

namespace kvms_matrix {

class MatrixSdkWorker;

// Whether a task's connection may be used: it must hold an SDK handle and still be the one
// the worker has registered for its decoder, so a connection that was disconnected (or
// replaced by a later login) is refused with -1 instead of reaching the SDK.
class WallHandle {
public:
    static bool usable(MatrixSdkWorker& worker, const QSharedPointer<CSharedHandle>& handle);
};

} // namespace kvms_matrix
