#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringList>

namespace kvms_matrix {

// The text that names one sub-window of the wall: "windowid:%1~subwindowid:%2~windowtype:%3".
// The canvas keys its panels by it and the replay player reads its window back from it; built in
// one buffer, since a layout looks up every panel by it.
inline QString windowKey(int windowId, int subWindowId, int windowType)
{
    QString key;
    key.reserve(64);
    key += QLatin1String("windowid:");
    key += QString::number(windowId);
    key += QLatin1String("~subwindowid:");
    key += QString::number(subWindowId);
    key += QLatin1String("~windowtype:");
    key += QString::number(windowType);
    return key;
}

// The sub-window a key built by windowKey() names; -1 ids for any other text.
struct WindowPlace {
    int windowId = -1, subWindowId = -1, windowType = 0;
};

inline WindowPlace windowPlace(const QString& key)
{
    const QStringList parts = key.split(QLatin1Char('~'));
    WindowPlace place;
    if (parts.size() == 3) {
        place.windowId = parts.at(0).section(QLatin1Char(':'), 1).toInt();
        place.subWindowId = parts.at(1).section(QLatin1Char(':'), 1).toInt();
        place.windowType = parts.at(2).section(QLatin1Char(':'), 1).toInt();
    }
    return place;
}

} // namespace kvms_matrix
