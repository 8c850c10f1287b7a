#include "src/templates/StoredTemplates.h"

#include <norvane/templates/NVMTemplatesHandler.h>

#include <map>
#include <mutex>

namespace norvane {
namespace {

struct Progress {
    std::mutex mutex;
    std::map<std::string, int> runs; ///< template id to runs under way; guarded by mutex
};

Progress& progress() {
    static Progress made;
    return made;
}

} // namespace

std::set<std::string> NVMTemplatesHandler::templateIdsCacheUnderProgress() {
    const std::lock_guard lock(progress().mutex);
    std::set<std::string> ids;
    for (const auto& [id, runs] : progress().runs)
        ids.insert(id);
    return ids;
}

void NVMTemplatesHandler::setCacheStateInProgressForTemplateId(const std::string& templateId) {
    const std::lock_guard lock(progress().mutex);
    ++progress().runs[templateId];
}

void NVMTemplatesHandler::removeCacheStateInProgressForTemplateId(const std::string& templateId) {
    const std::lock_guard lock(progress().mutex);
    const auto found = progress().runs.find(templateId);
    if (found != progress().runs.end() && --found->second == 0) progress().runs.erase(found);
}

void NVMTemplatesHandler::removeCacheStateInProgressForTemplates() {
    const std::lock_guard lock(progress().mutex);
    progress().runs.clear();
}

NVMTemplateCacheState NVMTemplatesHandler::cacheStateOfTemplateId(const std::string& templateId) {
    const bool isRunning = templateIdsCacheUnderProgress().contains(templateId);
    if (isTemplateStored(templateId)) {
        return isRunning ? NVMTemplateCacheStateCachedAndUpdating : NVMTemplateCacheStateCached;
    }
    return isRunning ? NVMTemplateCacheStateInProgress : NVMTemplateCacheStateNone;
}

} // namespace norvane
