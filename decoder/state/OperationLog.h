#pragma once

#include "CMatrixSDK.h"

#include <QJsonArray>
#include <QString>

#include <cstdint>
#include <deque>
#include <vector>

namespace vdec {

// The unit's log of what was done to it: one entry per request that changed its
// state, and system events such as a finished firmware upgrade. The oldest entries
// go once kCapacity is reached. Kept in the state file.
class OperationLog {
public:
    static constexpr size_t kCapacity = 1000;

    void add(uint32_t time, int32_t type, const QString& user, const QString& content);
    // Entries of a type (LOG_TYPE_ALL: every type) with begin <= time <= end, oldest first.
    std::vector<LogInfo_t> query(int32_t type, uint32_t begin, uint32_t end) const;
    size_t size() const { return entries_.size(); }

    // Short English text for a request of this type, as the log shows it.
    static QString describe(uint16_t requestType);

    QJsonArray toJson() const;
    // Entries that do not read back are skipped; false only for a non-array.
    bool fromJson(const QJsonValue& value);

private:
    std::deque<LogInfo_t> entries_;
};

} // namespace vdec
