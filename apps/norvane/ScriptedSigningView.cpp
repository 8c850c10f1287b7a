#include "ScriptedSigningView.h"

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Platform.h>

namespace norvane::cli {

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
    std::string names;
    for (const auto& recipient : signers) {
        const std::string name = recipient->nvm_name();
        if (next_ < script_.signers.size() && script_.signers[next_].recipient == name) {
            Platform::current().executors->mainQueue()->async([controller = controller_, recipient] {
                if (const auto strong = controller.lock())
                    strong->signersViewControllerDidChooseSigner(recipient);
            });
            return;
        }
        names += (names.empty() ? "\"" : ", \"") + name + "\"";
    }
    if (next_ >= script_.signers.size())
        return fail("The script ends, but still to sign: " + names + ".", "SIGNER_MISSING");
    fail("It is not the turn of \"" + script_.signers[next_].recipient + "\". To sign now: " + names + ".",
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
    const auto controller = controller_.lock();
    bool found = false;
    const auto tabs = controller->envelope()->tagsForSigner(recipient_);
    for (const auto& tab : tabs ? *tabs : std::vector<std::shared_ptr<NVMTab>>{}) {
        if (tab->tabLabel != label) continue;
        found = true;
        const auto* checkbox = dynamic_cast<const NVMCheckbox*>(tab.get());
        if ((checkbox != nullptr) != value.isBool()) {
            fail("The tab \"" + label + "\" of " + signer_->recipient +
                     (checkbox ? " is a check box: it takes true or false." : " takes a text."),
                 "TAB_VALUE_INVALID");
            return false;
        }
        const std::string id = tab->tabId.value_or("");
        if (checkbox && checkbox->selected != value.boolValue()) controller->didTapOnAnnotation(id);
        if (!checkbox) controller->textViewDidChange(id, *value.asString());
        const bool taken =
            checkbox ? checkbox->selected == value.boolValue() : tab->value == *value.asString();
        if (!taken) {
            fail("The tab \"" + label + "\" of " + signer_->recipient + " cannot be changed.",
                 "TAB_NOT_EDITABLE");
            return false;
        }
    }
    if (!found) fail(signer_->recipient + " has no tab \"" + label + "\".", "TAB_UNKNOWN");
    return found;
}

void ScriptedSigningView::tapNextPlaceToSign() {
    const auto controller = controller_.lock();
    const auto tabs = controller->envelope()->tagsForSigner(recipient_);
    for (const auto& tab : tabs ? *tabs : std::vector<std::shared_ptr<NVMTab>>{}) {
        const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(tab.get());
        if (!imageTab || (imageTab->imageData && imageTab->imageData->data)) continue;
        const bool isInitial = tab->tabType == NVMTabTypeInitialHere;
        if (!(isInitial ? signer_->initials : signer_->signature)) continue;
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
    std::string missing;
    for (const auto& tab : controller->remainingRequiredTags())
        missing += (missing.empty() ? "\"" : ", \"") + tab->tabLabel.value_or(tab->tabId.value_or("")) + "\"";
    if (!missing.empty())
        return fail("Required and still blank for " + signer_->recipient + ": " + missing + ".",
                    "REQUIRED_TAB_BLANK");
    controller->finishTapped();
}

} // namespace norvane::cli
