#pragma once

#include "SdkSession.h"

#include <QStringList>

namespace vdec {
class VirtualDecoder;
}

// A connection of the test's own, to build a wall before the worker acts on it.
class RawWall {
public:
    explicit RawWall(const vdec::VirtualDecoder* decoder);

    bool ok() const { return m_ok; }
    CMHANDLE handle() const { return m_sdk.handle(); }
    int addWindow(uint32_t id, int division = 1);
    int bind(int windowId, int subWindow, const char* devId);
    int createScene(uint32_t id, const char* name);
    // A scheme of kind 4 with one source per id; an empty id stands for an empty slot.
    int createScheme(uint32_t id, const char* name, const QStringList& sourceIds = {});

private:
    kvmstest::SdkSession m_sdk;
    bool m_ok = false;
};
