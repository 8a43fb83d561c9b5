#pragma once

#include "CMatrixSDK.h"

#include <cstddef>

namespace cmatrix::sdk {

// How much of a list the SDK takes from a decoder. A decoder declares its capacity at login;
// what it declares is held to ceilings of the SDK's own, so a decoder that declares too much
// (or lies in its lists) cannot make a caller hold more than a few MiB.
class CapacityLimits {
public:
    // The ceilings, also what a decoder that declares nothing is held to.
    static MatrixCapacity_t ceiling();
    // The declared capacity, each count between 1 and its ceiling.
    static MatrixCapacity_t clamp(const MatrixCapacity_t& declared);
    // The longest answer payload that can carry `count` records of `recordSize` bytes, with
    // room for the few fixed fields beside the list.
    static size_t listBytes(int count, size_t recordSize);
};

} // namespace cmatrix::sdk
