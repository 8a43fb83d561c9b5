// Configuration files of MatrixSdkWorker. The files are named bare, so they lie in the client's
// working directory. They take no lock: callers do not write the same file from two threads.
#include "MatrixSdkWorker.h"

#include "ConfigFile.h"
#include "MatrixInfoJson.h"
#include "TvWallJson.h"

namespace kvms_matrix {

void MatrixSdkWorker::addAllOneMatrixToJson(const QList<MatrixInfo>& list)
{
    MatrixInfoJson::writeList(ConfigFile::kMatrixConfig, list, MatrixInfoJson::WithoutScreenState);
}

QMap<QString, MatrixInfo> MatrixSdkWorker::getAllOneMatrixFromJson()
{
    return MatrixInfoJson::readList(ConfigFile::kMatrixConfig, MatrixInfoJson::WithoutScreenState);
}

void MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(const MatrixInfo& info)
{
    MatrixInfoJson::writeLastConnected(ConfigFile::kMatrixConfig, info);
}

MatrixInfo MatrixSdkWorker::readMatrixLastConnectedInfoFromJson()
{
    return MatrixInfoJson::readLastConnected(ConfigFile::kMatrixConfig);
}

void MatrixSdkWorker::addDecoderToJson(const QList<MatrixInfo>& list)
{
    MatrixInfoJson::writeList(ConfigFile::kDecoderConfig, list, MatrixInfoJson::WithScreenState);
}

QMap<QString, MatrixInfo> MatrixSdkWorker::getDecoderFromJson()
{
    return MatrixInfoJson::readList(ConfigFile::kDecoderConfig, MatrixInfoJson::WithScreenState);
}

void MatrixSdkWorker::addMatrixToJson(const QList<TvWallManagement>& list)
{
    TvWallJson::writeList(ConfigFile::kTvWallConfig, list);
}

QMap<QString, TvWallManagement> MatrixSdkWorker::getMatrixFromJson()
{
    return TvWallJson::readList(ConfigFile::kTvWallConfig);
}

} // namespace kvms_matrix
