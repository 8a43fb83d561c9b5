#pragma once

namespace kvms_matrix {

// Decoder type as the SDK and the files know it: a plain integer (-1 = unknown), so values read
// from the JSON and INI files and from task parameters pass through without conversion.
using MatrixType = int;

constexpr MatrixType kUnknownMatrixType = -1;

} // namespace kvms_matrix
