#include "AccountBook.h"

#include "CMatrixSDK.h"

#include <QCryptographicHash>
#include <QJsonObject>
#include <QRandomGenerator>

#include <algorithm>

namespace vdec {

namespace {

// Written out by hand: clients compare these texts, so the key order is kept as documented.
std::string passwordError(int failed, int allowed, int lockSeconds)
{
    return QStringLiteral(R"({"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":%1,"SUMNUM":%2,"LOCKTIME":%3}})")
        .arg(failed)
        .arg(allowed)
        .arg(lockSeconds)
        .toStdString();
}

std::string lockedError(int secondsLeft)
{
    return QStringLiteral(R"({"ERRCODE":"USERLOCK","PARAM":{"UNLOCKTIME":%1}})").arg(secondsLeft).toStdString();
}

} // namespace

AccountBook::AccountBook(int maxFailures, int lockSeconds)
    : maxFailures_(std::max(1, maxFailures))
    , lockSeconds_(std::max(0, lockSeconds))
{
}

QByteArray AccountBook::hashOf(const QString& salt, const QString& password)
{
    return QCryptographicHash::hash((salt + password).toUtf8(), QCryptographicHash::Sha256);
}

void AccountBook::setPassword(const QString& user, const QString& password)
{
    const quint64 random = QRandomGenerator::global()->generate64();
    Account& account = accounts_[user];
    account.salt = QString::number(random, 16);
    account.hash = hashOf(account.salt, password);
}

bool AccountBook::hasAccount(const QString& user) const
{
    return accounts_.count(user) != 0;
}

int AccountBook::secondsLeft(const Failures& f, Clock::time_point now) const
{
    if (f.lockedUntil <= now)
        return 0;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(f.lockedUntil - now).count();
    return int((left + 999) / 1000); // rounded up: "0 seconds left" would read as unlocked
}

AccountBook::Failures& AccountBook::failuresOf(const QString& user, Clock::time_point now)
{
    if (failures_.size() >= kMaxTracked && !failures_.count(user)) {
        // Forget names whose lock has run out, or everything if that is not enough.
        for (auto it = failures_.begin(); it != failures_.end();)
            it = it->second.lockedUntil <= now ? failures_.erase(it) : std::next(it);
        if (failures_.size() >= kMaxTracked)
            failures_.clear();
    }
    return failures_[user];
}

AccountBook::Verdict AccountBook::login(const QString& user, const QString& password, Clock::time_point now)
{
    Failures& f = failuresOf(user, now);
    if (f.count >= maxFailures_) {
        if (int left = secondsLeft(f, now))
            return { CMATRIX_ERR_USER_LOCKED, lockedError(left) };
        f = Failures {}; // the lock has run out: a fresh start
    }

    auto it = accounts_.find(user);
    if (it != accounts_.end() && hashOf(it->second.salt, password) == it->second.hash) {
        failures_.erase(user);
        return {};
    }

    ++f.count;
    if (f.count >= maxFailures_)
        f.lockedUntil = now + std::chrono::seconds(lockSeconds_);
    return { CMATRIX_ERR_PASSWORD, passwordError(f.count, maxFailures_, lockSeconds_) };
}

std::vector<AccountState> AccountBook::states(Clock::time_point now) const
{
    std::vector<AccountState> list;
    for (const auto& [user, account] : accounts_) {
        AccountState s;
        s.user = user;
        auto f = failures_.find(user);
        if (f != failures_.end()) {
            s.secondsUntilUnlock = f->second.count >= maxFailures_ ? secondsLeft(f->second, now) : 0;
            s.locked = s.secondsUntilUnlock > 0;
            s.failedAttempts = f->second.count >= maxFailures_ && !s.locked ? 0 : f->second.count;
        }
        list.push_back(s);
    }
    return list;
}

QJsonArray AccountBook::toJson() const
{
    QJsonArray array;
    for (const auto& [user, account] : accounts_) {
        array.append(QJsonObject {
            { "user", user }, { "salt", account.salt }, { "sha256", QString::fromLatin1(account.hash.toHex()) } });
    }
    return array;
}

bool AccountBook::fromJson(const QJsonArray& array)
{
    std::map<QString, Account> accounts;
    for (const QJsonValue& value : array) {
        const QJsonObject o = value.toObject();
        const QString user = o.value("user").toString();
        const QByteArray hash = QByteArray::fromHex(o.value("sha256").toString().toLatin1());
        if (user.isEmpty() || hash.size() != 32)
            return false;
        accounts[user] = Account { o.value("salt").toString(), hash };
    }
    if (accounts.empty())
        return false;
    accounts_ = std::move(accounts);
    failures_.clear();
    return true;
}

} // namespace vdec
