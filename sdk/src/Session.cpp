#include "Session.h"

#include "Messages.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace cmatrix::sdk {

using wire::MessageType;

Session::~Session()
{
    closeMedia();
    if (control_)
        control_->stop();
    if (connecting_)
        connecting_->stop();
    for (void* list : lists_)
        std::free(list);
}

void Session::setCallback(CMatrix_StatusCallback callback, void* user)
{
    std::lock_guard<std::mutex> lock(mutex_);
    callback_ = callback;
    callbackUser_ = user;
}

void Session::setTiming(Connection::Timing timing)
{
    std::lock_guard<std::mutex> lock(mutex_);
    timing_ = timing;
}

int Session::connect(
    const std::string& ip, uint16_t port, const std::string& user, const std::string& password, int timeoutMs)
{
    // An address that cannot be dialled is refused before the connection it would replace goes.
    if (!Socket::isNumericAddress(ip))
        return CMATRIX_ERR_INVALID_PARAM;
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    std::lock_guard<std::mutex> serial(connectMutex_);
    std::shared_ptr<Connection> previous;
    Connection::Timing timing;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (shutDown_)
            return CMATRIX_ERR_INVALID_HANDLE;
        loginError_.clear();
        previous = std::move(control_);
        timing = timing_;
    }
    if (previous)
        previous->stop();
    closeMedia(); // they belonged to the previous connection

    std::shared_ptr<Connection> connection;
    int rc = Connection::open(ip, port, deadline, timing, connection);
    if (rc != CMATRIX_OK)
        return rc;
    const std::weak_ptr<Session> self = weak_from_this();
    const Connection* raw = connection.get();
    connection->setPushHandler([self](const wire::Message& message) {
        if (const std::shared_ptr<Session> session = self.lock())
            session->pushed(message);
    });
    connection->start([self, raw] {
        if (const std::shared_ptr<Session> session = self.lock())
            session->connectionLost(raw);
    });
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!shutDown_)
            connecting_ = connection;
        else
            rc = CMATRIX_ERR_INVALID_HANDLE;
    }
    MatrixCapacity_t capacity = CapacityLimits::ceiling();
    if (rc == CMATRIX_OK)
        rc = login(*connection, user, password, deadline, capacity);
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (connecting_ == connection)
            connecting_.reset();
        else if (rc == CMATRIX_OK)
            rc = CMATRIX_ERR_DISCONNECTED; // disconnected while logging in
        // Installed only while still open: a loss from now on finds it in place and is
        // reported; a loss before this point ends in the result instead.
        if (rc == CMATRIX_OK && connection->isOpen()) {
            control_ = connection;
            credentials_ = Credentials { ip, port, user, password };
            capacity_ = capacity;
        } else if (rc == CMATRIX_OK) {
            rc = CMATRIX_ERR_DISCONNECTED;
        }
    }
    if (rc != CMATRIX_OK)
        connection->stop();
    return rc;
}

int Session::login(Connection& connection, const std::string& user, const std::string& password,
    Clock::time_point deadline, MatrixCapacity_t& capacity)
{
    const uint32_t id = connection.nextRequestId();
    const wire::LoginRequest request { user, password };
    wire::Message answer;
    const int rc = connection.exchange(
        MessageType::Login, id, wire::Message::encode(uint16_t(MessageType::Login), id, 0, request), deadline, answer);
    if (rc != CMATRIX_OK)
        return rc;
    if (answer.header.status == CMATRIX_OK)
        return acceptedCapacity(answer, capacity) ? CMATRIX_OK : CMATRIX_ERR_PROTOCOL;
    wire::LoginFailure failure;
    if (answer.decode(failure)) {
        std::lock_guard<std::mutex> lock(mutex_);
        loginError_ = std::move(failure.errorJson);
    }
    return Connection::statusResult(answer.header.status);
}

bool Session::acceptedCapacity(const wire::Message& answer, MatrixCapacity_t& capacity)
{
    capacity = CapacityLimits::ceiling();
    if (answer.payload.empty())
        return true; // a unit that does not declare its capacity
    wire::LoginAccepted accepted;
    if (!answer.decode(accepted))
        return false;
    capacity = CapacityLimits::clamp(accepted.capacity);
    return true;
}

MatrixCapacity_t Session::capacity() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return capacity_;
}

bool Session::loginError(std::string& text) const
{
    std::lock_guard<std::mutex> lock(mutex_);
    text = loginError_;
    return !text.empty();
}

