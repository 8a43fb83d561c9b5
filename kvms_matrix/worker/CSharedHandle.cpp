#include "CSharedHandle.h"

namespace kvms_matrix {

CSharedHandle::CSharedHandle(CMHANDLE handle, QObject* parent)
    : QObject(parent)
    , m_handle(handle)
{
}

CSharedHandle::~CSharedHandle()
{
    if (m_handle) {
        CMatrix_Destroy(m_handle);
        m_handle = nullptr;
    }
}

} // namespace kvms_matrix
