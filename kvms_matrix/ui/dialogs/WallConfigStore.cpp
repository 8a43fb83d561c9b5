#include "WallConfigStore.h"

#include "MatrixSdkWorker.h"
#include "TvWallIni.h"

#include <QtGlobal>

namespace kvms_matrix {

QList<MatrixInfo> WallConfigStore::decoders()
{
    return MatrixSdkWorker::getDecoderFromJson().values().mid(0, kMaxDecoders);
}

TvWallManagement WallConfigStore::wall()
{
    const QMap<QString, TvWallManagement> walls = MatrixSdkWorker::getMatrixFromJson();
    return walls.isEmpty() ? TvWallManagement() : walls.first();
}

QString WallConfigStore::mainDecoderIp(const QList<MatrixInfo>& decoders)
{
    const auto listed = [&decoders](const QString& ip) {
        for (const MatrixInfo& d : decoders)
            if (!ip.isEmpty() && d.ip == ip)
                return true;
        return false;
    };
    const QString wallMain = wall().main_decoder_ip;
    if (listed(wallMain))
        return wallMain;
    const QString lastLogin = TvWallIni::readLogin().ip;
    if (listed(lastLogin))
        return lastLogin;
    return decoders.isEmpty() ? QString() : decoders.first().ip;
}

void WallConfigStore::save(const QList<MatrixInfo>& decoders, const TvWallManagement& wall)
{
    MatrixSdkWorker::addDecoderToJson(decoders);
    MatrixSdkWorker::addAllOneMatrixToJson(decoders);
    MatrixSdkWorker::addMatrixToJson({ wall });
    for (const MatrixInfo& d : decoders)
        if (d.ip == wall.main_decoder_ip)
            saveLogin(d);
}

void WallConfigStore::saveLogin(const MatrixInfo& decoder)
{
    TvWallIni::Login login;
    login.type = decoder.type;
    login.ip = decoder.ip;
    login.port = decoder.manager_port;
    login.username = decoder.username;
    login.password = decoder.password;
    TvWallIni::writeLogin(login);
}

QList<MatrixInfo> WallConfigStore::layoutScreens(int rows, int cols, const QList<MatrixInfo>& decoders)
{
    QList<MatrixInfo> entries;
    const int cells = qBound(1, rows, kMaxGrid) * qBound(1, cols, kMaxGrid);
    const int count = qMin(decoders.size(), cells);
    if (count == 0)
        return entries;
    const int perDecoder = (cells + count - 1) / count;
    for (int k = 0; k < count; ++k) {
        MatrixInfo entry = decoders.at(k);
        entry.screenList.clear();
        entry.location = k * perDecoder;
        for (int cell = k * perDecoder, n = 0; cell < qMin(cells, (k + 1) * perDecoder); ++cell, ++n)
            entry.screenList.append({ entry.ip + QStringLiteral("-%1").arg(n + 1), n, 0, cell });
        entries.append(entry);
    }
    return entries;
}

} // namespace kvms_matrix
