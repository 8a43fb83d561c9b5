#pragma once

#include "Scene.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vdec {

// The scenes the decoder stores, by id. Changes are validated first and applied
// whole, or not at all; the result is a CMATRIX code.
class SceneBook {
public:
    static constexpr int kMaxScenes = 32;
    static constexpr size_t kMaxNameBytes = sizeof(SceneInfo_t::name) - 1;

    // Stores the wall given under id; an existing id is overwritten.
    int32_t create(uint32_t id, const std::string& name, const std::vector<Window>& windows,
        const std::map<int32_t, LoopRun>& loops);
    // Deletes every id listed, or none when any is unknown.
    int32_t remove(const std::vector<uint32_t>& ids);

    const Scene* find(uint32_t id) const;
    std::vector<SceneInfo_t> list() const; // in id order
    const std::map<uint32_t, Scene>& scenes() const { return scenes_; }

    // Takes scenes read back from disk, dropping any that would not pass validation.
    int restore(std::vector<Scene> scenes);

private:
    static int32_t check(uint32_t id, const std::string& name);

    std::map<uint32_t, Scene> scenes_;
};

} // namespace vdec
