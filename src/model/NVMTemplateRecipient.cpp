#include <norvane/model/NVMTemplateRecipient.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/NVMCredentials.h>

#include <algorithm>

namespace norvane {

NORVANE_TABLE(NVMTemplateRecipient, NVM_TEMPLATE_RECIPIENT_FIELDS)

namespace {

using Text = std::optional<std::string>;

constexpr std::string_view kSenderRoles[] = {"sender", "self", "me"};
constexpr std::int64_t kAllDisabled = NVMTemplateRecipientNameDisabled | NVMTemplateRecipientEmailDisabled |
                                      NVMTemplateRecipientInPersonSignerNameDisabled;

bool isEmpty(const Text& text) { return !text || text->empty(); }

/// The recipient's own text of that name, trimmed; absent also where its kind has no such field.
Text trimmedText(const NVMRecipient& recipient, std::string_view name) {
    const Field* field = recipient.recordType().find(name);
    if (!field || field->kind != FieldKind::Text) return std::nullopt;
    const auto& text = field->as<field::Text>(static_cast<const void*>(&recipient));
    if (!text) return std::nullopt;
    return std::string(trimmed(*text));
}

} // namespace

NVMTemplateRecipient::NVMTemplateRecipient(const NVMRecipient& recipient)
    : recipientType(recipient.recipientType)
    , ID(trimmedText(recipient, "recipientId"))
    , roleName(trimmedText(recipient, "roleName"))
    , inPersonSignerName(trimmedText(recipient, "signerName"))
    , inPersonSignerEmail(trimmedText(recipient, "signerEmail"))
    , routingOrder(recipient.routingOrder)
    , editDisabled(recipient.templateLocked) {
    const bool isInPerson = recipientType == NVMRecipientTypeInPersonSigner;
    recipientName = trimmedText(recipient, isInPerson ? "hostName" : "name");
    recipientEmail = trimmedText(recipient, isInPerson ? "hostEmail" : "email");
    if (!isEmpty(recipientName)) disabledProperties |= NVMTemplateRecipientNameDisabled;
    if (!isEmpty(recipientEmail)) disabledProperties |= NVMTemplateRecipientEmailDisabled;
    if (!isInPerson || !isEmpty(inPersonSignerName))
        disabledProperties |= NVMTemplateRecipientInPersonSignerNameDisabled;
    if (!isSenderRole() || !isEmpty(recipientName) || !isEmpty(recipientEmail)) return;
    if (const auto account = NVMCredentials::primaryCredentials()) {
        recipientName = account->userName;
        recipientEmail = account->email;
    }
}

bool NVMTemplateRecipient::isSenderRole() const {
    return std::any_of(std::begin(kSenderRoles), std::end(kSenderRoles), [&](std::string_view role) {
        return nvm_caseAndDiacriticInsensitivelyMatches(roleName, std::string(role)) ||
               nvm_caseAndDiacriticInsensitivelyMatches(roleName, "@" + std::string(role));
    });
}

bool NVMTemplateRecipient::isEditable() const { return !editDisabled && disabledProperties != kAllDisabled; }

bool NVMTemplateRecipient::isCompleted() const {
    if (isEmpty(recipientName) || isEmpty(recipientEmail)) return false;
    return recipientType != NVMRecipientTypeInPersonSigner || !isEmpty(inPersonSignerName);
}

} // namespace norvane
