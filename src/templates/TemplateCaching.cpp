#include "src/templates/CombinedDocumentName.h"
#include "src/templates/StoredTemplates.h"
#include "src/templates/TemplateImport.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVMApi.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDTemplates.h>
#include <norvane/store/ObjectStore.h>
#include <norvane/templates/NVMTemplatesHandler.h>
#include <norvane/templates/TabConversion.h>

#include <filesystem>
#include <map>
#include <set>

namespace norvane {
namespace {

/// Where PDFs are checked and kept and records are stored, one after another.
const std::shared_ptr<TaskQueue>& pdfQueue() {
    static const std::shared_ptr<TaskQueue> queue =
        Platform::current().executors->makeSerialQueue("com.norvane.mobile.sdk.cache.template.pdfs.queue");
    return queue;
}

struct KeptPdf {
    std::string path; ///< below the documents folder
    std::string sha256;
};

/// Checks a downloaded PDF and gives it a name of its own. The download is gone afterwards.
Result<KeptPdf> keepPdf(const std::filesystem::path& download) {
    Files& files = *Platform::current().files;
    Failure error;
    KeptPdf kept{NVM_templateDocumentSubPath(), {}};
    if (const auto bytes = files.read(download)) {
        kept.sha256 = sha256Hex(bytes->view());
        const auto document = PdfDocument::open(*bytes);
        if (!document) error = document.error();
    } else {
        error = bytes.error();
    }
    if (!error) error = NVM_moveDocumentFile(download, kept.path, kTemplateDocumentsFolder);
    if (!error) return kept;
    files.remove(download);
    return *std::move(error);
}

/// Downloads the PDFs of one template and stores it with them. After the downloads everything happens on the
/// PDF queue.
class TemplateCaching : public std::enable_shared_from_this<TemplateCaching> {
  public:
    TemplateCaching(std::shared_ptr<const NVESEnvelopeTemplate> wire,
                    NVMTemplatesHandler::Completion completion)
        : wire_(std::move(wire))
        , completion_(std::move(completion))
        , session_(sessionNumber())
        , downloads_(Platform::current().executors->makeGroup()) {}

    void start() {
        if (const auto& definition = wire_->envelopeTemplateDefinition) templateId_ = definition->templateId;
        downloads_->enter();
        if (templateId_ && hasUsableDocumentIds()) {
            cacheIndividualPdfs();
            cacheCombinedPdf();
        } else {
            error_ = NVM_errorTemplateImportFailed();
        }
        downloads_->notify(pdfQueue(), [self = shared_from_this()] { self->finish(); });
        downloads_->leave();
    }

  private:
    /// Each document has an id, and no two the same: files are matched to documents by it.
    bool hasUsableDocumentIds() const {
        std::set<std::string> ids;
        if (!wire_->documents) return true;
        for (const auto& document : *wire_->documents) {
            if (!document->documentId || !ids.insert(*document->documentId).second) return false;
        }
        return true;
    }

    void cacheIndividualPdfs() {
        if (!wire_->documents) return;
        for (const auto& document : *wire_->documents) {
            downloads_->enter();
            const std::string id = *document->documentId;
            NVMApi::getDocumentForTemplateId(templateId_, id,
                                             keeping([id](TemplateCaching& self, KeptPdf pdf) {
                                                 self.pdfs_.insert_or_assign(id, std::move(pdf));
                                             }));
        }
    }

    void cacheCombinedPdf() {
        downloads_->enter();
        NVMApi::getCombinedDocumentForTemplateId(templateId_, keeping([](TemplateCaching& self, KeptPdf pdf) {
                                                     self.combinedPdf_ = std::move(pdf);
                                                 }));
    }

    /// What to do when a download ended: keep the PDF, note it or the error, and leave the group.
    template <class Note>
    NVESFileCompletion keeping(Note note) {
        return [self = shared_from_this(), note](const std::optional<Url>& file,
                                                 const std::optional<NVMError>& error) {
            pdfQueue()->async([self, note, file, error] {
                if (error || !file) {
                    self->error_ = error.value_or(NVM_errorTemplateImportFailed());
                } else if (auto kept = keepPdf(file->filePath())) {
                    self->paths_.push_back(kept->path);
                    note(*self, *std::move(kept));
                } else {
                    self->error_ = kept.error();
                }
                self->downloads_->leave();
            });
        };
    }

