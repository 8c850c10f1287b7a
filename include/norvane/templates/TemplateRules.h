#pragma once

#include <norvane/platform/NVMError.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvane {

struct NVESDocument;
struct NVESEnvelopeTemplate;
struct NVMCustomFields;
struct NVMEnvelopeTemplate;

// The tables behind the template rules: names of wire properties.

/// A recipient fails, online and offline, when one has a value.
const std::vector<std::string>& invalidAttributesForRecipients();
/// A recipient fails offline, besides the above.
const std::vector<std::string>& invalidOfflineAttributesForRecipients();
/// A recipient fails offline when one holds exactly this value; tested in this order.
const std::vector<std::pair<std::string, std::string>>& invalidOfflineAttributeValuesForRecipients();
/// A tab fails offline when one has a value.
const std::vector<std::string>& invalidOfflineAttributesForRecipientTabs();
/// A tab fails, online and offline, when one holds exactly this value.
const std::vector<std::pair<std::string, std::string>>& invalidAttributeValuesForRecipientTabs();

// Each rule answers why the template breaks it, or nothing. Recipients are taken in the order agents, carbon
// copies, certified deliveries, editors, in-person signers, intermediaries, signers; the first fault found
// counts.

/// "Template has no documents." for 0 pages, "Template has no recipients." for none.
std::optional<NVMError> anyMissingRootAttributesInTemplate(const NVESEnvelopeTemplate& envelopeTemplate);
/// A signer or in-person signer without any tab signs wherever he likes, which this kit cannot show.
bool hasFreeFormSigners(const NVESEnvelopeTemplate& envelopeTemplate);
/// Whether the document is only shown, as an inline supplement.
bool isSupplementalDocument(const NVESDocument& document);
std::optional<NVMError> anyInvalidDocumentForDocument(const NVESDocument& document);
std::optional<NVMError> anyInvalidDocumentInTemplate(const NVESEnvelopeTemplate& envelopeTemplate);
/// Attributes, role setting, role against the other recipients, tabs.
std::optional<NVMError> anyInvalidOfflineRecipientInTemplate(const NVESEnvelopeTemplate& envelopeTemplate);
/// Tabs, then attributes.
std::optional<NVMError> anyInvalidOnlineRecipientInTemplate(const NVESEnvelopeTemplate& envelopeTemplate);
/// A required list custom field without a value.
std::optional<NVMError> anyInvalidListCustomFieldInTemplate(const NVESEnvelopeTemplate& envelopeTemplate);

// Whether the envelope that the host's custom fields would make has a value in every required one: the
// template's own or the host's of that name. `userDefined` may be null: nothing is given. The text fields are
// tested first; the error says which kind lacks a value.
std::optional<NVMError> anyCustomFieldWithoutValue(const NVMEnvelopeTemplate& envelopeTemplate,
                                                   const NVMCustomFields* userDefined);
std::optional<NVMError> anyCustomFieldWithoutValue(const NVESEnvelopeTemplate& envelopeTemplate,
                                                   const NVMCustomFields* userDefined);

/// Rules that `NVMTemplatesManager::canCacheEnvelopeTemplate` tests ahead of the rest: signers that need a
/// digital certificate, in-person roles, signing groups, conflicting roles.
std::optional<NVMError> anyInvalidRoleForCaching(const NVESEnvelopeTemplate& envelopeTemplate);

} // namespace norvane
