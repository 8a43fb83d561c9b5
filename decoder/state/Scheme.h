#pragma once

#include "CMatrixSDK.h"

#include <vector>

namespace vdec {

// A display-in-turn scheme and its sources, records as the client sent them
// (each source's index is the decoder's).
struct Scheme {
    SchemeInfo_t info {};
    std::vector<SchemeDevice_t> devices; // in showing order
};

} // namespace vdec
