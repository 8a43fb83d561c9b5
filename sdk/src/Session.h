#pragma once

#include "CMatrixSDK.h"
#include "CapacityLimits.h"
#include "Connection.h"
#include "MediaLink.h"
#include "UpdateNotifier.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>
#include <vector>

namespace cmatrix::sdk {

// Everything behind one CMHANDLE: the control connection, the status callback, the
// per-call timeout, the last login refusal and the lists handed out to the caller.
class Session : public std::enable_shared_from_this<Session> {
public:
    explicit Session(CMHANDLE handle)
        : handle_(handle)
    {
    }
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    CMHANDLE handle() const { return handle_; }

    void setCallback(CMatrix_StatusCallback callback, void* user);
    void setTimeout(int timeoutMs) { timeoutMs_.store(timeoutMs); }
    void setTiming(Connection::Timing timing);
    // Where firmware progress pushed by the decoder goes (null: nowhere).
    void setUpdateCallback(CMatrix_UpdateCallback callback, void* user) { updates_.setCallback(callback, user); }

    // Connects and logs in within timeoutMs, replacing an earlier connection silently.
    int connect(
        const std::string& ip, uint16_t port, const std::string& user, const std::string& password, int timeoutMs);
    // The JSON text of the last refused login; false when the last connect was not refused.
    bool loginError(std::string& text) const;
    // Closes on purpose: no status callback.
    void disconnect();
    // Disconnects for good; the handle is being destroyed.
    void shutdown();

    bool isShutDown() const;
    // When a call started now must be over: the handle's timeout from now.
    Clock::time_point deadline() const { return Clock::now() + std::chrono::milliseconds(timeoutMs_.load()); }

    // Media connections (see MediaLink) belong to one control connection: each connect
    // and disconnect closes them and starts a new generation.
    uint64_t mediaGeneration() const;
    // Opens and logs in a media connection with the credentials of the last connect,
    // if the handle is still in that generation.
    int openMedia(uint64_t generation, std::shared_ptr<Connection>& out, Clock::time_point until);
    // The connection CMatrix_DisplayFrame sends on.
    MediaLink& displayLink() { return display_; }

    // One request on the control connection within the handle's timeout; an answer longer
    // than maxAnswer bytes is refused unread.
    template <class Request, class Answer>
    int call(wire::MessageType type, const Request& request, Answer& answer,
        size_t maxAnswer = wire::WireHeader::kMaxPayload)
    {
        const std::shared_ptr<Connection> connection = control();
        if (!connection)
            return CMATRIX_ERR_FAILED;
        const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs_.load());
        return connection->call(type, request, answer, deadline, maxAnswer);
    }

    // What the connected decoder declared it can hold (the ceilings before any login).
    MatrixCapacity_t capacity() const;
    // A list request whose answer may hold at most limit records of T: a longer one is refused.
    template <class Request, class Answer, class T>
    int callList(wire::MessageType type, const Request& request, Answer& answer, const std::vector<T>& list, int limit)
    {
        const int rc = call(type, request, answer, CapacityLimits::listBytes(limit, sizeof(T)));
        if (rc == CMATRIX_OK && list.size() > size_t(limit))
            return CMATRIX_ERR_TOO_LARGE;
        return rc;
    }

    // Copies items into a malloc'ed array the caller releases with release(); returns the count.
    template <class T> int handOut(const std::vector<T>& items, T** out)
    {
        *out = static_cast<T*>(handOutBytes(items.data(), items.size() * sizeof(T)));
        if (!items.empty() && !*out)
            return CMATRIX_ERR_NO_MEMORY;
        return int(items.size());
    }
    // Frees a list this handle handed out; anything else is refused, so a double free is harmless.
    int release(void* list);

private:
    std::shared_ptr<Connection> control() const;
    void* handOutBytes(const void* data, size_t size);
    int login(Connection& connection, const std::string& user, const std::string& password, Clock::time_point deadline,
        MatrixCapacity_t& capacity);
    // The capacity an accepted login's answer declares; false when the answer is malformed.
    static bool acceptedCapacity(const wire::Message& answer, MatrixCapacity_t& capacity);
    void connectionLost(const Connection* connection);
    void closeMedia();
    void pushed(const wire::Message& message);

    const CMHANDLE handle_;
    std::atomic<int> timeoutMs_ { 5000 };
    std::mutex connectMutex_; // one connect at a time

    mutable std::mutex mutex_; // guards everything below
    std::shared_ptr<Connection> control_;
    std::shared_ptr<Connection> connecting_; // logging in, not yet usable
    bool shutDown_ = false;
    CMatrix_StatusCallback callback_ = nullptr;
    void* callbackUser_ = nullptr;
    std::string loginError_;
    Connection::Timing timing_;
    MatrixCapacity_t capacity_ = CapacityLimits::ceiling();

    // Also guarded by mutex_: where media connections go, and those open now.
    struct Credentials {
        std::string ip;
        uint16_t port = 0;
        std::string user, password;
    };
    Credentials credentials_;
    uint64_t mediaGeneration_ = 0;
    std::vector<std::weak_ptr<Connection>> media_;
    MediaLink display_;

    std::mutex listMutex_;
    std::unordered_set<void*> lists_;

    UpdateNotifier updates_;
};

} // namespace cmatrix::sdk
