#pragma once

#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Result.h>

#include <memory>
#include <optional>
#include <string>

namespace norvane {

/// An envelope of a cached template, ready for the offline signing screen: its documents linked to fresh
/// files of its own, their bytes read and checked, the host's defaults applied in this order: recipients, tab
/// values, custom fields, subject and blurb; then its tab values checked. Nothing is kept in the cache yet.
/// On any error (not signed in, an identifier that is no UUID, a template not cached, wrong defaults) its
/// files are gone again. Any thread.
Result<std::shared_ptr<NVMEnvelopeDefinition>>
offlineEnvelopeFromTemplate(const std::string& templateId, const NVMEnvelopeDefaults& defaults);

/// Looks for tabs that are required and locked but hold nothing but white space: nobody could fill them. When
/// there are any, posts "NVMFoundReadonlyAndRequiredTabsWithInvalidDefaultsNotification" with their labels,
/// and unlocks them if the configuration says so.
void validateTabsValuesWithTemplateId(NVMEnvelopeDefinition& envelope,
                                      const std::optional<std::string>& templateId);

} // namespace norvane
