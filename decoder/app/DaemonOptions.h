#pragma once

#include "core/DecoderConfig.h"

#include <QStringList>

namespace vdec {

// The daemon's command line, turned into a decoder configuration.
class DaemonOptions {
public:
    // False with a message in *error when the arguments are unusable; --help and
    // --version print and exit from inside.
    static bool parse(const QStringList& arguments, DecoderConfig& config, QString* error);
};

} // namespace vdec
