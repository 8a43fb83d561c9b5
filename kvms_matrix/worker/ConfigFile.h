#pragma once

#include <QByteArray>
#include <QString>

namespace kvms_matrix {

// The module's local files: their names and the few file operations they share. The names are
// bare on purpose: the files live in the client's working directory.
class ConfigFile {
public:
    static const char* const kMatrixConfig; // "matrixConfig.json"
    static const char* const kDecoderConfig; // "decoderConfig.json"
    static const char* const kTvWallConfig; // "tvWallConfig.json"
    static const char* const kTvWallIni; // "tvWallConfig.ini"

    // The files hold decoder passwords, so one that does not exist yet is created readable and
    // writable by its owner only. An existing file is left untouched, whatever its mode.
    static void createOwnerOnly(const QString& fileName);

    // Bounds on what a file may make the module hold: a list file is a few KiB, so anything
    // near these was not written by the module and reads as unreadable (or is cut there).
    static constexpr qint64 kMaxFileBytes = 16 * 1024 * 1024;
    static constexpr int kMaxEntries = 4096; // decoders or walls in one list
    static constexpr int kMaxSecondaries = 256; // secondary decoders of one wall

    // Permission bits of an existing file, -1 when there is none.
    static int modeOf(const QString& fileName);
    // Puts back the bits an earlier modeOf() gave, when a rewrite changed them (-1: nothing to do).
    static void restoreMode(const QString& fileName, int mode);

    // Whole content of a file; false when it cannot be opened for reading or is larger than
    // kMaxFileBytes.
    static bool readAll(const QString& fileName, QByteArray& content);

    // Replaces the content atomically: the old content stays whole until the new one is written
    // completely. False when it could not be written, in which case the file is left as it was.
    static bool replace(const QString& fileName, const QByteArray& content);
};

} // namespace kvms_matrix
