#include "src/templates/StoredTemplates.h"

#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDTemplates.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/store/StoreErrors.h>
#include <norvane/templates/NVMTemplatesHandler.h>

namespace norvane {
namespace {

NVMError storeNotOpen() {
    return NVMError::make(std::string(kStoreErrorDomain), static_cast<std::int64_t>(StoreError::NotOpen),
                          "The store is not open.");
}

std::vector<std::shared_ptr<NVMCDEnvelopeTemplate>> storedTemplates(const FetchRequest& request) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    auto found = store->defaultContext().fetch<NVMCDEnvelopeTemplate>(request);
    return found ? *std::move(found) : std::vector<std::shared_ptr<NVMCDEnvelopeTemplate>>();
}

/// Puts the bytes of a stored document into its record, if they are what was stored.
void readPdf(const std::shared_ptr<NVMCDDocument>& stored, const std::shared_ptr<NVMDocument>& document) {
    if (!stored || !document || !stored->sandboxFilePath) return;
    auto bytes =
        NVM_verifiedDataWithPath(*stored->sandboxFilePath, stored->_sha256, stored->name.value_or(""));
    if (bytes) document->pdf = *std::move(bytes);
}

} // namespace

FetchRequest requestForTemplateId(const std::string& templateId) {
    FetchRequest request(NVMCDEnvelopeTemplate::type());
    request.where("templateId", FetchRequest::Match::EqualIgnoringCase, templateId);
    return request;
}

bool isTemplateStored(const std::string& templateId) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return false;
    const auto count = store->defaultContext().count(requestForTemplateId(templateId));
    return count && *count > 0;
}

std::vector<std::string> allPdfPathsOf(const NVMCDEnvelopeTemplate& envelopeTemplate) {
    return NVMTemplatesHandler::pdfPathsWithPathsArray(
        NVMTemplatesHandler::getPdfPathsForTemplate(envelopeTemplate),
        NVMTemplatesHandler::getCombinedPdfPathForTemplate(envelopeTemplate));
}

void removeTemplates(const std::vector<std::shared_ptr<NVMCDEnvelopeTemplate>>& templates,
                     ManagedObjectContext& context) {
    for (const auto& stored : templates) {
        context.remove(stored->objectID);
        for (const std::string& path : allPdfPathsOf(*stored))
            context.dropFile(path);
    }
}

std::shared_ptr<NVMCDEnvelopeTemplate>
NVMTemplatesHandler::findTemplateWithId(const std::string& templateId,
                                        const ManagedObjectContext& inContext) {
    auto found = inContext.fetchFirst<NVMCDEnvelopeTemplate>(requestForTemplateId(templateId));
    return found ? *std::move(found) : nullptr;
}

std::shared_ptr<NVMEnvelopeTemplate> NVMTemplatesHandler::cachedTemplateWithId(const std::string& templateId,
                                                                               bool includePdfs) {
    const auto found = storedTemplates(requestForTemplateId(templateId).limitTo(1));
    if (found.empty()) return nullptr;
    const NVMCDEnvelopeTemplate& stored = *found.front();
    auto record = std::make_shared<NVMEnvelopeTemplate>(stored, false);
    if (!includePdfs) return record;
    readPdf(stored.combinedDocument, record->combinedDocument);
    for (std::size_t i = 0; stored.documents && record->documents && i < stored.documents->size(); ++i) {
        readPdf(stored.documents->at(i), record->documents->at(i));
    }
    return record;
}

std::vector<std::shared_ptr<NVMEnvelopeTemplate>> NVMTemplatesHandler::cachedTemplates() {
    std::vector<std::shared_ptr<NVMEnvelopeTemplate>> records;
    for (const auto& stored : storedTemplates(FetchRequest(NVMCDEnvelopeTemplate::type()))) {
        records.push_back(std::make_shared<NVMEnvelopeTemplate>(*stored, false));
    }
    return records;
}

std::vector<std::string> NVMTemplatesHandler::cachedTemplateIds() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return {};
    const auto rows =
        store->defaultContext().fetchProperties(FetchRequest(NVMCDEnvelopeTemplate::type()), {"templateId"});
    if (!rows) return {};
    std::vector<std::string> ids;
    for (const auto& row : *rows) {
        if (const std::string* id = row.front().asString()) ids.push_back(*id);
    }
    return ids;
}

std::size_t NVMTemplatesHandler::cachedTemplateCount() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return 0;
    const auto count = store->defaultContext().count(FetchRequest(NVMCDEnvelopeTemplate::type()));
    return count ? *count : 0;
}

Failure NVMTemplatesHandler::removeCachedTemplateWithId(const std::string& templateId) {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    return store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
        auto found = context.fetch<NVMCDEnvelopeTemplate>(requestForTemplateId(templateId));
        if (!found) return found.error();
        removeTemplates(*found, context);
        return std::nullopt;
    });
}

Failure NVMTemplatesHandler::removeCachedTemplates() {
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    Failure error = store->saveAndWait([](ManagedObjectContext& context) -> Failure {
        context.removeAll(NVMCDEnvelopeTemplate::type());
        return std::nullopt;
    });
    if (!error) NVM_deleteAllTemplateDocuments();
    return error;
}

std::optional<std::string>
NVMTemplatesHandler::getCombinedPdfPathForTemplate(const NVMCDEnvelopeTemplate& envelopeTemplate) {
    return envelopeTemplate.combinedDocument ? envelopeTemplate.combinedDocument->sandboxFilePath
                                             : std::nullopt;
}

std::vector<std::string>
NVMTemplatesHandler::getPdfPathsForTemplate(const NVMCDEnvelopeTemplate& envelopeTemplate) {
    std::vector<std::string> paths;
    if (!envelopeTemplate.documents) return paths;
    for (const auto& document : *envelopeTemplate.documents) {
        if (document->sandboxFilePath) paths.push_back(*document->sandboxFilePath);
    }
    return paths;
}

std::vector<std::string>
NVMTemplatesHandler::pdfPathsWithPathsArray(std::vector<std::string> paths,
                                            const std::optional<std::string>& andPath) {
    if (andPath) paths.push_back(*andPath);
    return paths;
}

void NVMTemplatesHandler::deleteCachedPdfs(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        NVM_deleteDocumentWithPath(path);
}

} // namespace norvane
