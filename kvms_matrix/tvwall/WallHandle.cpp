#include "WallHandle.h"

#include "MatrixSdkWorker.h"

namespace kvms_matrix {

bool WallHandle::usable(MatrixSdkWorker& worker, const QSharedPointer<CSharedHandle>& handle)
{
    return handle && handle->handle() && worker.getHandleByIp(handle->ip()) == handle;
}

} // namespace kvms_matrix
