#pragma once

#include "state/AccountBook.h"
#include "state/Window.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace vdec {

// A copy of the decoder's state at one moment, for tests to assert on.
struct DecoderSnapshot {
    int cols = 0, rows = 0;
    QString name;
    std::vector<ScreenInfo_t> screens; // ordered by position
    std::vector<Window> windows; // in creation order
    qint64 clockOffsetSecs = 0; // time last set minus the clock then, both as wall-clock times
    QDateTime lastSetTime; // wall-clock time last given, invalid if never set
    int status = 0; // 0 alone, 1 main, 2 secondary
    QString masterIp;
    bool activated = true;
    std::vector<AccountState> accounts;

    const Window* window(uint32_t id) const
    {
        for (const Window& w : windows) {
            if (w.id == id)
                return &w;
        }
        return nullptr;
    }
    const AccountState* account(const QString& user) const
    {
        for (const AccountState& a : accounts) {
            if (a.user == user)
                return &a;
        }
        return nullptr;
    }
};

} // namespace vdec
