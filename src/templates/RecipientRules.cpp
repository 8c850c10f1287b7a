#include "src/templates/RecipientRules.h"

#include <norvane/sdk/Errors.h>
#include <norvane/templates/TabConversion.h>
#include <norvane/templates/TemplateRules.h>

namespace norvane {
namespace {

bool isFilled(const WireView& view, std::string_view property) {
    const auto text = view.text(property);
    return text && !text->empty();
}

std::vector<std::string> propertiesWithValue(const WireView& view, const std::vector<std::string>& names) {
    std::vector<std::string> offending;
    for (const std::string& name : names) {
        if (view.hasNonNilValueForSelector(name)) offending.push_back(name);
    }
    return offending;
}

std::optional<std::string>
firstForbiddenValue(const WireView& view, const std::vector<std::pair<std::string, std::string>>& forbidden) {
    for (const auto& [name, value] : forbidden) {
        if (view.hasValue(value, name)) return name;
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidTabValue(const std::vector<WireView>& tabs,
                                           const WireRecipient& recipient) {
    for (const WireView& tab : tabs) {
        if (auto error = anyInvalidAttributeValueForTab(tab, nameOfRecipient(recipient))) return error;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> nameOfRecipient(const WireRecipient& recipient) {
    if (auto name = recipient.view.text("name")) return name;
    return recipient.view.text("signerName");
}

std::optional<NVMError> anyInvalidOfflineAttributeForRecipient(const WireRecipient& recipient) {
    std::vector<std::string> names = invalidOfflineAttributesForRecipients();
    const auto& always = invalidAttributesForRecipients();
    names.insert(names.end(), always.begin(), always.end());
    const auto offending = propertiesWithValue(recipient.view, names);
    if (!offending.empty()) {
        return NVM_errorTemplateHasInvalidOfflineRecipientAttributes(offending, nameOfRecipient(recipient));
    }
    const auto forbidden = firstForbiddenValue(recipient.view, invalidOfflineAttributeValuesForRecipients());
    if (!forbidden) return std::nullopt;
    return NVM_errorTemplateHasInvalidOfflineRecipientAttributes({*forbidden}, nameOfRecipient(recipient));
}

std::optional<NVMError> anyInvalidOnlineAttributeForRecipient(const WireRecipient& recipient) {
    const auto offending = propertiesWithValue(recipient.view, invalidAttributesForRecipients());
    if (offending.empty()) return std::nullopt;
    return NVM_errorTemplateHasInvalidOfflineRecipientAttributes(offending, nameOfRecipient(recipient));
}

std::optional<NVMError> anyInvalidOfflineRoleSettingForRecipient(const WireRecipient& recipient) {
    const WireView& view = recipient.view;
    if (recipient.isInPersonSigner()) {
        if (!isFilled(view, "roleName")) return NVM_errorTemplateInpersonRecipientMissingRole();
        if (isFilled(view, "hostName") || isFilled(view, "hostEmail") || isFilled(view, "signerName")) {
            return NVM_errorTemplateOnlyInpersonRecipientAllowRole();
        }
        return std::nullopt;
    }
    if (isFilled(view, "roleName")) return std::nullopt;
    if (!isFilled(view, "name") || !isFilled(view, "email")) {
        return NVM_errorTemplateRecipientRoleNameMissing();
    }
    if (isFilled(view, "signingGroupName")) return NVM_errorTemplateWithSignGroupIsNotSupported();
    return std::nullopt;
}

std::optional<NVMError> anyInvalidOfflineRoleSettingForRecipient(const WireRecipient& recipient,
                                                                 const std::vector<WireRecipient>& others) {
    if (!isFilled(recipient.view, "roleName")) return std::nullopt;
    for (const WireRecipient& other : others) {
        if (recipient.view.isSame(other.view) ||
            !recipient.view.isEqualOrBothAreNil(other.view, "roleName")) {
            continue;
        }
        const bool alike = recipient.recipientType == other.recipientType &&
                           recipient.view.isEqualOrBothAreNil(other.view, "name") &&
                           recipient.view.isEqualOrBothAreNil(other.view, "email") &&
                           recipient.view.isEqualOrBothAreNil(other.view, "signerName");
        if (!alike) return NVM_errorTemplateRecipientsHasConflictingRoleNames();
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidOfflineTabForRecipient(const WireRecipient& recipient) {
    if (!recipient.tabs) return std::nullopt;
    const auto unsupported = unsupportedOfflineTabTypes(*recipient.tabs);
    if (!unsupported.empty()) {
        return NVM_errorTemplateHasUnsupportedTabTypes(unsupported, nameOfRecipient(recipient));
    }
    for (const WireView& tab : allOfflineSupportedTabs(*recipient.tabs)) {
        const auto offending = propertiesWithValue(tab, invalidOfflineAttributesForRecipientTabs());
        if (!offending.empty()) {
            return NVM_errorTemplateHasInvalidRecipientTabAttributes(offending, nameOfRecipient(recipient));
        }
        if (auto error = anyInvalidAttributeValueForTab(tab, nameOfRecipient(recipient))) return error;
    }
    return std::nullopt;
}

std::optional<NVMError> anyInvalidOnlineTabForRecipient(const WireRecipient& recipient) {
    if (!recipient.tabs) return std::nullopt;
    const auto unsupported = unsupportedOnlineTabTypes(*recipient.tabs);
    if (!unsupported.empty()) {
        return NVM_errorTemplateHasUnsupportedTabTypes(unsupported, nameOfRecipient(recipient));
    }
    return anyInvalidTabValue(allTabs(*recipient.tabs), recipient);
}

std::optional<NVMError> anyInvalidAttributeValueForTab(const WireView& tab,
                                                       const std::optional<std::string>& recipientName) {
    const auto forbidden = firstForbiddenValue(tab, invalidAttributeValuesForRecipientTabs());
    if (!forbidden) return std::nullopt;
    return NVM_errorTemplateHasInvalidRecipientTabAttributes({*forbidden}, recipientName);
}

} // namespace norvane
