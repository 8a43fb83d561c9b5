#pragma once

#include "DistributionBook.h"
#include "LoopTable.h"
#include "OutputSettings.h"
#include "SceneBook.h"
#include "SchemeBook.h"
#include "WindowTable.h"

#include <QDateTime>
#include <QString>

#include <string>
#include <vector>

namespace vdec {

// What the decoder shows and how it sits in a wall: grid, screens, role, clock and
// windows. Setters validate and return a CMATRIX code; nothing changes on error.
class Wall {
public:
    static constexpr int kMaxGrid = 16;
    static constexpr int kMaxNameBytes = 63;

    int32_t setGrid(int32_t cols, int32_t rows, const std::string& name);
    int32_t setScreens(const std::vector<ScreenInfo_t>& screens, bool reset);
    int32_t setStatus(int32_t status, const std::string& masterIp);
    // Stores the offset between the time given (local, as the operator sees it) and now.
    int32_t setTime(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute, int32_t second);

    int32_t cols() const { return cols_; }
    int32_t rows() const { return rows_; }
    const QString& name() const { return name_; }
    const std::vector<ScreenInfo_t>& screens() const { return screens_; }
    int32_t status() const { return status_; }
    const QString& masterIp() const { return masterIp_; }
    qint64 clockOffsetSecs() const { return clockOffsetSecs_; }
    const QDateTime& lastSetTime() const { return lastSetTime_; }
    WindowTable& windows() { return windows_; }
    const WindowTable& windows() const { return windows_; }
    SceneBook& scenes() { return scenes_; }
    const SceneBook& scenes() const { return scenes_; }
    SchemeBook& schemes() { return schemes_; }
    const SchemeBook& schemes() const { return schemes_; }
    LoopTable& loops() { return loops_; }
    const LoopTable& loops() const { return loops_; }
    OutputSettings& outputs() { return outputs_; }
    const OutputSettings& outputs() const { return outputs_; }
    DistributionBook& distributions() { return distributions_; }
    const DistributionBook& distributions() const { return distributions_; }

    // Restores values read back from disk; false when any is out of range.
    bool restore(int32_t cols, int32_t rows, const QString& name, int32_t status, const QString& masterIp,
        qint64 clockOffsetSecs, const QDateTime& lastSetTime);
    bool restoreScreens(const std::vector<ScreenInfo_t>& screens);

private:
    static bool isTerminated(const char* text, size_t size);
    static bool isIpv4(const std::string& text);
    int32_t checkScreen(const ScreenInfo_t& screen) const;

    int32_t cols_ = 2, rows_ = 2;
    QString name_ = QStringLiteral("Wall");
    std::vector<ScreenInfo_t> screens_; // ordered by position
    int32_t status_ = 0;
    QString masterIp_;
    qint64 clockOffsetSecs_ = 0;
    QDateTime lastSetTime_;
    WindowTable windows_;
    SceneBook scenes_;
    SchemeBook schemes_;
    LoopTable loops_; // which scheme turns in which window
    OutputSettings outputs_; // banner, screen colours, audio
    DistributionBook distributions_;
};

} // namespace vdec
