#include "src/templates/WireView.h"

#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/RecordJson.h>
#include <norvane/platform/Json.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/templates/TabConversion.h>

namespace norvane {
namespace {

template <class R>
bool isFilled(const field::List<R>& list) {
    return list && !list->empty();
}

const Array& objectsOf(const field::Any& list) {
    static const Array none;
    const Array* objects = list ? list->asArray() : nullptr;
    return objects ? *objects : none;
}

bool isFilled(const field::Any& list) { return !objectsOf(list).empty(); }

template <class R>
std::shared_ptr<NVESText> textTabFromRecord(const R& tab) {
    auto text = std::make_shared<NVESText>();
    copyLikeNamedFields(R::type(), &tab, NVESText::type(), text.get());
    if (shouldSetMergeFieldAsNil()) text->mergeField.reset();
    return text;
}

/// A converted tab takes every field of a text tab but its height and its place in the tab order.
std::shared_ptr<NVESText> textTabFromObject(const Value& object) {
    const auto read = readRecord<NVESText>(writeJson(object));
    auto text = read ? *read : std::make_shared<NVESText>();
    text->height.reset();
    text->tabOrder.reset();
    if (shouldSetMergeFieldAsNil()) text->mergeField.reset();
    return text;
}

} // namespace

bool hasEmailZipNumberDateTabs(const NVESTabs& tabs) {
    return isFilled(tabs.numberTabs) || isFilled(tabs.zipTabs) || isFilled(tabs.emailTabs) ||
           isFilled(tabs.dateTabs);
}

bool isZipTabsConversionPending() {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_CONVERT_ZIPTABS_TO_TEXTTABS);
}

bool isNumberTabsConversionPending() {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_CONVERT_NUMBERTABS_TO_TEXTTABS);
}

bool isEmailTabsConversionPending() {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_CONVERT_EMAILTABS_TO_TEXTTABS);
}

bool isDateTabsConversionPending() {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_CONVERT_DATETABS_TO_TEXTTABS);
}

bool shouldSetMergeFieldAsNil() {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_SET_MERGEFIELD_AS_NIL_FOR_TABS_CONVERSION);
}

void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESTabs& tabs) {
    if (!hasEmailZipNumberDateTabs(tabs)) return;
    std::vector<std::shared_ptr<NVESText>> texts;
    if (tabs.zipTabs && isZipTabsConversionPending()) {
        for (const auto& tab : *tabs.zipTabs)
            texts.push_back(textTabWithNVESZip(*tab));
    }
    if (isNumberTabsConversionPending()) {
        for (const Value& tab : objectsOf(tabs.numberTabs))
            texts.push_back(textTabWithNumber(tab));
    }
    if (tabs.emailTabs && isEmailTabsConversionPending()) {
        for (const auto& tab : *tabs.emailTabs)
            texts.push_back(textTabWithNVESEmail(*tab));
    }
    if (isDateTabsConversionPending()) {
        for (const Value& tab : objectsOf(tabs.dateTabs))
            texts.push_back(textTabWithDate(tab));
    }
    if (tabs.textTabs) texts.insert(texts.end(), tabs.textTabs->begin(), tabs.textTabs->end());
    tabs.textTabs = std::move(texts);
}

void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESRecipients& recipients) {
    for (const WireRecipient& recipient : allRecipients(&recipients)) {
        if (recipient.tabs) convertOfflineUnsupportedTextBasedTabsToTextTabs(*recipient.tabs);
    }
}

void convertOfflineUnsupportedTextBasedTabsToTextTabs(NVESEnvelopeTemplate& envelopeTemplate) {
    if (envelopeTemplate.recipients) {
        convertOfflineUnsupportedTextBasedTabsToTextTabs(*envelopeTemplate.recipients);
    }
}

std::shared_ptr<NVESText> textTabWithNVESZip(const NVESZip& zip) { return textTabFromRecord(zip); }

std::shared_ptr<NVESText> textTabWithNVESEmail(const NVESEmail& email) { return textTabFromRecord(email); }

std::shared_ptr<NVESText> textTabWithNumber(const Value& number) { return textTabFromObject(number); }

std::shared_ptr<NVESText> textTabWithDate(const Value& date) { return textTabFromObject(date); }

std::vector<std::string> unsupportedOfflineTabTypes(const NVESTabs& tabs) {
    const std::pair<const char*, bool> lists[] = {
        {"AttachmentTabs", isFilled(tabs.signerAttachmentTabs)},
        {"ApproveTabs", isFilled(tabs.approveTabs)},
        {"declineTabs", isFilled(tabs.declineTabs)},
        {"envelopeIdTabs", isFilled(tabs.envelopeIdTabs)},
        {"ssnTabs", isFilled(tabs.ssnTabs)},
        {"noteTabs", isFilled(tabs.noteTabs)},
        {"firstNameTabs", isFilled(tabs.firstNameTabs)},
        {"lastNameTabs", isFilled(tabs.lastNameTabs)},
        {"emailAddressTabs", isFilled(tabs.emailAddressTabs)},
        {"listTabs", isFilled(tabs.listTabs)},
        {"numberTabs", isFilled(tabs.numberTabs) && !isNumberTabsConversionPending()},
        {"emailTabs", isFilled(tabs.emailTabs) && !isEmailTabsConversionPending()},
        {"zipTabs", isFilled(tabs.zipTabs) && !isZipTabsConversionPending()},
        {"dateTabs", isFilled(tabs.dateTabs) && !isDateTabsConversionPending()},
    };
    std::vector<std::string> names;
    for (const auto& [name, isUnsupported] : lists) {
        if (isUnsupported) names.emplace_back(name);
    }
    return names;
}

std::vector<std::string> unsupportedOnlineTabTypes(const NVESTabs&) { return {}; }

bool hasTabs(const NVESTabs& tabs) { return !allTabs(tabs).empty(); }

} // namespace norvane
