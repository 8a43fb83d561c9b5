#pragma once

#include "MatrixInfo.h"

#include <QList>
#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// One TV wall: a main decoder and the secondary decoders placed on its grid. Field names follow
// the keys of "tvWallConfig.json".
struct TvWallManagement {
    QString name;
    QString main_decoder_ip;
    int row = 0;
    int column = 0;
    QList<MatrixInfo> second_ip; // secondary decoders; only ip, location and type are kept
    int main_type = 0;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::TvWallManagement)
