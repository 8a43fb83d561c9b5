#include "Wall.h"

#include "WindowTable.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>
#include <set>

namespace vdec {

// A grid the decoder accepts must fit in its window table, or laying it out would fail halfway.
static_assert(Wall::kMaxGrid * Wall::kMaxGrid + WindowTable::kMaxFloating == WindowTable::kMaxWindows);

bool Wall::isTerminated(const char* text, size_t size)
{
    return memchr(text, '\0', size) != nullptr;
}

bool Wall::isIpv4(const std::string& text)
{
    in_addr addr {};
    return inet_pton(AF_INET, text.c_str(), &addr) == 1 && text.find('\0') == std::string::npos;
}

int32_t Wall::setGrid(int32_t cols, int32_t rows, const std::string& name)
{
    if (cols < 1 || cols > kMaxGrid || rows < 1 || rows > kMaxGrid)
        return CMATRIX_ERR_INVALID_PARAM;
    if (name.empty() || name.size() > size_t(kMaxNameBytes) || name.find('\0') != std::string::npos)
        return CMATRIX_ERR_NAME;
    const QString text = QString::fromStdString(name);
    if (text.toStdString() != name) // not valid UTF-8
        return CMATRIX_ERR_NAME;

    if (cols != cols_ || rows != rows_) {
        // Windows were laid out on the old grid and screens may fall outside the new one;
        // the client lays the new grid out again.
        windows_.clear();
        const int32_t cells = cols * rows;
        screens_.erase(std::remove_if(screens_.begin(), screens_.end(),
                           [cells](const ScreenInfo_t& s) { return s.position >= cells; }),
            screens_.end());
    }
    cols_ = cols;
    rows_ = rows;
    name_ = text;
    return CMATRIX_OK;
}

int32_t Wall::checkScreen(const ScreenInfo_t& s) const
{
    const bool texts = isTerminated(s.name, sizeof s.name) && isTerminated(s.ip, sizeof s.ip)
        && isTerminated(s.userName, sizeof s.userName) && isTerminated(s.password, sizeof s.password);
    if (!texts || s.position < 0 || s.position >= cols_ * rows_)
        return CMATRIX_ERR_INVALID_PARAM;
    return CMATRIX_OK;
}

int32_t Wall::setScreens(const std::vector<ScreenInfo_t>& screens, bool reset)
{
    std::set<int32_t> positions;
    for (const ScreenInfo_t& s : screens) {
        if (int32_t rc = checkScreen(s))
            return rc;
        if (!positions.insert(s.position).second)
            return CMATRIX_ERR_INVALID_PARAM;
    }
    if (reset)
        screens_.clear();
    // Without reset, a screen replaces the one at its position.
    for (const ScreenInfo_t& s : screens) {
        auto it = std::find_if(
            screens_.begin(), screens_.end(), [&s](const ScreenInfo_t& old) { return old.position == s.position; });
        if (it != screens_.end())
            *it = s;
        else
            screens_.push_back(s);
    }
    std::stable_sort(screens_.begin(), screens_.end(),
        [](const ScreenInfo_t& a, const ScreenInfo_t& b) { return a.position < b.position; });
    return CMATRIX_OK;
}

int32_t Wall::setStatus(int32_t status, const std::string& masterIp)
{
    if (status < 0 || status > 2)
        return CMATRIX_ERR_INVALID_PARAM;
    // A secondary needs its master; the others may name one or not.
    if ((status == 2 || !masterIp.empty()) && !isIpv4(masterIp))
        return CMATRIX_ERR_INVALID_PARAM;
    status_ = status;
    masterIp_ = QString::fromStdString(masterIp);
    return CMATRIX_OK;
}

int32_t Wall::setTime(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute, int32_t second)
{
    if (year < 2000 || year > 2099)
        return CMATRIX_ERR_INVALID_PARAM;
    const QDate date(year, month, day);
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid())
        return CMATRIX_ERR_INVALID_PARAM;
    // Both sides are read as wall-clock times, so a time-zone change does not count.
    const QDateTime given(date, time, Qt::UTC);
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime nowAsWallClock(now.date(), now.time(), Qt::UTC);
    clockOffsetSecs_ = nowAsWallClock.secsTo(given);
    lastSetTime_ = given;
    return CMATRIX_OK;
}

bool Wall::restore(int32_t cols, int32_t rows, const QString& name, int32_t status, const QString& masterIp,
    qint64 clockOffsetSecs, const QDateTime& lastSetTime)
{
    Wall probe;
    if (probe.setGrid(cols, rows, name.toStdString()) || probe.setStatus(status, masterIp.toStdString()))
        return false;
    cols_ = cols;
    rows_ = rows;
    name_ = name;
    status_ = status;
    masterIp_ = masterIp;
    clockOffsetSecs_ = clockOffsetSecs;
    lastSetTime_ = lastSetTime;
    return true;
}

bool Wall::restoreScreens(const std::vector<ScreenInfo_t>& screens)
{
    return setScreens(screens, true) == CMATRIX_OK;
}

} // namespace vdec
