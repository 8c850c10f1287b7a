#include "bench/TemplateJson.h"

#include <norvane/api/NVESTabs.h>
#include <norvane/api/NVESTemplates.h>
#include <norvane/api/RecordJson.h>

namespace norvane::bench {

namespace {

std::shared_ptr<NVESText> textTab(int number) {
    auto tab = std::make_shared<NVESText>();
    for (const Field& field : NVESText::type().fields())
        if (field.kind == FieldKind::Text) field.as<field::Text>(tab.get()) = "false";
    const std::string n = std::to_string(number);
    tab->height = 22;
    tab->width = 140;
    tab->maxLength = 4000;
    tab->tabOrder = number;
    tab->tabLabel = "Policy holder's entry " + n;
    tab->tabId = "5f3a1c9e-7b42-4d0e-9a6b-" + std::string(12 - n.size(), '0') + n;
    tab->value = "Entry " + n;
    tab->font = "helvetica";
    tab->fontColor = "black";
    tab->fontSize = "size11";
    tab->documentId = "1";
    tab->recipientId = "1";
    tab->pageNumber = std::to_string(1 + number / 40);
    tab->xPosition = std::to_string(60 + 37 * (number % 11));
    tab->yPosition = std::to_string(40 + 17 * (number % 41));
    return tab;
}

} // namespace

std::string templateJson(int tabs) {
    NVESEnvelopeTemplate result;
    result.recipients = std::make_shared<NVESRecipients>();
    auto signer = std::make_shared<NVESSigner>();
    signer->recipientId = "1";
    signer->roleName = "Policy holder";
    signer->tabs = std::make_shared<NVESTabs>();
    signer->tabs->textTabs.emplace();
    for (int number = 0; number < tabs; ++number)
        signer->tabs->textTabs->push_back(textTab(number));
    result.recipients->signers = {{signer}};
    return writeRecord(result);
}

} // namespace norvane::bench
