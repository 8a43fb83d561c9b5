#pragma once

#include "MatrixInfo.h"
#include "TvWallManagement.h"

#include <QList>
#include <QString>

namespace kvms_matrix {

// The decoders and the TV wall the operator configured, read from and written to the module's
// files ("decoderConfig.json", "tvWallConfig.json", "matrixConfig.json", the "info" group of
// "tvWallConfig.ini") through the worker's file functions.
class WallConfigStore {
public:
    // Bounds on what a hand-edited file may ask the page to build.
    static constexpr int kMaxDecoders = 64;
    static constexpr int kMaxGrid = 8;

    static QList<MatrixInfo> decoders();
    // The configured wall (the first one listed), or a wall with an empty main address.
    static TvWallManagement wall();
    // Whose wall the page shows: the wall's main decoder if configured, else the decoder last
    // logged in to, else the first one.
    static QString mainDecoderIp(const QList<MatrixInfo>& decoders);

    // Writes the decoders (and the known-decoder list), the wall, and the login of its main
    // decoder.
    static void save(const QList<MatrixInfo>& decoders, const TvWallManagement& wall);
    static void saveLogin(const MatrixInfo& decoder);

    // The screens of a wall of rows x cols cells shared by `decoders` (the main one first):
    // each decoder takes the next block of cells, screen ids "<address>-<n>".
    static QList<MatrixInfo> layoutScreens(int rows, int cols, const QList<MatrixInfo>& decoders);
};

} // namespace kvms_matrix
