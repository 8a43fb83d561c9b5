#include "TvWallJson.h"

#include "ConfigFile.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace kvms_matrix {

namespace {

const QString kList = QStringLiteral("matrixList");
const QString kName = QStringLiteral("name");
const QString kMainIp = QStringLiteral("main_decoder_ip");
const QString kRow = QStringLiteral("row");
const QString kColumn = QStringLiteral("column");
const QString kMainType = QStringLiteral("main_type");
const QString kSecond = QStringLiteral("second_ip");
const QString kIp = QStringLiteral("ip");
const QString kLocation = QStringLiteral("location");
const QString kType = QStringLiteral("type");

} // namespace

QJsonObject TvWallJson::toJson(const TvWallManagement& wall)
{
    QJsonArray second;
    for (const MatrixInfo& decoder : wall.second_ip) {
        QJsonObject entry;
        entry.insert(kIp, decoder.ip);
        entry.insert(kLocation, decoder.location);
        entry.insert(kType, decoder.type);
        second.append(entry);
    }
    QJsonObject object;
    object.insert(kName, wall.name);
    object.insert(kMainIp, wall.main_decoder_ip);
    object.insert(kRow, wall.row);
    object.insert(kColumn, wall.column);
    object.insert(kMainType, wall.main_type);
    object.insert(kSecond, second);
    return object;
}

TvWallManagement TvWallJson::fromJson(const QJsonObject& object)
{
    TvWallManagement wall;
    wall.name = object.value(kName).toString();
    wall.main_decoder_ip = object.value(kMainIp).toString();
    wall.row = object.value(kRow).toInt();
    wall.column = object.value(kColumn).toInt();
    wall.main_type = object.value(kMainType).toInt();
    const QJsonArray second = object.value(kSecond).toArray();
    for (const QJsonValue& element : second) {
        if (wall.second_ip.size() >= ConfigFile::kMaxSecondaries)
            break;
        const QJsonObject entry = element.toObject();
        MatrixInfo decoder;
        decoder.ip = entry.value(kIp).toString();
        decoder.location = entry.value(kLocation).toInt();
        decoder.type = entry.value(kType).toInt();
        wall.second_ip.append(decoder);
    }
    return wall;
}

void TvWallJson::writeList(const QString& fileName, const QList<TvWallManagement>& list)
{
    QJsonArray array;
    for (const TvWallManagement& wall : list)
        array.append(toJson(wall));
    QJsonObject top;
    top.insert(kList, array);
    ConfigFile::replace(fileName, QJsonDocument(top).toJson(QJsonDocument::Compact));
}

QMap<QString, TvWallManagement> TvWallJson::readList(const QString& fileName)
{
    QMap<QString, TvWallManagement> result;
    QByteArray content;
    if (!ConfigFile::readAll(fileName, content))
        return result;
    const QJsonArray array = QJsonDocument::fromJson(content).object().value(kList).toArray();
    for (const QJsonValue& element : array) {
        if (result.size() >= ConfigFile::kMaxEntries)
            break;
        const TvWallManagement wall = fromJson(element.toObject());
        result.insert(wall.name, wall);
    }
    return result;
}

} // namespace kvms_matrix
