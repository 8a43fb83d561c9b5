#pragma once

namespace kvms_matrix {

class MatrixSdkWorker;

// What the firmware-update callback gets as its user pointer: the worker and the position of
// the decoder in its update batch.
struct UpdateContext {
    MatrixSdkWorker* worker = nullptr;
    int index = 0;
};

} // namespace kvms_matrix
