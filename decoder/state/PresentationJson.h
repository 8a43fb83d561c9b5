#pragma once

#include <QJsonObject>

namespace vdec {

class Wall;

// Scenes, schemes, running loops, banner, screen colours and audio as JSON for the
// state file. Records are kept as base64 of their bytes, like the wall's.
class PresentationJson {
public:
    static QJsonObject toJson(const Wall& wall);
    // Restores what passes validation (windows must be restored first: the loops
    // and the audio refer to them); returns how many entries were dropped. A
    // missing object leaves the defaults.
    static int fromJson(const QJsonObject& object, Wall& wall);
};

} // namespace vdec
