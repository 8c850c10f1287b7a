#include "Commands.h"

#include <norvane/api/NVESAccounts.h>
#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/templates/NVMTemplatesManager.h>

#include <CLI/CLI.hpp>

#include <utility>

namespace norvane::cli {

namespace {

using TemplateList = std::vector<std::shared_ptr<NVMEnvelopeTemplateDefinition>>;

Value isoText(const std::optional<Date>& date) { return date ? Value(formatIso8601(*date)) : Value(); }

struct ListArguments {
    std::string search;
    std::string folder;
};

void list(Context& context, const ListArguments& arguments) {
    if (context.failed(openKit())) return;
    NVMTemplatesManager manager;
    const Answer<Result<TemplateList>> answer;
    const auto completion = [answer](std::optional<TemplateList> templates, std::optional<NVMError> error) {
        if (error) return answer.give(*error);
        answer.give(std::move(templates).value_or(TemplateList{}));
    };
    if (!arguments.folder.empty())
        manager.listTemplatesWithFolderId(arguments.folder, completion);
    else if (!arguments.search.empty())
        manager.listTemplatesWithTemplateName(arguments.search, NVMSearchOptions::CaseInsensitive,
                                              completion);
    else
        manager.listTemplatesWithCompletion(completion);
    const auto templates = answer.wait();
    if (!templates) {
        context.failed(templates.error());
        return;
    }
    Array document;
    std::vector<std::string> lines;
    for (const auto& entry : *templates) {
        document.push_back(Dictionary{{"templateId", entry->templateId},
                                      {"name", entry->name},
                                      {"description", entry->templateDescription},
                                      {"pageCount", entry->pageCount},
                                      {"folderName", entry->folderName},
                                      {"lastModified", isoText(entry->lastModified)}});
        lines.push_back(entry->templateId.value_or("") + "  " + entry->name.value_or(""));
    }
    context.output().result(document, lines);
}

void folders(Context& context) {
    if (context.failed(openKit())) return;
    using FolderList = NVMTemplatesManager::FolderList;
    const Answer<Result<FolderList>> answer;
    NVMTemplatesManager().listTemplateFoldersWithCompletion(
        [answer](std::optional<FolderList> found, std::optional<NVMError> error) {
            if (error) return answer.give(*error);
            answer.give(std::move(found).value_or(FolderList{}));
        });
    const auto found = answer.wait();
    if (!found) {
        context.failed(found.error());
        return;
    }
    Array document;
    std::vector<std::string> lines;
    for (const auto& folder : *found) {
        document.push_back(Dictionary{{"folderId", folder->folderId},
                                      {"name", folder->name},
                                      {"parentFolderId", folder->parentFolderId},
                                      {"ownerUserName", folder->ownerUserName}});
        lines.push_back(folder->folderId.value_or("") + "  " + folder->name.value_or(""));
    }
    context.output().result(document, lines);
}

/// Where the PDF lies; null when it is not on this device.
Value pathOf(const NVMDocument& document) {
    if (!document.sandboxFilePath) return {};
    return Platform::current().files->documentsFolder().string() + *document.sandboxFilePath;
}

Dictionary describe(const NVMEnvelopeTemplate& cached) {
    const auto& definition = cached.envelopeTemplateDefinition;
    Array documents;
    if (cached.documents)
        for (const auto& document : *cached.documents)
            documents.push_back(Dictionary{
                {"documentId", document->documentId}, {"name", document->name}, {"path", pathOf(*document)}});
    return {{"templateId", definition ? Value(definition->templateId) : Value()},
            {"name", definition ? Value(definition->name) : Value()},
            {"pageCount", definition ? Value(definition->pageCount) : Value()},
            {"cachedDateTime", isoText(cached.cachedDateTime)},
            {"documents", std::move(documents)}};
}

std::string line(const Dictionary& entry) {
    const auto text = [&](const char* key) { return entry.at(key).stringValue().value_or(""); };
    return text("templateId") + "  " + text("name") + "  " + text("pageCount") + " page(s)";
}

/// Stops at the first that cannot be cached.
Failure cacheEach(NVMTemplatesManager& manager, const std::vector<std::string>& ids) {
    Progress progress("caching", ids.size());
    for (const std::string& id : ids) {
        const Answer<Failure> answer;
        manager.cacheTemplateWithId(
            id, [answer](std::optional<NVMError> error) { answer.give(std::move(error)); });
        if (Failure failure = answer.wait()) return failure;
        progress.advance(id);
    }
    return std::nullopt;
}

void cache(Context& context, const std::vector<std::string>& ids) {
    if (context.failed(openKit())) return;
    NVMTemplatesManager manager;
    if (context.failed(cacheEach(manager, ids))) return;
    Array document;
    std::vector<std::string> lines;
    for (const std::string& id : ids) {
        const auto cached = manager.cachedTemplateWithId(id, false);
        if (!cached) continue;
        document.push_back(describe(*cached));
        lines.push_back("cached " + line(*document.back().asDictionary()));
    }
    context.output().result(document, lines);
}

void cached(Context& context) {
    if (context.failed(openKit())) return;
    Array document;
    std::vector<std::string> lines;
    for (const auto& entry : NVMTemplatesManager().cachedTemplates()) {
        document.push_back(describe(*entry));
        lines.push_back(line(*document.back().asDictionary()));
    }
    context.output().result(document, lines);
}

void remove(Context& context, const std::vector<std::string>& ids, bool all) {
    if (context.failed(openKit())) return;
    NVMTemplatesManager manager;
    const std::vector<std::string> kept = manager.cachedTemplateIds();
    for (const std::string& id : ids)
        if (std::find(kept.begin(), kept.end(), id) == kept.end()) {
            context.failed(NVM_errorTemplateNotInCache());
            return;
        }
    if (all) manager.removeCachedTemplates();
    for (const std::string& id : ids)
        manager.removeCachedTemplateWithId(id);
    Array document;
    std::vector<std::string> lines;
    for (const std::string& id : all ? kept : ids) {
        document.push_back(id);
        lines.push_back("removed " + id);
    }
    context.output().result(Dictionary{{"removed", std::move(document)}}, lines);
}

} // namespace

void addTemplateCommands(CLI::App& program, Context& context) {
    program.add_subcommand("folders", "The account's folders of templates")->callback([&context] {
        folders(context);
    });
    auto* templates =
        program.add_subcommand("templates", "The account's templates, and those kept on this device");
    templates->require_subcommand(1);

    auto arguments = std::make_shared<ListArguments>();
    auto* listCommand = templates->add_subcommand("list", "The templates of the account");
    auto* searchOption =
        listCommand->add_option("--search", arguments->search, "Only names that contain this text");
    listCommand->add_option("--folder", arguments->folder, "Only those in the folder of this id")
        ->excludes(searchOption);
    listCommand->callback([&context, arguments] { list(context, *arguments); });

    auto cacheIds = std::make_shared<std::vector<std::string>>();
    auto* cacheCommand =
        templates->add_subcommand("cache", "Keeps templates on this device, with their PDFs");
    cacheCommand->add_option("ID", *cacheIds, "Template ids")->required();
    cacheCommand->callback([&context, cacheIds] { cache(context, *cacheIds); });

    templates->add_subcommand("cached", "What is kept on this device")->callback([&context] {
        cached(context);
    });

    auto removeIds = std::make_shared<std::vector<std::string>>();
    auto all = std::make_shared<bool>(false);
    auto* removeCommand = templates->add_subcommand("remove", "Removes templates from this device");
    removeCommand->add_option("ID", *removeIds, "Template ids");
    removeCommand->add_flag("--all", *all, "All of them");
    removeCommand->callback([&context, removeIds, all] {
        if (removeIds->empty() == !*all) throw CLI::RequiredError("ID or --all, one of the two,");
        remove(context, *removeIds, *all);
    });
}

} // namespace norvane::cli