    void finish() {
        if (!error_) error_ = inSession(session_, [this] { return store(); });
        if (error_) NVMTemplatesHandler::deleteCachedPdfs(paths_);
        if (completion_) completion_(error_);
    }

    std::shared_ptr<NVMCDEnvelopeTemplate> makeRecord() const {
        auto record = importedTemplate(*wire_);
        record->cachedDateTime = Platform::current().clock->now();
        if (!record->documents) record->documents.emplace();
        for (const auto& document : *record->documents) {
            const KeptPdf& pdf = pdfs_.at(*document->documentId);
            document->sandboxFilePath = pdf.path;
            document->_sha256 = pdf.sha256;
        }
        auto combined = std::make_shared<NVMCDDocument>();
        combined->name = combinedDocumentName(*record->documents);
        combined->uri = wire_->documentsCombinedUri;
        combined->documentId.emplace(kCombinedDocumentId);
        combined->sandboxFilePath = combinedPdf_.path;
        combined->_sha256 = combinedPdf_.sha256;
        record->combinedDocument = std::move(combined);
        return record;
    }

    /// The earlier copy goes and the new one comes in one transaction.
    Failure store() {
        const auto store = ObjectStore::defaultStore();
        if (!store) return NVM_errorSetupIncomplete();
        const auto record = makeRecord();
        Failure error = store->saveAndWait([&](ManagedObjectContext& context) -> Failure {
            auto earlier = context.fetch<NVMCDEnvelopeTemplate>(requestForTemplateId(*templateId_));
            if (!earlier) return earlier.error();
            removeTemplates(*earlier, context);
            context.insert(record);
            return std::nullopt;
        });
        if (error) return error;
        return isTemplateStored(*templateId_) ? Failure() : NVM_errorTemplateImportFailed();
    }

    const std::shared_ptr<const NVESEnvelopeTemplate> wire_;
    const NVMTemplatesHandler::Completion completion_;
    const std::uint64_t session_;
    const std::shared_ptr<TaskGroup> downloads_;
    std::optional<std::string> templateId_;
    // Owned by the PDF queue, once the downloads have begun.
    Failure error_;
    std::map<std::string, KeptPdf> pdfs_; ///< by document id
    KeptPdf combinedPdf_;
    std::vector<std::string> paths_; ///< of all files written
};

/// Why a fetched template cannot be cached; converts its tabs when it can.
Failure prepare(NVESEnvelopeTemplate& wire, const std::string& templateId) {
    Failure error;
    if (!NVMTemplatesHandler::canCacheEnvelopeTemplate(wire, &error)) return error;
    convertOfflineUnsupportedTextBasedTabsToTextTabs(wire);
    wire.envelopeTemplateDefinition->templateId = templateId;
    return std::nullopt;
}

} // namespace

void NVMTemplatesHandler::cacheTemplateWithPdfsInBackground(
    std::shared_ptr<const NVESEnvelopeTemplate> envelopeTemplate, Completion completion) {
    std::make_shared<TemplateCaching>(std::move(envelopeTemplate), std::move(completion))->start();
}

void NVMTemplatesHandler::cacheTemplateWithId(const std::string& templateId,
                                              const std::function<void()>& started, Completion completion) {
    setCacheStateInProgressForTemplateId(templateId);
    if (started) started();
    auto ended = [templateId, completion = std::move(completion)](Failure error) {
        removeCacheStateInProgressForTemplateId(templateId);
        if (completion) completion(std::move(error));
    };
    NVMApi::getTemplateWithId(
        templateId, [templateId, ended](const std::shared_ptr<NVESEnvelopeTemplate>& wire, Failure error) {
            if (!error && !wire) error = NVM_errorTemplateImportFailed();
            if (!error) error = prepare(*wire, templateId);
            if (error) {
                ended(std::move(error));
            } else {
                cacheTemplateWithPdfsInBackground(wire, ended);
            }
        });
}

} // namespace norvane
