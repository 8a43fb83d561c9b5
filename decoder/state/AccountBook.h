#pragma once

#include <QJsonArray>
#include <QString>

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vdec {

struct AccountState {
    QString user;
    int failedAttempts = 0;
    bool locked = false;
    int secondsUntilUnlock = 0;
};

// Accounts and the lock-out policy. Failed attempts are counted per user name, known
// or not, so that an unknown name answers exactly as a wrong password does.
class AccountBook {
public:
    using Clock = std::chrono::steady_clock;

    struct Verdict {
        int32_t status = 0;
        std::string errorJson; // the LoginFailure text when refused
    };

    AccountBook(int maxFailures, int lockSeconds);

    void setPassword(const QString& user, const QString& password);
    bool hasAccount(const QString& user) const;
    Verdict login(const QString& user, const QString& password, Clock::time_point now);
    std::vector<AccountState> states(Clock::time_point now) const;

    // Accounts only: failures and locks live in memory and end with a restart.
    QJsonArray toJson() const;
    bool fromJson(const QJsonArray& array);

private:
    struct Account {
        QString salt;
        QByteArray hash;
    };
    struct Failures {
        int count = 0;
        Clock::time_point lockedUntil {};
    };
    static constexpr size_t kMaxTracked = 256;

    static QByteArray hashOf(const QString& salt, const QString& password);
    int secondsLeft(const Failures& f, Clock::time_point now) const;
    Failures& failuresOf(const QString& user, Clock::time_point now);

    int maxFailures_;
    int lockSeconds_;
    std::map<QString, Account> accounts_;
    std::map<QString, Failures> failures_;
};

} // namespace vdec
