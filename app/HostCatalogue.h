#pragma once

#include <QString>

// Gives the module the host's device catalogue: devices, channels and groups go to DevsMgrData;
// the stream addresses (a "streams" array of { "name", "url" }, and the "main"/"sub" addresses
// of each channel) go to MatrixData.
class HostCatalogue {
public:
    // False with a reason in *error when the file is missing or not a catalogue.
    static bool load(const QString& path, QString* error);
};
