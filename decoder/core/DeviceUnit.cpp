#include "DeviceUnit.h"

#include "DecoderSnapshot.h"
#include "state/FirmwareImage.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

namespace vdec {

namespace {

template <size_t N> void put(char (&field)[N], const QString& text)
{
    std::memset(field, 0, N);
    const QByteArray bytes = text.toUtf8().left(int(N) - 1);
    std::memcpy(field, bytes.constData(), size_t(bytes.size()));
}

// Parts of the state a configuration import leaves as they are: who may log in,
// what the unit is and runs, where it is on the network, and its history.
const char* const kKeptOnImport[]
    = { "format", "deviceId", "activated", "accounts", "firmwareVersion", "network", "operations" };

// The model's number says how large a unit is: VD-1600 drives 16 outputs. Classes
// 1 and 2 are small units, 4 a large one.
void modelOf(const QString& model, int32_t& modelClass, int32_t& modelSub)
{
    const int number = QRegularExpression(QStringLiteral("(\\d+)")).match(model).captured(1).left(6).toInt();
    modelClass = number >= 3200 ? 4 : number >= 1600 ? 2 : 1;
    modelSub = number / 100;
}

bool isVersionText(const QString& version)
{
    const QByteArray bytes = version.toLatin1();
    return !bytes.isEmpty() && bytes.size() <= 31 && QString::fromLatin1(bytes) == version
        && std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

} // namespace

DeviceUnit::DeviceUnit(const DecoderConfig& config, std::mutex& stateLock, Hooks hooks)
    : config_(config)
    , stateLock_(stateLock)
    , hooks_(std::move(hooks))
    , firmwareVersion_(config.firmwareVersion)
    , network_(config.address)
{
}

DeviceUnit::~DeviceUnit()
{
    firmware_.stop();
}

void DeviceUnit::setPorts(quint16 control, quint16 discovery, quint16 http)
{
    controlPort_ = control;
    httpPort_ = http;
    runLog_.add(QStringLiteral("listening on %1 tcp=%2 udp=%3").arg(config_.address).arg(control).arg(discovery));
}

DeviceInfo_t DeviceUnit::discoveryAnswer(bool activated) const
{
    DeviceInfo_t d {};
    d.devType = 9;
    put(d.devId, config_.deviceId);
    modelOf(config_.model, d.modelClass, d.modelSub);
    put(d.name, firmwareVersion_);
    put(d.ip, network_.ipv4());
    d.port = controlPort_;
    d.flag = activated ? 1 : 0;
    return d;
}

DeviceNetworkCfg_t DeviceUnit::networkRecord() const
{
    DeviceNetworkCfg_t r = network_.record(config_.deviceId, config_.model, controlPort_);
    r.httpPort = httpPort_;
    return r;
}

bool DeviceUnit::isAddressed(const std::string& ip) const
{
    const QString address = QString::fromStdString(ip);
    return !address.isEmpty() && (address == network_.ipv4() || address == config_.address);
}

void DeviceUnit::identify(int32_t location, int32_t seconds)
{
    identifyLocation_ = location;
    identifyUntil_ = seconds > 0 ? QDateTime::currentDateTimeUtc().addSecs(seconds) : QDateTime();
}

void DeviceUnit::record(int32_t type, const QString& user, const QString& text)
{
    operations_.add(uint32_t(QDateTime::currentSecsSinceEpoch()), type, user, text);
}

int32_t DeviceUnit::upgrade(const std::vector<uint8_t>& image, std::shared_ptr<Outbox> progress)
{
    if (firmware_.running())
        return CMATRIX_ERR_BUSY;
    std::string version;
    if (const int32_t rc = FirmwareImage::parse(image, version)) {
        runLog_.add(QStringLiteral("firmware image refused (%1 bytes)").arg(image.size()));
        return rc;
    }
    if (!firmware_.start(
            version, std::move(progress), config_.firmwareStepMs, [this](const std::string& v) { install(v); }))
        return CMATRIX_ERR_BUSY;
    runLog_.add(QStringLiteral("firmware upgrade to %1 started").arg(QString::fromStdString(version)));
    return CMATRIX_OK;
}

void DeviceUnit::install(const std::string& version)
{
    const QString text = QString::fromStdString(version);
    {
        std::lock_guard<std::mutex> lock(stateLock_);
        firmwareVersion_ = text;
        record(LOG_TYPE_SYSTEM, QString(), QStringLiteral("Firmware upgraded to %1").arg(text));
        hooks_.save();
    }
    runLog_.add(QStringLiteral("firmware %1 installed").arg(text));
}

int32_t DeviceUnit::factoryReset()
{
    if (firmware_.running())
        return CMATRIX_ERR_BUSY;
    hooks_.resetOthers();
    network_ = NetworkSettings(config_.address);
    resolution_ = ResolutionTable();
    identify(0, 0);
    rebootRequested_ = true;
    runLog_.add(QStringLiteral("factory reset; restarting"));
    return CMATRIX_OK;
}

bool DeviceUnit::takeRebootRequest()
{
    return rebootRequested_.exchange(false);
}

QByteArray DeviceUnit::exportConfig() const
{
    QJsonObject state = hooks_.state();
    state.remove(QStringLiteral("accounts")); // password hashes never leave the unit
    return QJsonDocument(state).toJson(QJsonDocument::Indented);
}

int32_t DeviceUnit::importConfig(const QByteArray& file)
{
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(file, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return CMATRIX_ERR_CONFIG;
    const QJsonObject current = hooks_.state();
    QJsonObject merged = document.object();
    if (merged.value("format") != current.value("format"))
        return CMATRIX_ERR_CONFIG; // written by another kind of unit or another version
    for (const char* key : kKeptOnImport) {
        const QString name = QString::fromLatin1(key);
        if (current.contains(name))
            merged.insert(name, current.value(name));
        else
            merged.remove(name);
    }
    return hooks_.apply(merged) ? CMATRIX_OK : CMATRIX_ERR_CONFIG;
}

void DeviceUnit::stopJobs()
{
    firmware_.stop();
}

void DeviceUnit::fill(DecoderSnapshot& s) const
{
    s.firmwareVersion = firmwareVersion_;
    s.network = networkRecord();
    s.resolution = resolution_.common();
    s.upgrading = firmware_.running();
    s.identifyUntil = identifyUntil_;
    s.identifyOn = identifyUntil_.isValid() && QDateTime::currentDateTimeUtc() < identifyUntil_;
    s.identifyLocation = identifyLocation_;
}

void DeviceUnit::toJson(QJsonObject& state) const
{
    state.insert("firmwareVersion", firmwareVersion_);
    state.insert("network", network_.toJson());
    state.insert("resolution", resolution_.toJson());
    state.insert("operations", operations_.toJson());
}

bool DeviceUnit::fromJson(const QJsonObject& o)
{
    QString version = config_.firmwareVersion;
    NetworkSettings network(config_.address);
    ResolutionTable resolution;
    OperationLog operations;
    if (o.contains("firmwareVersion")) {
        version = o.value("firmwareVersion").toString();
        if (!isVersionText(version))
            return false;
    }
    if ((o.contains("network") && !network.fromJson(o.value("network").toObject()))
        || (o.contains("resolution") && !resolution.fromJson(o.value("resolution").toObject()))
        || (o.contains("operations") && !operations.fromJson(o.value("operations"))))
        return false;
    firmwareVersion_ = version;
    network_ = network;
    resolution_ = resolution;
    operations_ = std::move(operations);
    return true;
}

} // namespace vdec
