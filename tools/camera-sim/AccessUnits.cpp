#include "AccessUnits.h"

#include <QFile>

namespace {

constexpr qint64 kMaxClip = 512LL * 1024 * 1024;
constexpr uint8_t kDelimiter = 9;
constexpr uint8_t kIdr = 5;

} // namespace

bool AccessUnits::load(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxClip) {
        *error = QStringLiteral("cannot read %1").arg(path);
        return false;
    }
    const QByteArray all = file.readAll();
    bytes_.assign(all.begin(), all.end());
    units_.clear();
    const size_t n = bytes_.size();
    for (size_t i = 0; i + 3 < n; ++i) {
        if (bytes_[i] != 0 || bytes_[i + 1] != 0 || bytes_[i + 2] != 1)
            continue;
        // A four-byte start code belongs to the NAL unit it starts.
        const size_t start = (i > 0 && bytes_[i - 1] == 0) ? i - 1 : i;
        const uint8_t type = bytes_[i + 3] & 0x1f;
        if (type == kDelimiter) {
            if (!units_.empty())
                units_.back().size = start - units_.back().offset;
            units_.push_back(Unit { start, 0, false });
        } else if (type == kIdr && !units_.empty()) {
            units_.back().key = true;
        }
        i += 3;
    }
    if (!units_.empty())
        units_.back().size = n - units_.back().offset;
    if (units_.empty() || !units_.front().key) {
        *error = QStringLiteral("%1 is not a clip of delimited pictures starting with a key picture").arg(path);
        return false;
    }
    return true;
}
