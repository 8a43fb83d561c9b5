// The wall as one picture, for a mimic of it on the operator's screen.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

namespace {

constexpr int kMinSide = 16;
constexpr int kMaxWidth = 3840, kMaxHeight = 2160;

} // namespace

extern "C" {

int CMatrix_GetWallSnapshot(CMHANDLE handle, int width, int height, unsigned char** jpeg)
{
    return withSession(handle, [&](Session& session) {
        if (!jpeg)
            return CMATRIX_ERR_INVALID_PARAM;
        *jpeg = nullptr;
        if (width < kMinSide || height < kMinSide || width > kMaxWidth || height > kMaxHeight)
            return CMATRIX_ERR_INVALID_PARAM;
        WallSnapshotAnswer answer;
        const int rc = session.call(MessageType::WallSnapshot, WallSnapshotRequest { width, height }, answer);
        if (rc != CMATRIX_OK)
            return rc;
        // A JPEG starts with its start-of-image marker; anything else is not handed on.
        if (answer.jpeg.size() < 4 || answer.jpeg[0] != 0xff || answer.jpeg[1] != 0xd8)
            return CMATRIX_ERR_PROTOCOL;
        std::vector<unsigned char>& bytes = answer.jpeg;
        return session.handOut(bytes, jpeg);
    });
}

} // extern "C"
