#pragma once

#include "TvWallManagement.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace kvms_matrix {

// TV walls in "tvWallConfig.json". The map read back is keyed by the wall's name: a wall is what
// the operator names and picks, and two walls may be driven by the same main decoder.
class TvWallJson {
public:
    static QJsonObject toJson(const TvWallManagement& wall);
    static TvWallManagement fromJson(const QJsonObject& object);

    static void writeList(const QString& fileName, const QList<TvWallManagement>& list);
    // A later wall of the same name replaces an earlier one.
    static QMap<QString, TvWallManagement> readList(const QString& fileName);
};

} // namespace kvms_matrix
