#include "sandbox/TemplateStore.h"

#include "sandbox/PdfPages.h"
#include "sandbox/PrivateFile.h"
#include "sandbox/Text.h"

#include <algorithm>
#include <set>

namespace norvane::sandbox {

namespace {

namespace fs = std::filesystem;

constexpr const char* kRecord = "template.json";

std::string fileNameOf(const Document& document) { return sha256Hex(document.pdf).substr(0, 16) + ".pdf"; }

Json recordOf(const Template& source) {
    const TemplatePlan& plan = source.plan;
    Json::Array documents;
    for (const Document& document : source.documents)
        documents.push_back(Json::object(
            {{"documentId", document.id}, {"name", document.name}, {"file", fileNameOf(document)}}));
    return Json::object({{"templateId", plan.templateId},
                         {"name", plan.name},
                         {"description", plan.description},
                         {"folderName", plan.folderName},
                         {"emailSubject", plan.emailSubject},
                         {"emailBlurb", plan.emailBlurb},
                         {"created", source.created},
                         {"modified", source.modified},
                         {"documents", std::move(documents)},
                         {"recipients", source.recipients}});
}

/// The bytes that the record names are written before it, and what it no longer names goes after it.
void write(const Template& source, const fs::path& folder) {
    makePrivateFolder(folder);
    std::set<std::string> named{kRecord};
    for (const Document& document : source.documents) {
        named.insert(fileNameOf(document));
        writePrivateFile(folder / fileNameOf(document), document.pdf);
    }
    writePrivateFile(folder / kRecord, recordOf(source).write(true) + "\n");
    std::vector<fs::path> unnamed;
    for (const auto& found : fs::directory_iterator(folder))
        if (!named.contains(found.path().filename().string())) unnamed.push_back(found.path());
    for (const fs::path& file : unnamed)
        fs::remove(file);
}

} // namespace

TemplateStore::TemplateStore(fs::path folder)
    : folder_(std::move(folder)) {
    makePrivateFolder(folder_);
    for (const auto& found : fs::directory_iterator(folder_))
        if (found.is_directory()) load(found.path());
    std::sort(kept_.begin(), kept_.end(),
              [](const Pointer& left, const Pointer& right) { return left->created < right->created; });
}

void TemplateStore::load(const fs::path& folder) {
    const Json record = parseJson(readFile(folder / kRecord).value_or("")).value;
    if (record.text("templateId").empty()) return;
    Template source;
    source.plan = {record.text("templateId"),
                   record.text("name"),
                   record.text("description"),
                   record.text("folderName"),
                   record.text("emailSubject"),
                   record.text("emailBlurb"),
                   {},
                   {}};
    source.created = record.text("created");
    source.modified = record.text("modified");
    for (const Json& document : record.array("documents"))
        source.documents.push_back({document.text("documentId"), document.text("name"),
                                    readFile(folder / document.text("file")).value_or("")});
    if (const Json* recipients = record.find("recipients")) source.recipients = *recipients;
    countPages(source);
    kept_.push_back(std::make_shared<const Template>(std::move(source)));
}

std::vector<TemplateStore::Pointer> TemplateStore::all() const {
    const std::lock_guard lock(mutex_);
    std::vector<Pointer> found;
    std::vector<Pointer> own = kept_;
    for (const Template& offered : templateCatalogue()) {
        const auto changed = std::find_if(own.begin(), own.end(), [&](const Pointer& one) {
            return one->plan.templateId == offered.plan.templateId;
        });
        found.push_back(changed == own.end() ? Pointer(Pointer(), &offered) : *changed);
        if (changed != own.end()) own.erase(changed);
    }
    found.insert(found.end(), own.begin(), own.end());
    return found;
}

TemplateStore::Pointer TemplateStore::find(const std::string& templateId) const {
    for (Pointer& one : all())
        if (equalsIgnoringCase(one->plan.templateId, templateId)) return std::move(one);
    return nullptr;
}

void TemplateStore::add(Template made) {
    countPages(made);
    const std::lock_guard lock(mutex_);
    keep(std::move(made));
}

Answer TemplateStore::change(const std::string& templateId, const std::function<Answer(Template&)>& change) {
    const Pointer before = find(templateId);
    const std::lock_guard lock(mutex_);
    const Pointer* kept = findKept(templateId);
    Template changed = kept ? **kept : *before;
    Answer answer = change(changed);
    if (answer.status >= 400) return answer;
    changed.modified = nowText();
    countPages(changed);
    keep(std::move(changed));
    return answer;
}

void TemplateStore::keep(Template changed) {
    write(changed, folder_ / changed.plan.templateId);
    auto next = std::make_shared<const Template>(std::move(changed));
    if (Pointer* kept = findKept(next->plan.templateId))
        *kept = std::move(next);
    else
        kept_.push_back(std::move(next));
}

TemplateStore::Pointer* TemplateStore::findKept(const std::string& templateId) {
    for (Pointer& one : kept_)
        if (equalsIgnoringCase(one->plan.templateId, templateId)) return &one;
    return nullptr;
}

} // namespace norvane::sandbox
