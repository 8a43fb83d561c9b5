#pragma once

#include "HostileAnswers.h"
#include "MessageType.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace vdec {

// How an answer can be spoiled on purpose.
enum class Garbage {
    BadMagic, // header with a wrong magic: the client must close
    BadVersion, // header with version 2: the client must close
    Oversized, // header announcing more than the protocol allows, no payload
    MalformedPayload, // right header, payload one byte short (or one too many when empty)
    WrongRequestId, // a well-formed answer to a request nobody made
};

// Faults that tests switch on to see how a client copes. Thread-safe; one-shot
// faults are consumed by exactly one request, whichever connection it came on.
// Heartbeats and stray answers from the client never trigger or consume a fault.
class FaultPlan {
public:
    using Type = cmatrix::wire::MessageType;

    // The next `times` requests of this type are answered with `code`, without being
    // carried out (times < 0: until cleared).
    void failNext(Type type, int32_t code, int times = 1);
    // Requests of this type are swallowed: neither carried out nor answered.
    void neverAnswer(Type type, bool on = true);
    // Requests of this type are carried out at once but answered delayMs later (0: off).
    void answerLate(Type type, int delayMs);
    // The connection that receives the (n+1)-th request from now is closed before
    // handling it (n < 0: off). Requests are counted over all connections.
    void dropConnectionAfter(int n);
    // The next request of this type is not carried out but answered with status 0 and this
    // payload (the encoded answer body), as a unit in an odd state would answer.
    void answerNextWith(Type type, std::vector<uint8_t> payload);
    // The next answer (of this type, or of any type) is replaced by garbage.
    void garbleNextAnswer(Garbage kind, std::optional<Type> type = std::nullopt);
    // The next `answers` requests that read the wall (grid, windows, divisions, sources, scenes,
    // schemes, screens, files, banner) are not carried out but answered with extreme, well-formed
    // bodies picked at random from `seed`.
    void answerHostile(uint32_t seed, int answers);
    int hostileAnswersLeft() const;
    // The decoder stops sending heartbeats, as a hung unit would.
    void muteHeartbeats(bool on);
    void clear();

    struct Decision {
        bool close = false;
        bool swallow = false;
        std::optional<int32_t> failWith;
        std::optional<std::vector<uint8_t>> payload;
        std::optional<Garbage> garbage;
        int delayMs = 0;
    };
    // Called once per received request, in arrival order.
    Decision onRequest(Type type);
    bool heartbeatsMuted() const;

    // The bytes sent instead of `answer` (a whole encoded message).
    static std::vector<uint8_t> garble(Garbage kind, const std::vector<uint8_t>& answer);

private:
    mutable std::mutex mutex_;
    std::map<Type, std::pair<int32_t, int>> failures_; // code, times left
    std::set<Type> swallowed_;
    std::map<Type, std::vector<uint8_t>> payloads_;
    std::map<Type, int> delays_;
    int dropAfter_ = -1;
    std::optional<std::pair<Garbage, std::optional<Type>>> garbage_;
    bool heartbeatsMuted_ = false;
    std::optional<HostileAnswers> hostile_;
    int hostileLeft_ = 0;
};

} // namespace vdec
