#pragma once

#include "DecoderConfig.h"
#include "DecoderSnapshot.h"
#include "protocol/RequestRouter.h"
#include "state/AccountBook.h"
#include "state/StateFile.h"
#include "state/Wall.h"

#include "Message.h"

#include <mutex>
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

    const DecoderConfig& config() const { return config_; }
    FaultPlan& faults() { return faults_; }

private:
    bool restore(const QJsonObject& object, QString* why);
    QJsonObject toJson() const;
    void save();

    const DecoderConfig config_;
    Journal& journal_;
    FaultPlan& faults_;
    RequestRouter router_;

    mutable std::mutex mutex_;
    Wall wall_;
    AccountBook accounts_;
    bool activated_;
    StateFile file_;
};

} // namespace vdec
