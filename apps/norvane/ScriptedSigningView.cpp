#include "ScriptedSigningView.h"

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRadioGroup.h>
#include <norvane/platform/Platform.h>
#include <norvane/signing/SigningNotifications.h>

#include <utility>

namespace norvane::cli {

namespace {

/// The names in quotes, joined by commas.
std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "\"" : ", \"") + name + "\"";
    return text;
}

} // namespace

void ScriptedSigningView::setController(const std::shared_ptr<NVMNativeSigningViewController>& controller) {
    controller_ = controller;
    turnEndObserver_ = Platform::current().notifications->addObserver(
        std::string(NVMEnvelopeRecipientDidEndOfflineSigningNotification),
        [self = weak_from_this()](const Notification&) {
            if (const auto view = self.lock()) view->turnEnded();
        });
}

void ScriptedSigningView::post(Step step) {
    Platform::current().executors->mainQueue()->async([self = weak_from_this(), step] {
        const auto view = self.lock();
        if (view && !view->failure_ && view->controller_.lock()) (view.get()->*step)();
    });
}

void ScriptedSigningView::fail(const std::string& description, const std::string& reason) {
    if (failure_) return;
    failure_ = NVMError::make("norvane.command", 0, description, reason);
    Platform::current().executors->mainQueue()->async([controller = controller_] {
        if (const auto strong = controller.lock()) strong->exitNativeSigning();
    });
}

void ScriptedSigningView::showSigners(const std::vector<std::shared_ptr<NVMRecipient>>& signers) {
    std::vector<std::string> names;
    for (const auto& recipient : signers) {
        const std::string name = recipient->nvm_name();
        if (next_ < script_.signers.size() && script_.signers[next_].recipient == name) {
            Platform::current().executors->mainQueue()->async([controller = controller_, recipient] {
                if (const auto strong = controller.lock())
                    strong->signersViewControllerDidChooseSigner(recipient);
            });
            return;
        }
        names.push_back(name);
    }
    if (next_ >= script_.signers.size())
        return fail("The script ends, but still to sign: " + listed(names) + ".", "SIGNER_MISSING");
    fail("It is not the turn of \"" + script_.signers[next_].recipient + "\". To sign now: " + listed(names) +
             ".",
         "SIGNER_OUT_OF_TURN");
}

void ScriptedSigningView::showConsumerDisclosure(const ConsumerDisclosure& disclosure) {
    Platform::current().executors->mainQueue()->async(
        [controller = controller_, id = disclosure.disclosureId] {
            if (const auto strong = controller.lock()) strong->consumerDisclosureControllerConsented(id);
        });
}

void ScriptedSigningView::beginSigning(const std::shared_ptr<NVMRecipient>& recipient) {
    const std::string name = recipient->nvm_name();
    if (next_ >= script_.signers.size())
        return fail("The script ends, but still to sign: \"" + name + "\".", "SIGNER_MISSING");
    if (script_.signers[next_].recipient != name)
        return fail("It is not the turn of \"" + script_.signers[next_].recipient + "\". To sign now: \"" +
                        name + "\".",
                    "SIGNER_OUT_OF_TURN");
    signer_ = &script_.signers[next_++];
    recipient_ = recipient;
    post(&ScriptedSigningView::fillTabs);
}

void ScriptedSigningView::fillTabs() {
    for (const auto& [label, value] : signer_->tabs)
        if (!fillTab(label, value)) return;
    post(&ScriptedSigningView::tapNextPlaceToSign);
}

bool ScriptedSigningView::fillTab(const std::string& label, const Value& value) {
    const auto& envelope = controller_.lock()->envelope();
    bool found = false;
    const auto tabs = envelope->tagsForSigner(recipient_);
    for (const auto& tab : tabs ? *tabs : std::vector<std::shared_ptr<NVMTab>>{}) {
        if (tab->tabLabel != label || tab->tabType == NVMTabTypeRadio) continue;
        found = true;
        if (!fillTextOrCheckbox(*tab, value)) return false;
    }
    const auto groups = envelope->radioGroupsForSigner(recipient_);
    for (const auto& group : groups ? *groups : std::vector<std::shared_ptr<NVMRadioGroup>>{}) {
        if (group->groupName != label || !group->radios) continue;
        found = true;
        if (!chooseRadio(*group, value)) return false;
    }
    if (!found) fail(signer_->recipient + " has no tab \"" + label + "\".", "TAB_UNKNOWN");
    return found;
}

