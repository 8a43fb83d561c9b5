#include "SceneBook.h"

#include "TextRules.h"

#include <cstring>
#include <set>

namespace vdec {

int32_t SceneBook::check(uint32_t id, const std::string& name)
{
    // Ids travel as int in the host's code, so the upper half stays unused.
    if (id == 0 || id > uint32_t(INT32_MAX))
        return CMATRIX_ERR_INVALID_PARAM;
    if (!TextRules::isName(name, kMaxNameBytes))
        return CMATRIX_ERR_NAME;
    return CMATRIX_OK;
}

int32_t SceneBook::create(
    uint32_t id, const std::string& name, const std::vector<Window>& windows, const std::map<int32_t, LoopRun>& loops)
{
    if (int32_t rc = check(id, name))
        return rc;
    if (!scenes_.count(id) && scenes_.size() >= size_t(kMaxScenes))
        return CMATRIX_ERR_LIMIT;
    Scene& scene = scenes_[id];
    scene.id = id;
    scene.name = name;
    scene.windows = windows;
    scene.loops = loops;
    return CMATRIX_OK;
}

int32_t SceneBook::remove(const std::vector<uint32_t>& ids)
{
    for (uint32_t id : ids) {
        if (!scenes_.count(id))
            return CMATRIX_ERR_SCENE_NOT_FOUND;
    }
    for (uint32_t id : ids)
        scenes_.erase(id);
    return CMATRIX_OK;
}

const Scene* SceneBook::find(uint32_t id) const
{
    auto it = scenes_.find(id);
    return it == scenes_.end() ? nullptr : &it->second;
}

std::vector<SceneInfo_t> SceneBook::list() const
{
    std::vector<SceneInfo_t> list;
    list.reserve(scenes_.size());
    for (const auto& [id, scene] : scenes_) {
        SceneInfo_t info {};
        info.id = id;
        memcpy(info.name, scene.name.data(), scene.name.size()); // fits: checked on create
        list.push_back(info);
    }
    return list;
}

int SceneBook::restore(std::vector<Scene> scenes)
{
    scenes_.clear();
    int dropped = 0;
    for (Scene& s : scenes) {
        if (check(s.id, s.name) != CMATRIX_OK || scenes_.count(s.id) || scenes_.size() >= size_t(kMaxScenes)) {
            ++dropped;
            continue;
        }
        scenes_[s.id] = std::move(s);
    }
    return dropped;
}

} // namespace vdec
