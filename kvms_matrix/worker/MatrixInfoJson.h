#pragma once

#include "MatrixInfo.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace kvms_matrix {

// Decoder records in the JSON files: "matrixConfig.json" holds ten keys per decoder,
// "decoderConfig.json" adds "screenCnt" and "connect_state" (the screen state).
class MatrixInfoJson {
public:
    enum Keys { WithoutScreenState, WithScreenState };

    static QJsonObject toJson(const MatrixInfo& info, Keys keys);
    // Sets the fields of `keys` from the object; a missing or mistyped key gives 0 or "".
    static void fromJson(const QJsonObject& object, MatrixInfo& info, Keys keys);

    // {"matrixList":[...]}, written over whatever the file held.
    static void writeList(const QString& fileName, const QList<MatrixInfo>& list, Keys keys);
    // The "matrixList" decoders keyed by IP; a later duplicate IP replaces an earlier one.
    static QMap<QString, MatrixInfo> readList(const QString& fileName, Keys keys);

    // Sets "lastConnectedMatrixInfo", keeping the file's other members. Writes over the old
    // text from the start without truncating it first, so a shorter text leaves the old tail.
    static void writeLastConnected(const QString& fileName, const MatrixInfo& info);
    static MatrixInfo readLastConnected(const QString& fileName);
};

} // namespace kvms_matrix