bool ScriptedSigningView::fillTextOrCheckbox(NVMTab& tab, const Value& value) {
    const auto controller = controller_.lock();
    const std::string& label = *tab.tabLabel;
    const auto* checkbox = dynamic_cast<const NVMCheckbox*>(&tab);
    if (checkbox && !value.isBool())
        return refuse(label, "is a check box: it takes true or false", "TAB_VALUE_INVALID");
    if (!checkbox && value.isBool()) return refuse(label, "takes a text", "TAB_VALUE_INVALID");
    const std::string id = tab.tabId.value_or("");
    if (checkbox && checkbox->selected != value.boolValue()) controller->didTapOnAnnotation(id);
    if (!checkbox) controller->textViewDidChange(id, *value.asString());
    const bool isTaken = checkbox ? checkbox->selected == value.boolValue() : tab.value == *value.asString();
    return isTaken || refuse(label, "cannot be changed", "TAB_NOT_EDITABLE");
}

bool ScriptedSigningView::chooseRadio(const NVMRadioGroup& group, const Value& value) {
    std::vector<std::string> choices;
    for (const auto& radio : *group.radios) {
        choices.push_back(radio->value.value_or(""));
        if (!value.isString() || choices.back() != *value.asString()) continue;
        controller_.lock()->didTapOnAnnotation(radio->tabId.value_or(""));
        return radio->selected || refuse(*group.groupName, "cannot be changed", "TAB_NOT_EDITABLE");
    }
    return refuse(*group.groupName, "is a choice between " + listed(choices), "TAB_VALUE_INVALID");
}

bool ScriptedSigningView::refuse(const std::string& label, const std::string& why,
                                 const std::string& reason) {
    fail("The tab \"" + label + "\" of " + signer_->recipient + " " + why + ".", reason);
    return false;
}

void ScriptedSigningView::tapNextPlaceToSign() {
    const auto controller = controller_.lock();
    const auto tabs = controller->envelope()->tagsForSigner(recipient_);
    for (const auto& tab : tabs ? *tabs : std::vector<std::shared_ptr<NVMTab>>{}) {
        const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(tab.get());
        if (!imageTab || (imageTab->imageData && imageTab->imageData->data)) continue;
        const bool isInitial = tab->tabType == NVMTabTypeInitialHere;
        if (!(isInitial ? signer_->initials : signer_->signature)) continue;
        if (std::exchange(lastTapped_, tab) == tab) {
            refuse(nameOf(*tab), "cannot be signed", "TAB_NOT_EDITABLE");
            return;
        }
        controller->didTapOnAnnotation(tab->tabId.value_or(""));
        return post(&ScriptedSigningView::tapNextPlaceToSign);
    }
    post(&ScriptedSigningView::finishTurn);
}

void ScriptedSigningView::showSignatureCapture(bool initials) {
    Platform::current().executors->mainQueue()->async([self = weak_from_this(), initials] {
        const auto view = self.lock();
        const auto controller = view ? view->controller_.lock() : nullptr;
        if (!controller) return;
        if (initials)
            controller->signatureCaptureDidFinishWithInitials(*view->signer_->initials);
        else
            controller->signatureCaptureDidFinishWithSignature(*view->signer_->signature);
    });
}

void ScriptedSigningView::finishTurn() {
    const auto controller = controller_.lock();
    std::vector<std::string> missing;
    for (const auto& tab : controller->remainingRequiredTags())
        if (const std::string name = nameOf(*tab); missing.empty() || missing.back() != name)
            missing.push_back(name);
    if (!missing.empty())
        return fail("Required and still blank for " + signer_->recipient + ": " + listed(missing) + ".",
                    "REQUIRED_TAB_BLANK");
    controller->finishTapped();
}

/// After the last turn nobody may be left in the script. Ends the signing at once: the envelope would be kept
/// next.
void ScriptedSigningView::turnEnded() {
    const auto controller = controller_.lock();
    const bool isLast = controller && controller->envelope()->incompleteLocalSigners().empty();
    if (!isLast || failure_ || next_ >= script_.signers.size()) return;
    failure_ = NVMError::make("norvane.command", 0,
                              "\"" + script_.signers[next_].recipient + "\" has no turn: after \"" +
                                  signer_->recipient + "\" nobody is left to sign here.",
                              "SIGNER_OUT_OF_TURN");
    controller->exitNativeSigning();
}

std::string ScriptedSigningView::nameOf(const NVMTab& tab) const {
    if (const auto* radio = dynamic_cast<const NVMRadio*>(&tab))
        if (const auto group = controller_.lock()->envelope()->radioGroupWith(*radio, recipient_))
            return group->groupName.value_or("");
    return tab.tabLabel.value_or(tab.tabId.value_or(""));
}

} // namespace norvane::cli
