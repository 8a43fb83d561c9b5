#pragma once

#include "DecoderConfig.h"
#include "FirmwareJob.h"
#include "state/NetworkSettings.h"
#include "state/OperationLog.h"
#include "state/ResolutionTable.h"
#include "state/RunLog.h"

#include <QDateTime>
#include <QJsonObject>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace vdec {

class Outbox;
struct DecoderSnapshot;

// The unit as a whole, beside what it shows: identity and firmware, network
// settings, output resolution, screen identification, its logs, and the maintenance
// operations that act on all of the decoder's state (firmware upgrade, factory reset,
// configuration export and import). Called with the decoder's state lock held,
// except where a method says otherwise; the hooks reach the rest of the state.
class DeviceUnit {
public:
    struct Hooks {
        std::function<QJsonObject()> state; // the whole state as saved
        std::function<bool(const QJsonObject&)> apply; // validates and restores a whole state, or changes nothing
        std::function<void()> resetOthers; // everything but this unit's own settings back to factory
        std::function<void()> save;
    };

    DeviceUnit(const DecoderConfig& config, std::mutex& stateLock, Hooks hooks);
    ~DeviceUnit(); // abandons an upgrade under way
    DeviceUnit(const DeviceUnit&) = delete;
    DeviceUnit& operator=(const DeviceUnit&) = delete;

    // The ports the unit really listens on, known once it does.
    void setPorts(quint16 control, quint16 discovery, quint16 http);

    const DecoderConfig& config() const { return config_; }
    const QString& firmwareVersion() const { return firmwareVersion_; }
    NetworkSettings& network() { return network_; }
    ResolutionTable& resolution() { return resolution_; }
    OperationLog& operations() { return operations_; }
    RunLog& runLog() { return runLog_; } // thread-safe, no lock needed

    // What the unit answers to a probe and to a request for its network record.
    DeviceInfo_t discoveryAnswer(bool activated) const;
    DeviceNetworkCfg_t networkRecord() const;
    // Whether a request naming this address means this unit: its configured address,
    // or the one it really listens on.
    bool isAddressed(const std::string& ip) const;

    // Screen numbers shown for `seconds` from now (0: hidden).
    void identify(int32_t location, int32_t seconds);

    // Adds a log entry stamped now.
    void record(int32_t type, const QString& user, const QString& text);

    int32_t upgrade(const std::vector<uint8_t>& image, std::shared_ptr<Outbox> progress);
    int32_t factoryReset();
    // True once after a factory reset: the unit then closes every connection, as a
    // reboot would. Asked without the lock, after the reset has been answered.
    bool takeRebootRequest();
    QByteArray exportConfig() const;
    int32_t importConfig(const QByteArray& file);

    // Without the lock held: the upgrade thread takes it to install.
    void stopJobs();

    void fill(DecoderSnapshot& snapshot) const;
    void toJson(QJsonObject& state) const;
    // Reads this unit's part of a state; missing parts keep their factory values.
    // False, and nothing changed, when a part is present but unusable.
    bool fromJson(const QJsonObject& state);

private:
    void install(const std::string& version);

    const DecoderConfig config_;
    std::mutex& stateLock_;
    const Hooks hooks_;

    quint16 controlPort_ = 0;
    quint16 httpPort_ = 0;
    QString firmwareVersion_;
    NetworkSettings network_;
    ResolutionTable resolution_;
    OperationLog operations_;
    RunLog runLog_;
    QDateTime identifyUntil_; // UTC; invalid: not shown
    int32_t identifyLocation_ = 0;
    std::atomic<bool> rebootRequested_ { false };
    FirmwareJob firmware_; // last: its thread stops before the rest goes
};

} // namespace vdec
