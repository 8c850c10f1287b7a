#include "src/signing/OfflineSigningHash.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/SigningNotifications.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMEnvelopesHandler.h>

#include <utility>

// The part of the offline signing controller that ends a recipient's turn, and the envelope.

namespace norvane {

namespace {

std::string text(std::string_view key) { return Platform::current().strings->text(key); }

std::optional<std::string> templateIdOf(const NVMEnvelopeDefinition& envelope) {
    return envelope.envelopeTemplateDefinition ? envelope.envelopeTemplateDefinition->templateId
                                               : std::nullopt;
}

} // namespace

void NVMNativeSigningViewController::finishTapped() {
    if (!currentRecipient_ || isOver_) return;
    view_->endEditing();
    if (!remainingRequiredTags().empty()) return scrollToNextField();
    deselectAnnotations();
    Alert sheet;
    sheet.isSheet = true;
    sheet.actions.push_back(
        {text("Signing.ConfirmSigning"), [self = weak_from_this(), signer = currentRecipient_] {
             const auto controller = self.lock();
             // A sheet left open confirms for nobody else.
             if (controller && controller->currentRecipient_ == signer && !signer->signedDateTime)
                 controller->finalizeCurrentRecipient();
         }});
    Platform::current().alerts->present(std::move(sheet));
}

void NVMNativeSigningViewController::finalizeCurrentRecipient() {
    if (isOver_) return;
    currentRecipient_->signedDateTime = Platform::current().clock->now();
    currentRecipient_->offlineAttributes->offlineSigningHash =
        offlineSigningHash(*envelope(), currentRecipient_);
    updateCurrentRoutingOrder();
    nameLastFinishedSigning_ = currentRecipient_->nvm_name();
    nvm_notifyEnvelopeRecipientDidEndOfflineSigningWithUserInfo(
        nvm_userInfoWithRecipient(currentRecipient_, envelope()));
    if (!isOver_) finishOrSwitchToSigners(); // whoever was told may have ended the signing
}

void NVMNativeSigningViewController::updateCurrentRoutingOrder() {
    const auto current = static_cast<double>(envelope()->currentRoutingOrder);
    std::optional<double> next;
    for (const auto& recipient : envelope()->recipients->allRecipients()) {
        const double order = recipient->routingOrder.value_or(0);
        const bool hasSigned = recipient->signedDateTime || recipient->status == "completed";
        if (order == current && !hasSigned) return;
        if (order > current && (!next || order < *next)) next = order;
    }
    if (next) envelope()->currentRoutingOrder = static_cast<std::int64_t>(*next);
}

void NVMNativeSigningViewController::finishOrSwitchToSigners() {
    if (!envelope()->incompleteLocalSigners().empty()) return switchToSigners();
    if (envelope()->isSelfSign()) return finishAsSelfSign();
    if (isSignedInUser(*currentRecipient_)) return finishAsHost();
    finishAsGuest();
}

void NVMNativeSigningViewController::finishAsGuest() {
    if (alertsAreHidden()) return finishAsHost();
    const Platform& platform = Platform::current();
    const auto account = NVMCredentials::primaryCredentials();
    Alert alert;
    alert.title = text("Signing.PassBackToHost");
    alert.message = platform.strings->format(
        "Signing.PleasePassTheSalt", {platform.deviceModel, account ? account->userName.value_or("") : ""});
    alert.actions.push_back({text("Common.OK"), [self = weak_from_this()] {
                                 if (const auto controller = self.lock()) controller->finishAsHost();
                             }});
    platform.alerts->present(std::move(alert));
}

void NVMNativeSigningViewController::finishAsHost() {
    finishWithMessage("Signing.AllInPersonSignersCompleted");
}

void NVMNativeSigningViewController::finishAsSelfSign() { finishWithMessage("Signing.SigningComplete"); }

void NVMNativeSigningViewController::finishWithMessage(const std::string& titleKey) {
    if (alertsAreHidden()) return finishEnvelope();
    Alert alert;
    alert.title = text(titleKey);
    alert.message = text("Signing.DocumentWillSendWhenConnected");
    alert.actions.push_back({text("Common.OK"), [self = weak_from_this()] {
                                 if (const auto controller = self.lock()) controller->finishEnvelope();
                             }});
    Platform::current().alerts->present(std::move(alert));
}

void NVMNativeSigningViewController::finishEnvelope() {
    if (std::exchange(isOver_, true)) return;
    envelope()->assignLabelsAndIDsToTabs();
    envelope()->setSubjectIfNeeded();
    nvm_notifySigningComplete(envelope()->envelopeId, templateIdOf(*envelope()), NVMSigningModeOffline,
                              Value::object(shared_from_this()));
    NVMEnvelopesHandler::finishEnvelope(*envelope(), [self = shared_from_this()](
                                                         const std::optional<NVMError>& error) {
        Platform::current().executors->mainQueue()->async([self, error] { self->envelopeWasCached(error); });
    });
}

void NVMNativeSigningViewController::envelopeWasCached(const std::optional<NVMError>& error) {
    if (error && !alertsAreHidden()) Platform::current().alerts->showError(error->localizedDescription());
    if (error) {
        clearFiles();
        return end(*error);
    }
    const auto& combined = envelope()->combinedDocument;
    if (combined && combined->sandboxFilePath) NVM_deleteDocumentWithPath(*combined->sandboxFilePath);
    end(envelope()->transactionId.value_or(""));
}

void NVMNativeSigningViewController::cancelTapped() {
    if (isOver_) return;
    view_->endEditing();
    presentDiscardSheet();
}

void NVMNativeSigningViewController::presentDiscardSheet() {
    Alert sheet;
    sheet.title = text("Account.YouWillNotBeAbleToResumeSigning");
    sheet.isSheet = true;
    sheet.actions.push_back({text("Documents.DiscardDocument"),
                             [self = weak_from_this()] {
                                 if (const auto controller = self.lock()) controller->exitNativeSigning();
                             },
                             true});
    sheet.actions.push_back({text("Common.Action.Cancel"), {}});
    Platform::current().alerts->present(std::move(sheet));
}

void NVMNativeSigningViewController::exitNativeSigning() {
    if (std::exchange(isOver_, true)) return;
    view_->endEditing();
    view_->close();
    nvm_notifySigningCancelled(envelope()->envelopeId, templateIdOf(*envelope()), NVMSigningModeOffline,
                               Value::object(shared_from_this()));
    clearFiles();
    complete(cancelledError());
}

void NVMNativeSigningViewController::clearFiles() {
    // With an identifier there may be an earlier copy in the cache, which names the same files.
    if (!envelope()->envelopeId) envelopeHandler_.clearEnvelope();
}

void NVMNativeSigningViewController::end(Result<std::string> outcome) {
    isOver_ = true;
    view_->close();
    complete(std::move(outcome));
}

void NVMNativeSigningViewController::complete(Result<std::string> outcome) {
    const auto keepAlive = shared_from_this();
    recipientsObserver_.reset();
    if (const auto completion = std::exchange(completion_, nullptr)) completion(std::move(outcome));
}

} // namespace norvane
