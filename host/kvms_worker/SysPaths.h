#pragma once

#include <QString>

// Where the host keeps its files.
class SysPaths {
public:
    SysPaths() = delete;

    // Writable root of the host's data: the application data location unless overridden.
    static QString dataRoot();
    // Overrides the root (an empty path goes back to the default).
    static void setDataRoot(const QString& path);

    // <data root>/matrix, created if missing.
    static QString matrixDataDir();
};
