#pragma once

#include <QJsonObject>

namespace vdec {

class Wall;
struct Window;

// The wall as JSON for the state file. SDK records (screens, sources) are kept as
// base64 of their bytes, so they read back exactly as the client sent them.
class WallJson {
public:
    static QJsonObject toJson(const Wall& wall);
    // False when the object does not describe a usable wall; windows that do not
    // pass validation are dropped and counted in *dropped.
    static bool fromJson(const QJsonObject& object, Wall& wall, int* dropped = nullptr);
    // One window, as stored in the wall and in scenes.
    static QJsonObject toJson(const Window& window);
    static bool fromJson(const QJsonObject& object, Window& window);
};

} // namespace vdec
