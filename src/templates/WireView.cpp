#include "src/templates/WireView.h"

#include <norvane/api/NVESRecipients.h>
#include <norvane/api/NVESTabs.h>

namespace norvane {
namespace {

template <class R>
std::shared_ptr<NVESTabs> tabsOf(const R& recipient) {
    if constexpr (requires { recipient.tabs; }) return recipient.tabs;
    return nullptr;
}

template <class R>
void append(std::vector<WireRecipient>& all, std::uint64_t type, const field::List<R>& list) {
    if (!list) return;
    for (const auto& recipient : *list)
        all.push_back({type, WireView::of(*recipient), tabsOf(*recipient)});
}

template <class R>
void append(std::vector<WireView>& all, const field::List<R>& list) {
    if (!list) return;
    for (const auto& tab : *list)
        all.push_back(WireView::of(*tab));
}

void append(std::vector<WireView>& all, const field::Any& list) {
    const Array* objects = list ? list->asArray() : nullptr;
    if (!objects) return;
    for (const Value& object : *objects)
        all.push_back(WireView::ofObject(object));
}

} // namespace

std::optional<std::string> WireView::text(std::string_view property) const {
    if (object_) {
        const auto found = object_->find(property);
        return found == object_->end() ? std::nullopt : found->second.stringValue();
    }
    const Field* field = type_ ? type_->find(property) : nullptr;
    return field ? valueOf(*field, record_).stringValue() : std::nullopt;
}

bool WireView::hasNonNilValueForSelector(std::string_view property) const {
    if (object_) {
        const auto found = object_->find(property);
        return found != object_->end() && !found->second.isNull();
    }
    const Field* field = type_ ? type_->find(property) : nullptr;
    return field && norvane::hasValue(*field, record_);
}

std::vector<WireRecipient> allRecipients(const NVESRecipients* recipients) {
    std::vector<WireRecipient> all;
    if (!recipients) return all;
    append(all, 1, recipients->agents);
    append(all, 2, recipients->carbonCopies);
    append(all, 3, recipients->certifiedDeliveries);
    append(all, 4, recipients->editors);
    append(all, 6, recipients->inPersonSigners);
    append(all, 5, recipients->intermediaries);
    append(all, 7, recipients->signers);
    return all;
}

std::vector<WireView> allOfflineSupportedTabs(const NVESTabs& tabs) {
    std::vector<WireView> all;
    append(all, tabs.signHereTabs);
    append(all, tabs.initialHereTabs);
    append(all, tabs.fullNameTabs);
    append(all, tabs.dateSignedTabs);
    append(all, tabs.companyTabs);
    append(all, tabs.titleTabs);
    append(all, tabs.textTabs);
    append(all, tabs.checkboxTabs);
    append(all, tabs.radioGroupTabs);
    append(all, tabs.formulaTabs);
    if (tabs.radioGroupTabs) {
        for (const auto& group : *tabs.radioGroupTabs)
            append(all, group->radios);
    }
    return all;
}

std::vector<WireView> allTabs(const NVESTabs& tabs) {
    std::vector<WireView> all = allOfflineSupportedTabs(tabs);
    append(all, tabs.signerAttachmentTabs);
    append(all, tabs.approveTabs);
    append(all, tabs.declineTabs);
    append(all, tabs.envelopeIdTabs);
    append(all, tabs.numberTabs);
    append(all, tabs.ssnTabs);
    append(all, tabs.dateTabs);
    append(all, tabs.zipTabs);
    append(all, tabs.emailTabs);
    append(all, tabs.noteTabs);
    append(all, tabs.listTabs);
    append(all, tabs.firstNameTabs);
    append(all, tabs.lastNameTabs);
    append(all, tabs.emailAddressTabs);
    return all;
}

} // namespace norvane
