#pragma once

// Names and limits the host and its modules agree on.
namespace DictDef {

// Module names, as the host's module switch uses them.
constexpr const char* kMatrixModuleName = "matrix";
constexpr const char* kPreviewModuleName = "preview";
constexpr const char* kPlaybackModuleName = "playback";

// Sub-directory of the data root that holds the TV-wall module's files.
constexpr const char* kMatrixDataDirName = "matrix";

// Most operator messages kept for SystemAssistant::recentMessages().
constexpr int kRecentMessageLimit = 200;

} // namespace DictDef
