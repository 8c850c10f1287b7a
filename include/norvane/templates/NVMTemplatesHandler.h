#pragma once

#include <norvane/platform/Data.h>
#include <norvane/platform/Result.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace norvane {

class ManagedObjectContext;
struct NVESEnvelopeTemplate;
struct NVMCDEnvelopeTemplate;
struct NVMEnvelopeDefinition;
struct NVMEnvelopeTemplate;

/// Whether a template is stored, and being stored.
using NVMTemplateCacheState = std::uint64_t;
inline constexpr NVMTemplateCacheState NVMTemplateCacheStateNone = 0;
inline constexpr NVMTemplateCacheState NVMTemplateCacheStateInProgress = 1; ///< for the first time
inline constexpr NVMTemplateCacheState NVMTemplateCacheStateCachedAndUpdating = 2;
inline constexpr NVMTemplateCacheState NVMTemplateCacheStateCached = 3;

/// Keeps templates on the device. No instances; any thread may call, and what reads or writes the store
/// blocks. None of these asks whether the kit is set up and signed in: NVMTemplatesManager does, for the
/// host.
///
/// A stored template is whole or not there: its PDFs are downloaded, checked and written first, then one
/// transaction puts the new copy in the place of the earlier one, and the earlier one's files go after that.
class NVMTemplatesHandler {
  public:
    using Completion = std::function<void(Failure)>;

    NVMTemplatesHandler() = delete;

    /// Opens the kit's store, which also brings an older one up to date.
    static Failure setup();
    /// The level of the store: 3 and all bits set as they are, every other level as 1.
    static void setLoggingLevel(std::uint64_t level);
    static std::uint64_t storeLoggingLevel();

    // What is being stored, by template id. A template that is being stored twice at once stays in progress
    // until both ended.
    static std::set<std::string> templateIdsCacheUnderProgress();
    static void setCacheStateInProgressForTemplateId(const std::string& templateId);
    static void removeCacheStateInProgressForTemplateId(const std::string& templateId);
    static void removeCacheStateInProgressForTemplates();
    static NVMTemplateCacheState cacheStateOfTemplateId(const std::string& templateId);

    /// Fetches the template, tests it by the offline rules, converts its tabs and stores it with its PDFs.
    /// `started` (may be empty) runs inside the call. The completion runs once, later, on a queue of the
    /// kit's: with the service's error, a broken rule, a PDF that does not open, or the store's error. After
    /// an error an earlier copy is still whole.
    static void cacheTemplateWithId(const std::string& templateId, const std::function<void()>& started,
                                    Completion completion);
    /// Downloads the template's PDFs and stores it. The completion as above.
    static void
    cacheTemplateWithPdfsInBackground(std::shared_ptr<const NVESEnvelopeTemplate> envelopeTemplate,
                                      Completion completion);

    /// Whether a downloaded template passes the rules of offline signing; `error` (may be null) says what
    /// does not.
    static bool canCacheEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate, Failure* error);
    /// The same with the rules of online signing.
    static bool canOnlineSignEnvelopeTemplate(const NVESEnvelopeTemplate& envelopeTemplate, Failure* error);

    // Stored templates; those that cannot be read count as not stored.
    static std::shared_ptr<NVMCDEnvelopeTemplate> findTemplateWithId(const std::string& templateId,
                                                                     const ManagedObjectContext& inContext);
    /// Null when it is not stored. With PDFs each document that is as it was stored carries its bytes.
    static std::shared_ptr<NVMEnvelopeTemplate> cachedTemplateWithId(const std::string& templateId,
                                                                     bool includePdfs);
    static std::vector<std::shared_ptr<NVMEnvelopeTemplate>> cachedTemplates();
    static std::vector<std::string> cachedTemplateIds();
    static std::size_t cachedTemplateCount();
    /// Removes the template and then its files. One that is not stored is no error.
    static Failure removeCachedTemplateWithId(const std::string& templateId);
    static Failure removeCachedTemplates();

    /// Relative paths of the stored PDFs; absent ones are left out.
    static std::optional<std::string>
    getCombinedPdfPathForTemplate(const NVMCDEnvelopeTemplate& envelopeTemplate);
    static std::vector<std::string> getPdfPathsForTemplate(const NVMCDEnvelopeTemplate& envelopeTemplate);
    static std::vector<std::string> pdfPathsWithPathsArray(std::vector<std::string> paths,
                                                           const std::optional<std::string>& andPath);
    /// Removes files that no stored template names.
    static void deleteCachedPdfs(const std::vector<std::string>& paths);

    /// A new envelope with the stored template's content and files of its own for its documents and the
    /// combined one: they share nothing with the template, which may be refreshed or removed meanwhile. An
    /// error when the template is not stored, a document is not what was stored, or a file cannot be made;
    /// nothing is left then.
    ///
    /// `pdfToInsert` goes in so that `insertAtPosition` pages of the whole envelope stay ahead of it, 0
    /// meaning ahead of all and a number beyond the end after all; the tabs behind it move on by its pages. A
    /// document that carries digital signatures takes no insertion: an error. With `includePdfs` the
    /// documents carry their bytes.
    static Result<std::shared_ptr<NVMEnvelopeDefinition>>
    createEnvelopeFromTemplateWithId(const std::string& templateId, const std::optional<Data>& pdfToInsert,
                                     std::size_t insertAtPosition, bool includePdfs);
};

} // namespace norvane