void Session::disconnect()
{
    std::shared_ptr<Connection> control;
    std::shared_ptr<Connection> connecting;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        control = std::move(control_);
        connecting = std::move(connecting_);
    }
    if (control) {
        // A courtesy to the decoder; the close says the same if this cannot go out at once.
        control->post(MessageType::Logout, Clock::now() + std::chrono::milliseconds(100));
        control->stop();
    }
    if (connecting)
        connecting->stop();
    closeMedia();
}

void Session::shutdown()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        shutDown_ = true;
    }
    disconnect();
    updates_.stop();
}

void Session::pushed(const wire::Message& message)
{
    wire::UpdateStatusRecord record;
    if (message.header.type == uint16_t(MessageType::FirmwareProgress) && message.decode(record)) {
        record.status.version[sizeof record.status.version - 1] = '\0';
        updates_.post(record.status);
    }
}

bool Session::isShutDown() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return shutDown_;
}

uint64_t Session::mediaGeneration() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return mediaGeneration_;
}

int Session::openMedia(uint64_t generation, std::shared_ptr<Connection>& out, Clock::time_point until)
{
    Credentials credentials;
    Connection::Timing timing;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (shutDown_)
            return CMATRIX_ERR_INVALID_HANDLE;
        if (generation != mediaGeneration_)
            return CMATRIX_ERR_DISCONNECTED;
        if (!control_)
            return CMATRIX_ERR_FAILED; // as any call without a connection
        if (!control_->isOpen())
            return CMATRIX_ERR_DISCONNECTED; // the handle's connection is lost: media go with it
        credentials = credentials_;
        timing = timing_;
    }
    std::shared_ptr<Connection> connection;
    int rc = Connection::open(credentials.ip, credentials.port, until, timing, connection);
    if (rc != CMATRIX_OK)
        return rc;
    connection->start({}); // a lost media connection is not the handle's news
    const uint32_t id = connection->nextRequestId();
    wire::Message answer;
    rc = connection->exchange(MessageType::Login, id,
        wire::Message::encode(
            uint16_t(MessageType::Login), id, 0, wire::LoginRequest { credentials.user, credentials.password }),
        until, answer);
    MatrixCapacity_t ignored {};
    if (rc == CMATRIX_OK && answer.header.status != CMATRIX_OK)
        rc = Connection::statusResult(answer.header.status);
    else if (rc == CMATRIX_OK && !acceptedCapacity(answer, ignored))
        rc = CMATRIX_ERR_PROTOCOL;
    if (rc == CMATRIX_OK) {
        std::lock_guard<std::mutex> lock(mutex_);
        // Closed meanwhile: closeMedia() could not see this one yet.
        if (shutDown_ || generation != mediaGeneration_) {
            rc = CMATRIX_ERR_DISCONNECTED;
        } else {
            media_.erase(std::remove_if(media_.begin(), media_.end(),
                             [](const std::weak_ptr<Connection>& c) { return c.expired(); }),
                media_.end());
            media_.push_back(connection);
        }
    }
    if (rc != CMATRIX_OK) {
        connection->stop();
        return rc;
    }
    out = std::move(connection);
    return CMATRIX_OK;
}

void Session::closeMedia()
{
    std::vector<std::weak_ptr<Connection>> media;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        ++mediaGeneration_;
        media.swap(media_);
    }
    display_.close();
    for (const std::weak_ptr<Connection>& c : media) {
        if (const std::shared_ptr<Connection> connection = c.lock())
            connection->stop();
    }
}

std::shared_ptr<Connection> Session::control() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return control_;
}

void Session::connectionLost(const Connection* connection)
{
    CMatrix_StatusCallback callback = nullptr;
    void* user = nullptr;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        // A connection replaced or closed on purpose is not news to the caller.
        if (shutDown_ || control_.get() != connection)
            return;
        callback = callback_;
        user = callbackUser_;
    }
    if (callback)
        callback(handle_, CMATRIX_EVENT_DISCONNECTED, user);
}

void* Session::handOutBytes(const void* data, size_t size)
{
    if (size == 0)
        return nullptr;
    void* list = std::malloc(size);
    if (!list)
        return nullptr;
    std::memcpy(list, data, size);
    try {
        std::lock_guard<std::mutex> lock(listMutex_);
        lists_.insert(list);
    } catch (...) {
        std::free(list);
        return nullptr;
    }
    return list;
}

int Session::release(void* list)
{
    if (!list)
        return CMATRIX_OK;
    {
        std::lock_guard<std::mutex> lock(listMutex_);
        if (lists_.erase(list) == 0)
            return CMATRIX_ERR_INVALID_PARAM;
    }
    std::free(list);
    return CMATRIX_OK;
}

} // namespace cmatrix::sdk
