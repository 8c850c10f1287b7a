#include "src/templates/RecipientRules.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/sdk/Errors.h>
#include <norvane/templates/TabConversion.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {

const std::vector<std::string>& invalidAttributesForRecipients() {
    static const std::vector<std::string> names{"signingGroupName", "recipientSignatureProviders"};
    return names;
}

const std::vector<std::string>& invalidOfflineAttributesForRecipients() {
    static const std::vector<std::string> names{"idCheckConfigurationName", "accessCode",
                                                "excludedDocuments"};
    return names;
}

const std::vector<std::pair<std::string, std::string>>& invalidOfflineAttributeValuesForRecipients() {
    static const std::vector<std::pair<std::string, std::string>> values{{"signInEachLocation", "true"},
                                                                         {"requireSignOnPaper", "true"},
                                                                         {"requireIdLookup", "true"},
                                                                         {"requireSignerCertificate", "true"},
                                                                         {"inPersonSigningType", "notary"}};
    return values;
}

const std::vector<std::string>& invalidOfflineAttributesForRecipientTabs() {
    static const std::vector<std::string> names{
        "conditionalParentValue",   "conditionalParentLabel", "anchorHorizontalAlignment",
        "anchorCaseSensitive",      "anchorXOffset",          "anchorString",
        "anchorIgnoreIfNotPresent", "anchorYOffset",          "anchorUnits"};
    return names;
}

const std::vector<std::pair<std::string, std::string>>& invalidAttributeValuesForRecipientTabs() {
    static const std::vector<std::pair<std::string, std::string>> values{{"isPaymentAmount", "true"},
                                                                         {"stampType", "stamp"}};
    return values;
}

std::optional<NVMError> anyMissingRootAttributesInTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    const auto& definition = envelopeTemplate.envelopeTemplateDefinition;
    if (!definition || definition->pageCount.value_or(0) == 0) return NVM_errorTemplateHasNoDocuments();
    const auto& recipients = envelopeTemplate.recipients;
    if (!recipients || Value(recipients->recipientCount).integerValue() == 0) {
        return NVM_errorTemplateHasNoRecipients();
    }
    return std::nullopt;
}

bool hasFreeFormSigners(const NVESEnvelopeTemplate& envelopeTemplate) {
    for (const WireRecipient& recipient : allRecipients(envelopeTemplate.recipients.get())) {
        if (!recipient.isSigner() && !recipient.isInPersonSigner()) continue;
        if (!recipient.tabs || !hasTabs(*recipient.tabs)) return true;
    }
    return false;
}

bool isSupplementalDocument(const NVESDocument& document) { return document.display == "inline"; }

std::optional<NVMError> anyInvalidDocumentForDocument(const NVESDocument& document) {
    if (!isSupplementalDocument(document)) return std::nullopt;
    return NVM_errorCacheTemplateHasUnsupportedSupplementalDocument();
}

std::optional<NVMError> anyInvalidDocumentInTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    if (!envelopeTemplate.documents) return std::nullopt;
    for (const auto& document : *envelopeTemplate.documents) {
        if (auto error = anyInvalidDocumentForDocument(*document)) return error;
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidOfflineRecipientInTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    const auto recipients = allRecipients(envelopeTemplate.recipients.get());
    for (const WireRecipient& recipient : recipients) {
        if (auto error = anyInvalidOfflineAttributeForRecipient(recipient)) return error;
        if (auto error = anyInvalidOfflineRoleSettingForRecipient(recipient)) return error;
        if (auto error = anyInvalidOfflineRoleSettingForRecipient(recipient, recipients)) return error;
        if (auto error = anyInvalidOfflineTabForRecipient(recipient)) return error;
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidOnlineRecipientInTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    for (const WireRecipient& recipient : allRecipients(envelopeTemplate.recipients.get())) {
        if (auto error = anyInvalidOnlineTabForRecipient(recipient)) return error;
        if (auto error = anyInvalidOnlineAttributeForRecipient(recipient)) return error;
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidListCustomFieldInTemplate(const NVESEnvelopeTemplate& envelopeTemplate) {
    const auto& customFields = envelopeTemplate.customFields;
    if (!customFields || !customFields->listCustomFields) return std::nullopt;
    for (const auto& field : *customFields->listCustomFields) {
        if (field->required == "true" && field->value.value_or("").empty()) {
            return NVM_errorTemplateHasInvalidListCustomFields();
        }
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidRoleForCaching(const NVESEnvelopeTemplate& envelopeTemplate) {
    const auto recipients = allRecipients(envelopeTemplate.recipients.get());
    for (const WireRecipient& recipient : recipients) {
        if (recipient.view.hasValue("true", "requireSignerCertificate")) {
            return NVM_errorTemplateHasRecipientRequiredDigitalCertificate();
        }
        if (recipient.isInPersonSigner()) {
            if (auto error = anyInvalidOfflineRoleSettingForRecipient(recipient)) return error;
        }
        if (!recipient.view.text("signingGroupName").value_or("").empty()) {
            return NVM_errorTemplateWithSignGroupIsNotSupported();
        }
        if (auto error = anyInvalidOfflineRoleSettingForRecipient(recipient, recipients)) return error;
    }
    return std::nullopt;
}

} // namespace norvane
