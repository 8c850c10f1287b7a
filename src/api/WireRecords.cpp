#include <norvane/api/NVESAccounts.h>
#include <norvane/api/NVESEnvelopes.h>
#include <norvane/api/NVESPassedThrough.h>
#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/NVESViews.h>
#include <norvane/api/RecordJson.h>

#include <map>

namespace norvane {
namespace {

constexpr const RecordType& (*kWireRecords[])() = {&NVESAccountInformation::type,
                                                   &NVESAccountSettingsInformation::type,
                                                   &NVESAgent::type,
                                                   &NVESApprove::type,
                                                   &NVESAttachment::type,
                                                   &NVESAuthenticationStatus::type,
                                                   &NVESBccEmailAddress::type,
                                                   &NVESBulkEnvelopeStatus::type,
                                                   &NVESCarbonCopy::type,
                                                   &NVESCertifiedDelivery::type,
                                                   &NVESCheckbox::type,
                                                   &NVESCompany::type,
                                                   &NVESCompositeTemplate::type,
                                                   &NVESConsumerDisclosure::type,
                                                   &NVESCustomFields::type,
                                                   &NVESDateSigned::type,
                                                   &NVESDecline::type,
                                                   &NVESDocument::type,
                                                   &NVESEditor::type,
                                                   &NVESEmail::type,
                                                   &NVESEmailAddress::type,
                                                   &NVESEmailSettings::type,
                                                   &NVESEnvelope::type,
                                                   &NVESEnvelopeDefinition::type,
                                                   &NVESEnvelopeId::type,
                                                   &NVESEnvelopeSummary::type,
                                                   &NVESEnvelopeTemplate::type,
                                                   &NVESEnvelopeTemplateDefinition::type,
                                                   &NVESEnvelopeTemplateResult::type,
                                                   &NVESEnvelopeTemplateResults::type,
                                                   &NVESEnvelopeTransactionStatus::type,
                                                   &NVESEnvelopeUpdateSummary::type,
                                                   &NVESEnvelopesInformation::type,
                                                   &NVESErrorDetails::type,
                                                   &NVESEventNotification::type,
                                                   &NVESExpirations::type,
                                                   &NVESFirstName::type,
                                                   &NVESFolder::type,
                                                   &NVESFoldersResponse::type,
                                                   &NVESFormulaTab::type,
                                                   &NVESFullName::type,
                                                   &NVESIdCheckInformationInput::type,
                                                   &NVESInPersonSigner::type,
                                                   &NVESInitialHere::type,
                                                   &NVESIntermediary::type,
                                                   &NVESLastName::type,
                                                   &NVESList::type,
                                                   &NVESListCustomField::type,
                                                   &NVESListItem::type,
                                                   &NVESLockInformation::type,
                                                   &NVESLoginAccount::type,
                                                   &NVESLoginInformation::type,
                                                   &NVESMatchBox::type,
                                                   &NVESMergeField::type,
                                                   &NVESNameValue::type,
                                                   &NVESNote::type,
                                                   &NVESNotification::type,
                                                   &NVESOfflineAttributes::type,
                                                   &NVESRadio::type,
                                                   &NVESRadioGroup::type,
                                                   &NVESRecipientEmailNotification::type,
                                                   &NVESRecipientPhoneAuthentication::type,
                                                   &NVESRecipientSAMLAuthentication::type,
                                                   &NVESRecipientSMSAuthentication::type,
                                                   &NVESRecipientSignatureInformation::type,
                                                   &NVESRecipientUpdateResponse::type,
                                                   &NVESRecipientViewRequest::type,
                                                   &NVESRecipients::type,
                                                   &NVESRecipientsUpdateSummary::type,
                                                   &NVESReminders::type,
                                                   &NVESReturnUrlRequest::type,
                                                   &NVESSignHere::type,
                                                   &NVESSigner::type,
                                                   &NVESSignerAttachment::type,
                                                   &NVESSocialAuthentication::type,
                                                   &NVESSsn::type,
                                                   &NVESTab::type,
                                                   &NVESTabs::type,
                                                   &NVESTemplateRole::type,
                                                   &NVESText::type,
                                                   &NVESTextCustomField::type,
                                                   &NVESTitle::type,
                                                   &NVESUserInfo::type,
                                                   &NVESUserSettingsInformation::type,
                                                   &NVESViewUrl::type,
                                                   &NVESZip::type,
#define NVES_PASSED_THROUGH_TYPE(R) &R::type,
                                                   NVES_PASSED_THROUGH_RECORDS(NVES_PASSED_THROUGH_TYPE)
#undef NVES_PASSED_THROUGH_TYPE
};

const std::map<std::string_view, const RecordType*>& typesByName() {
    static const auto byName = [] {
        std::map<std::string_view, const RecordType*> types;
        for (const auto type : kWireRecords)
            types.emplace(type().name(), &type());
        return types;
    }();
    return byName;
}

} // namespace

const RecordType* wireRecordType(std::string_view name) {
    const auto found = typesByName().find(name);
    return found == typesByName().end() ? nullptr : found->second;
}

std::vector<const RecordType*> wireRecordTypes() {
    std::vector<const RecordType*> types;
    for (const auto& [name, type] : typesByName())
        types.push_back(type);
    return types;
}

} // namespace norvane
