#pragma once

#include <QLatin1String>
#include <QString>

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

} // namespace kvms_matrix
