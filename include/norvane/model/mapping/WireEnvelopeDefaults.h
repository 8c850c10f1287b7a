#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>

namespace norvane {

struct NVESEnvelopeDefinition;
struct NVESListCustomField;
struct NVESTextCustomField;

// The host's defaults put into an envelope that is sent online, by the rules of NVMEnvelopeDefinition.

/// Fills the text, company and title tabs of every template role. Nothing when absent.
void applyTabValueDefaults(NVESEnvelopeDefinition& envelope, const std::optional<TabValueDefaults>& defaults);
/// The value that the last matching key gives a tab of that label; `matchingComparision` as
/// NVM_SETUP_TAB_DEFAULTS_COMPARISION lists them.
std::optional<std::string> tabValueForNVESTabLabel(const std::optional<std::string>& label,
                                                   std::uint64_t matchingComparision,
                                                   const TabValueDefaults& defaults);
/// Fields of the envelope that have the name of a given one take its value, the others are added.
void applyCustomFields(NVESEnvelopeDefinition& envelope, const NVMCustomFields* given);
/// The field as it is sent: like-named fields are copied, its Booleans are "true" or "false".
std::shared_ptr<NVESTextCustomField>
createNVESTextCustomFieldFromUserDefinedCustomField(const NVMTextCustomField& field);
std::shared_ptr<NVESListCustomField>
createNVESListCustomFieldFromUserDefinedCustomField(const NVMListCustomField& field);
/// Copies `emailSubject` and `emailBlurb`, each only when present.
void updateSubjectAndNoteForEnvelope(NVESEnvelopeDefinition& envelope,
                                     const std::optional<std::string>& emailSubject,
                                     const std::optional<std::string>& emailBlurb);

} // namespace norvane
