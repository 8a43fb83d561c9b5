#pragma once

#include <QString>

namespace kvmstest {

// Encodes a short H.264 recording (320 x 180, 25 pictures a second, a key picture every
// second, no B-pictures) into `path` with ffmpeg; false when ffmpeg or libx264 is missing.
bool makeRecordingClip(const QString& path, int seconds);

} // namespace kvmstest
