// MatrixSdkWorker: finding decoders, reading and changing their network settings, and
// activating a factory-new unit, all through the SDK's discovery functions (UDP, no connection).
//
// A search is three discovery rounds. The SDK calls searchMatrixCallback on its own thread once
// per answer and once at the end of each round; the callback starts the next round itself and
// publishes the found-device map after the third.
#include "MatrixSdkWorker.h"

#include "LocalAddressList.h"
#include "SdkCallLog.h"
#include "SyncLocker.h"
#include "TaskKeys.h"

#include <QNetworkInterface>

#include <cstring>
#include <memory>

namespace kvms_matrix {

namespace {

constexpr int kSearchRounds = 3;
// Passed through to Discovery_Start as they are: one round lasts 32 centiseconds and probes three times.
constexpr int kRoundCentis = 32;
constexpr int kRoundProbes = 3;
constexpr int kGetNetworkTimeoutMs = 1000;
constexpr int kSetupNetworkTimeoutMs = 2000;
constexpr int kActivateTimeoutMs = 2000;

constexpr int kDecoderDeviceType = 9;
// Found decoders are logged in to on this management port.
constexpr int kFoundManagerPort = 28000;
// Model classes 1 and 2 are the small units; everything else is treated as a large one.
constexpr int kSmallUnitKind = 1;
constexpr int kLargeUnitKind = 3;

const char* const kActivationUser = "admin"; // the only account a factory-new unit has

// The bytes of a fixed SDK text field up to its terminator, never past the field.
template <size_t N> QByteArray fieldBytes(const char (&field)[N])
{
    return QByteArray(field, int(strnlen(field, N)));
}

template <size_t N> QString latin1Field(const char (&field)[N])
{
    return QString::fromLatin1(fieldBytes(field));
}

// Copies a text into a zeroed SDK field, cut at the field's width. A text that fills the whole
// field is left without terminator on purpose: the SDK and the decoder refuse such a field,
// where a text cut one byte shorter would be sent as a different, valid-looking address or
// password.
template <size_t N> void putField(char (&field)[N], const QByteArray& text)
{
    std::memcpy(field, text.constData(), qMin(N, size_t(text.size())));
}

int kindOfModelClass(int modelClass)
{
    return modelClass == 1 || modelClass == 2 ? kSmallUnitKind : kLargeUnitKind;
}

MatrixInfo foundDecoder(const DeviceInfo_t& device)
{
    MatrixInfo info;
    info.id = QString::fromLocal8Bit(fieldBytes(device.devId));
    info.ip = latin1Field(device.ip);
    info.port = device.port;
    info.manager_port = kFoundManagerPort;
    info.type = kindOfModelClass(device.modelClass);
    info.screenCnt = device.modelSub; // the model's second value: how many outputs it drives
    info.status = device.flag; // 1 once the unit is activated
    info.version = QString::fromLocal8Bit(fieldBytes(device.name));
    return info;
}

QString networkKey(int matrixType, const QString& ip)
{
    return (matrixType == 3 ? QStringLiteral("3~") : QStringLiteral("VM~")) + ip;
}

} // namespace

void MatrixSdkWorker::doSearchMatrix(const WorkerTaskParam& task)
{
    Q_UNUSED(task)
    const int ret = Discovery_Start(kRoundCentis, kRoundProbes, &MatrixSdkWorker::searchMatrixCallback, this);
    SdkCallLog::call("Discovery_Start", ret);
    if (ret != CMATRIX_OK) {
        // No round runs, so no callback will ever publish: end the search here, empty-handed.
        m_searchRound.store(kSearchRounds);
        emit signalSearchMatrixResult(foundMatrixMap());
    }
}

void MatrixSdkWorker::searchMatrixCallback(bool isFinished, const DeviceInfo_t* device, void* user)
{
    if (device) {
        SdkCallLog::line(QStringLiteral("{ funcName = %3 , isFinished = %1 , DeviceInfo = %2 }")
                             .arg(QString::number(int(isFinished)), latin1Field(device->ip),
                                 QStringLiteral("searchMatrixCallback")));
    }
    auto* worker = static_cast<MatrixSdkWorker*>(user);
    if (!worker)
        return;

    // Every decoder answer is kept, also one that comes after the result was published: it is
    // there for the next search's forms to see, as the map is only cleared by a new search.
    if (device && device->devType == kDecoderDeviceType) {
        const MatrixInfo info = foundDecoder(*device);
        SyncLocker lock(&worker->m_deviceMutex);
        worker->m_foundMatrixMap.insert(info.ip, info); // a unit answers every probe: the last answer wins
    }
    if (!isFinished)
        return;

    const int round = worker->m_searchRound.fetch_add(1) + 1;
    if (round < kSearchRounds) {
        const int ret = Discovery_Start(kRoundCentis, kRoundProbes, &MatrixSdkWorker::searchMatrixCallback, user);
        SdkCallLog::call("Discovery_Start", ret);
        if (ret == CMATRIX_OK)
            return;
        // The next round could not start: publish what the rounds so far have found.
        worker->m_searchRound.store(kSearchRounds);
    } else if (round > kSearchRounds) {
        return; // a round of an earlier search, ending after this one has published
    }
    emit worker->signalSearchMatrixResult(worker->foundMatrixMap());
}

QMap<QString, MatrixInfo> MatrixSdkWorker::foundMatrixMap() const
{
    SyncLocker lock(&m_deviceMutex);
    return m_foundMatrixMap;
}

void MatrixSdkWorker::doGetMatrixNetwork(const WorkerTaskParam& task)
{
    const std::unique_ptr<DeviceInfo_t> device(static_cast<DeviceInfo_t*>(task.userData));
    const int type = task.params.value(TaskKeys::kMatrixType).toInt();
    DeviceNetworkCfg_t cfg;
    std::memset(&cfg, 0, sizeof cfg);
    QString formerIp;
    if (device) {
        // The result is not passed on: a record the SDK did not fill stays zero, and the
        // receiver judges it by its content.
        const int ret = Discovery_GetNetworkBC(fieldBytes(device->devId).constData(), &cfg, kGetNetworkTimeoutMs);
        SdkCallLog::call("Discovery_GetNetworkBC", ret);
        formerIp = latin1Field(device->ip);
    }
    emit signalGetMatrixNetworkResult(cfg, formerIp, type);
}

void MatrixSdkWorker::doSetMatrixNetwork(const WorkerTaskParam& task)
{
    const std::unique_ptr<DeviceInfo_t> device(static_cast<DeviceInfo_t*>(task.userData));
    const QString formerIp = task.params.value(TaskKeys::kMatrixIp).toString();
    const QString newIp = task.params.value(TaskKeys::kMatrixNetworkIp).toString();
    const int type = task.params.value(TaskKeys::kMatrixType).toInt();

    DeviceNetworkCfg_t cfg;
    std::memset(&cfg, 0, sizeof cfg);
    putField(cfg.ipv4, newIp.toLatin1());
    putField(cfg.mask, task.params.value(TaskKeys::kMatrixNetworkMask).toString().toLatin1());
    putField(cfg.gateway, task.params.value(TaskKeys::kMatrixNetworkGw).toString().toLatin1());
    putField(cfg.ipv6, task.params.value(TaskKeys::kMatrixNetworkIpV6).toString().toLatin1());
    cfg.prefixV6 = task.params.value(TaskKeys::kMatrixNetworkPrefixV6).toInt();
    putField(cfg.gatewayV6, task.params.value(TaskKeys::kMatrixNetworkGwV6).toString().toLatin1());
    putField(cfg.dns, task.params.value(TaskKeys::kMatrixNetworkDns).toString().toLatin1());

    int ret = CMATRIX_ERR_FAILED;
    if (device) {
        ret = Discovery_SetupNetworkBC(&cfg, fieldBytes(device->devId).constData(),
            fieldBytes(device->userName).constData(), fieldBytes(device->password).constData(), kSetupNetworkTimeoutMs);
        SdkCallLog::call("Discovery_SetupNetworkBC", ret);
    }
    if (ret == CMATRIX_OK) {
        // Moved under the prefixed key of its new address. Search results use bare addresses,
        // so the search's entry under the old address stays beside it: both forms are relied on.
        SyncLocker lock(&m_deviceMutex);
        MatrixInfo moved = m_foundMatrixMap.take(networkKey(type, formerIp));
        moved.ip = newIp;
        m_foundMatrixMap.insert(networkKey(type, newIp), moved);
    }
    emit signalSetMatrixNetworkResult(ret, newIp, formerIp);
}

void MatrixSdkWorker::doActiveDecoder(const WorkerTaskParam& task)
{
    DeviceInfo_t device;
    std::memset(&device, 0, sizeof device);
    // Named by its address only, as the operator picked it from a search.
    putField(device.ip, task.params.value(TaskKeys::kMatrixIp).toString().toLatin1());
    putField(device.userName, QByteArray(kActivationUser));
    putField(device.password, task.params.value(TaskKeys::kUserPassword).toString().toUtf8());
    const int ret = Discovery_ActivateDevice(&device, kActivateTimeoutMs);
    SdkCallLog::call("Discovery_ActivateDevice", ret);
    emit signalActiveDecoderFinished(ret, getErrorInfo(ret));
}

bool MatrixSdkWorker::getIpLocalAddress(QStringList& list)
{
    return LocalAddressList::collect(QNetworkInterface::allInterfaces(), list);
}

} // namespace kvms_matrix
