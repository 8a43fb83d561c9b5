#pragma once

#include "core/DecoderSnapshot.h"

#include <QString>

namespace kvmstest {

// Readable prints of what a decoder holds, one line per fact, records as hex bytes:
// two prints are equal only when the states are, and a diff shows where they differ.

// Everything clients store: grid, role, clock, activation, screens, windows, scenes,
// schemes, loops (not how far they turned), banner, screen colours and audio.
QString statePrint(const vdec::DecoderSnapshot& s);

} // namespace kvmstest
