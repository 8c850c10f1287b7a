#pragma once

#include <norvane/model/NVMEnvelopeTemplate.h>
#include <norvane/platform/Result.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvane {

struct NVMCDEnvelopeDefinition;
struct NVMEnvelopeDefaults;
struct NVMRecipientDefault;

/// Tab label (or a piece of one) to value, in the order in which the host gave them.
using TabValueDefaults = std::vector<std::pair<std::string, std::optional<std::string>>>;

/// An envelope being created or signed. The fields are those of NVMEnvelopeTemplate.
struct NVMEnvelopeDefinition : NVMEnvelopeTemplate {
    static const RecordType& type();

    NVMEnvelopeDefinition() = default;
    /// An independent copy, with the bytes of its documents only when asked for.
    NVMEnvelopeDefinition(const NVMEnvelopeTemplate& envelope, bool includePdfs);
    NVMEnvelopeDefinition(const NVMCDEnvelopeTemplate& stored, bool includePdfs);
    /// Without documents the record has none, absent, not empty; with them their bytes are read from the
    /// files.
    NVMEnvelopeDefinition(const NVMCDEnvelopeDefinition& stored, bool withDocuments);

    /// By the integer value of `order`, equal ones as they stand; an order that is no number counts as 0.
    DocumentList sortedDocumentsByOrder() const;
    /// Joins the documents, in that order, into one PDF and makes it the `combinedDocument`, with its bytes
    /// and without a file. Documents without bytes are read from their files; a single one is taken as it is,
    /// which keeps its digital signatures valid. Blocks while it works; the completion follows on the main
    /// queue, with the error when there are no documents or one cannot be read or joined. Nothing changes
    /// then.
    void createCombinedDocumentWithCompletion(std::function<void(Failure)> completion);

    void assignLabelsAndIDsToTabs() { assignLabelsAndIDsToTabsWithForceAssign(false); }
    /// Gives tabs without one a label ("Text tab 3") and an id ("3"), numbered through all signers in the
    /// order of `allSigners`. What a tab has, be it empty, is never replaced, by force or not.
    void assignLabelsAndIDsToTabsWithForceAssign(bool force);

    /// Whether the tab still lacks a value; see NVMTab::lacksValue. Never for type 0.
    bool getTagValue(NVMTab& tab) const;
    /// The tabs that lack a value; a radio does while no radio of its group is selected. Absent where
    /// `tagsForSigner` is.
    std::optional<TabList>
    remainingTagsIncludingOptionalForRecipient(const std::shared_ptr<NVMRecipient>& recipient) const;
    /// Those of them that are required; absent, not empty, when none is left.
    std::optional<TabList>
    remainingRequiredTagsForRecipient(const std::shared_ptr<NVMRecipient>& recipient) const;
    /// The required tabs, less full name and date signed, which fill themselves. Absent where `tagsForSigner`
    /// is.
    std::optional<TabList>
    requiredNavigableTagsForRecipient(const std::shared_ptr<NVMRecipient>& recipient) const;

    /// Whether the set-up asks for tabs that are locked and required, but have no usable value, to be
    /// unlocked.
    bool isReadonlyAndRequiredTextTabsToEditableConversionPending() const;

    /// By role name, or by id where the entry's selector type is 0; null when none or several match.
    std::shared_ptr<NVMRecipient> recipientWithDefault(const NVMRecipientDefault& recipientDefault) const;
    /// Applies the entries in order. An error ends it at once; entries already applied stay applied,
    /// deliberately.
    Failure
    updateRecipientsWithRecipientDefaults(const std::vector<std::shared_ptr<NVMRecipientDefault>>& defaults);
    /// Fills text, company and title tabs whose label matches a key as the set-up says; where several match,
    /// the last wins. Nothing when absent.
    void applyTabValueDefaults(const std::optional<TabValueDefaults>& defaults);
    /// The step of one key; `matchingComparision` as NVM_SETUP_TAB_DEFAULTS_COMPARISION lists them. With 0
    /// the key plays no part, deliberately: every label is looked up.
    void applyDefaultsToTabsWithTabLabel(const std::string& key, std::uint64_t matchingComparision,
                                         const TabValueDefaults& defaults);
    /// Takes the record as it is when there is none yet; else merges its fields into those of the same name
    /// and adds the others.
    void applyCustomFields(const std::shared_ptr<NVMCustomFields>& given);
    /// Copies `emailSubject` and `emailBlurb`, each only when present.
    void updateSubjectAndNoteForEnvelope(const NVMEnvelopeDefaults& defaults);
};

} // namespace norvane
