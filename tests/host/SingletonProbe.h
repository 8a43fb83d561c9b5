#pragma once

struct ProbeObject {
    int value = 0;
};

// KSingleton<ProbeObject>::instance() as seen from inside the probe library.
__attribute__((visibility("default"))) ProbeObject* probeFromLibrary();
