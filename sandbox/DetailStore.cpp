#include "sandbox/DetailStore.h"

#include "sandbox/PrivateFile.h"

namespace norvane::sandbox {

namespace {

Json kept(const std::filesystem::path& file) { return parseJson(readFile(file).value_or("{}")).value; }

} // namespace

Json DetailStore::read(const std::filesystem::path& file, Json initial) const {
    const std::lock_guard lock(mutex_);
    const Json details = kept(file);
    for (const auto& [member, value] : details.members())
        initial.set(member, value);
    return initial;
}

Answer DetailStore::change(const std::filesystem::path& file, const std::string& member, const Json& initial,
                           const std::function<Answer(Json&)>& change) {
    const std::lock_guard lock(mutex_);
    Json details = kept(file);
    const Json* before = details.find(member);
    Json value = before ? *before : initial;
    Answer answer = change(value);
    if (answer.status >= 400) return answer;
    makePrivateFolder(file.parent_path());
    writePrivateFile(file, details.set(member, std::move(value)).write(true) + "\n");
    return answer;
}

} // namespace norvane::sandbox
