#include "MatrixInfoJson.h"

#include "ConfigFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace kvms_matrix {

namespace {

const QString kList = QStringLiteral("matrixList");
const QString kLastConnected = QStringLiteral("lastConnectedMatrixInfo");

} // namespace

QJsonObject MatrixInfoJson::toJson(const MatrixInfo& info, Keys keys)
{
    QJsonObject object;
    object.insert(QStringLiteral("type"), info.type);
    object.insert(QStringLiteral("id"), info.id);
    object.insert(QStringLiteral("ip"), info.ip);
    object.insert(QStringLiteral("port"), info.port);
    object.insert(QStringLiteral("nvr_port"), info.nvr_port);
    object.insert(QStringLiteral("manager_port"), info.manager_port);
    object.insert(QStringLiteral("username"), info.username);
    object.insert(QStringLiteral("password"), info.password);
    object.insert(QStringLiteral("status"), info.status);
    if (keys == WithScreenState) {
        object.insert(QStringLiteral("screenCnt"), info.screenCnt);
        object.insert(QStringLiteral("connect_state"), info.connect_state);
    }
    object.insert(QStringLiteral("version"), info.version);
    return object;
}

void MatrixInfoJson::fromJson(const QJsonObject& object, MatrixInfo& info, Keys keys)
{
    info.type = object.value(QStringLiteral("type")).toInt();
    info.id = object.value(QStringLiteral("id")).toString();
    info.ip = object.value(QStringLiteral("ip")).toString();
    info.port = object.value(QStringLiteral("port")).toInt();
    info.nvr_port = object.value(QStringLiteral("nvr_port")).toInt();
    info.manager_port = object.value(QStringLiteral("manager_port")).toInt();
    info.username = object.value(QStringLiteral("username")).toString();
    info.password = object.value(QStringLiteral("password")).toString();
    info.status = object.value(QStringLiteral("status")).toInt();
    if (keys == WithScreenState) {
        info.screenCnt = object.value(QStringLiteral("screenCnt")).toInt();
        info.connect_state = object.value(QStringLiteral("connect_state")).toInt();
    }
    info.version = object.value(QStringLiteral("version")).toString();
}

void MatrixInfoJson::writeList(const QString& fileName, const QList<MatrixInfo>& list, Keys keys)
{
    QJsonArray array;
    for (const MatrixInfo& info : list)
        array.append(toJson(info, keys));
    // A new top-level object: any other member of the file (the last connected decoder) is dropped.
    QJsonObject top;
    top.insert(kList, array);
    ConfigFile::replace(fileName, QJsonDocument(top).toJson(QJsonDocument::Compact));
}

QMap<QString, MatrixInfo> MatrixInfoJson::readList(const QString& fileName, Keys keys)
{
    QMap<QString, MatrixInfo> result;
    QByteArray content;
    if (!ConfigFile::readAll(fileName, content))
        return result;
    const QJsonArray array = QJsonDocument::fromJson(content).object().value(kList).toArray();
    for (const QJsonValue& element : array) {
        if (result.size() >= ConfigFile::kMaxEntries)
            break;
        MatrixInfo info;
        fromJson(element.toObject(), info, keys);
        result.insert(info.ip, info);
    }
    return result;
}

void MatrixInfoJson::writeLastConnected(const QString& fileName, const MatrixInfo& info)
{
    ConfigFile::createOwnerOnly(fileName);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadWrite))
        return;
    QJsonObject top = QJsonDocument::fromJson(file.read(qMin(file.size(), qint64(ConfigFile::kMaxFileBytes)))).object();
    top.insert(kLastConnected, toJson(info, WithoutScreenState));
    // No truncation: the old tail survives a shorter text. Readers then see unparsable JSON and
    // fall back to empty results until the next list write rewrites the file.
    file.seek(0);
    file.write(QJsonDocument(top).toJson(QJsonDocument::Compact));
    file.flush();
    file.close();
}

MatrixInfo MatrixInfoJson::readLastConnected(const QString& fileName)
{
    MatrixInfo info;
    QByteArray content;
    if (!ConfigFile::readAll(fileName, content))
        return info;
    fromJson(QJsonDocument::fromJson(content).object().value(kLastConnected).toObject(), info, WithoutScreenState);
    return info;
}

} // namespace kvms_matrix
