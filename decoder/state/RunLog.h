#pragma once

#include <QString>

#include <deque>
#include <mutex>

namespace vdec {

// The unit's run log: recent events (connections, logins, refusals, maintenance) as
// lines of text, the newest kCapacity kept. Memory only, as a unit's console log is.
// Thread-safe: connections write to it from their own threads.
class RunLog {
public:
    static constexpr size_t kCapacity = 500;

    void add(const QString& event);
    // Every line, oldest first, each "yyyy-MM-dd hh:mm:ss event\n".
    QByteArray text() const;

private:
    mutable std::mutex mutex_;
    std::deque<QString> lines_;
};

} // namespace vdec
