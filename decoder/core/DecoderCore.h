#pragma once

#include "DecoderConfig.h"
#include "DecoderSnapshot.h"
#include "DeviceUnit.h"
#include "LoopClock.h"
#include "media/FrameIngest.h"
#include "media/LiveVideo.h"
#include "media/PictureStore.h"
#include "protocol/RequestRouter.h"
#include "state/AccountBook.h"
#include "state/StateFile.h"
#include "state/Wall.h"

#include "Message.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vdec {

class FaultPlan;
class Journal;

// What to do with one received message.
struct Reply {
    enum class Action { None, Send, Close };
    Action action = Action::None;
    std::vector<uint8_t> bytes; // a whole encoded message
    int delayMs = 0;
};

// The decoder's state and the handling of requests, shared by all connections.
// Every request runs under one lock, and a change is saved before it is answered.
class DecoderCore {
public:
    DecoderCore(const DecoderConfig& config, Journal& journal, FaultPlan& faults);

    // Restores the state directory; starts factory-fresh when it holds nothing usable
    // (an unusable file is set aside as state.json.corrupt).
    bool load(QString* error);
    Reply process(Session& session, const cmatrix::wire::Message& message);
    DecoderSnapshot snapshot() const;
    // Stops the decoder's own clock (loops stop turning); for a power-off.
    void halt();

    // One datagram from the discovery port; the answer to send back, if any.
    std::optional<std::vector<uint8_t>> processDatagram(const std::vector<uint8_t>& datagram);
    // The ports the unit listens on, as discovery and network records report them.
    void setPorts(quint16 control, quint16 discovery, quint16 http);
    // Called (without the state lock) when the unit restarts after a factory reset:
    // every connection closes, as on a reboot.
    void setRebootHook(std::function<void()> hook) { rebootHook_ = std::move(hook); }
    // A line in the run log (connections and the like); any thread.
    void noteEvent(const QString& event) { unit_->runLog().add(event); }

    const DecoderConfig& config() const { return config_; }
    FaultPlan& faults() { return faults_; }

private:
    bool restore(const QJsonObject& object, QString* why);
    QJsonObject toJson() const;
    void settle();
    void save();
    RequestContext contextFor(Session& session);
    // Everything but the unit's own settings back to factory: the wall and what it
    // holds, the accounts (the unit is no longer activated). Other state kept by the
    // decoder is reset here too. The state lock is held.
    void resetToFactory();
    bool apply(const QJsonObject& state);
    Outcome wallSnapshot(const Session& session, const cmatrix::wire::Message& message) const;
    void note(const Session& session, const cmatrix::wire::Message& message, const Outcome& outcome);

    const DecoderConfig config_;
    Journal& journal_;
    FaultPlan& faults_;
    RequestRouter router_;

    mutable std::mutex mutex_;
    Wall wall_;
    AccountBook accounts_;
    bool activated_;
    StateFile file_;
    mutable PictureStore pictures_; // own lock: filled outside mutex_, pruned by snapshot()
    mutable FrameIngest frames_;
    LiveVideo video_; // its players feed pictures_; reconciled with wall_ under mutex_
    LoopClock clock_; // after the state it turns, so it stops before that state goes
    std::function<void()> rebootHook_;
    // After the clock: its upgrade thread installs firmware into the state above, so
    // it is stopped first.
    std::unique_ptr<DeviceUnit> unit_;
};

} // namespace vdec
