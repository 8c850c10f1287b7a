#include "src/signing/TabAnnotations.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRadioGroup.h>
#include <norvane/model/NVMRecipients.h>
#include <norvane/model/NVMSigner.h>
#include <norvane/pdf/PdfDocument.h>
#include <norvane/platform/DateFormat.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/NVMPTNPDFAnnotationManager.h>
#include <norvane/signing/SigningNotifications.h>

#include <utility>

namespace norvane {

namespace {

std::string text(std::string_view key) { return Platform::current().strings->text(key); }

constexpr std::int64_t kInPersonSignerType = 6;

} // namespace

Result<std::shared_ptr<NVMNativeSigningViewController>>
NVMNativeSigningViewController::viewControllerForEnvelope(std::shared_ptr<NVMEnvelopeDefinition> envelope,
                                                          std::shared_ptr<NativeSigningView> view,
                                                          Completion completion) {
    if (!envelope || !envelope->combinedDocument || !envelope->combinedDocument->pdf)
        return NVM_errorTemplateHasNoDocuments();
    auto document = PdfDocument::open(*envelope->combinedDocument->pdf);
    if (!document) return document.error();
    return std::shared_ptr<NVMNativeSigningViewController>(new NVMNativeSigningViewController(
        std::move(envelope), std::move(*document), std::move(view), std::move(completion)));
}

NVMNativeSigningViewController::NVMNativeSigningViewController(
    std::shared_ptr<NVMEnvelopeDefinition> envelope, std::shared_ptr<PdfDocument> document,
    std::shared_ptr<NativeSigningView> view, Completion completion)
    : envelopeHandler_(std::move(envelope))
    , docToOpen_(std::move(document))
    , view_(std::move(view))
    , completion_(std::move(completion))
    , annotationsManager_(std::make_unique<NVMPTNPDFAnnotationManager>())
    , images_(std::make_unique<DecodedImages>()) {}

NVMNativeSigningViewController::~NVMNativeSigningViewController() = default;

void NVMNativeSigningViewController::viewDidLoad() {
    view_->showPoweredBy("Powered by Norvane",
                         configuredValueForSetupKey(NVM_SETUP_POWERED_BY_NORVANE_ENABLED));
    toolManager_ = std::make_unique<NVMPTNToolManager>(docToOpen_, weak_from_this(), *annotationsManager_);
    recipientsObserver_ = Platform::current().notifications->addObserver(
        std::string(NVMEnvelopeRecipientsDidChangeNotification),
        [self = weak_from_this()](const Notification&) {
            // Later: the host changes recipients while it is being told of a step.
            Platform::current().executors->mainQueue()->async([self] {
                if (const auto controller = self.lock()) controller->recipientsDidChange();
            });
        });
    setupWithEnvelope();
}

void NVMNativeSigningViewController::recipientsDidChange() {
    if (isOver_ || !std::exchange(isWaitingForRecipients_, false)) return;
    switchToSigners();
}

void NVMNativeSigningViewController::setupWithEnvelope() {
    envelope()->status = "sent";
    envelope()->setSubjectIfNeeded();
    int startPage = 0;
    for (const auto& document : envelope()->sortedDocumentsByOrder()) {
        startPageOfDocument_[document->documentId.value_or("")] = startPage;
        startPage += static_cast<int>(Value(document->pages).integerValue());
    }
    view_->showFinishButton(finishButtonTitle(), false);
    switchToSigners();
}

void NVMNativeSigningViewController::switchToSigners() {
    const auto recipients = envelope()->allOfflineRecipientsInCurrentRoutingOrder();
    const auto unsignedSigners = envelope()->incompleteLocalSigners();
    if (unsignedSigners.empty()) return end(NVM_errorOfflineSigningUnavailable());
    const bool madeHere = envelope()->isLocallyOriginatedEnvelope() && !envelope()->isCreatedFromTemplate();
    if (recipients.size() == 1 || madeHere) return switchToSigner(unsignedSigners.front());
    nvm_notifySelectRecipientWillShowSigningWithUserInfo(nvm_userInfoWithRecipients(recipients, envelope()));
    if (envelope()->allOfflineRecipientsInCurrentRoutingOrder().size() == recipients.size())
        displayChooseNextSignerIfIncomplete();
    else
        isWaitingForRecipients_ = true;
}

void NVMNativeSigningViewController::displayChooseNextSignerIfIncomplete() {
    const auto unsignedSigners = envelope()->incompleteLocalSigners();
    if (!unsignedSigners.empty()) view_->showSigners(unsignedSigners);
}

void NVMNativeSigningViewController::signersViewControllerDidChooseSigner(
    const std::shared_ptr<NVMRecipient>& signer) {
    if (isOver_ || !signer) return;
    view_->dismissPresented();
    switchToSigner(signer);
}

void NVMNativeSigningViewController::signersViewControllerCanceled() { view_->dismissPresented(); }

void NVMNativeSigningViewController::switchToSigner(const std::shared_ptr<NVMRecipient>& signer) {
    const auto previous = std::exchange(currentRecipient_, signer);
    recordPlaceAndTime();
    addAnnotations();
    finalizeSwitchToCurrentRecipient(previous);
}

void NVMNativeSigningViewController::recordPlaceAndTime() {
    const Platform& platform = Platform::current();
    if (!currentRecipient_->offlineAttributes)
        currentRecipient_->offlineAttributes = std::make_shared<NVMOfflineAttributes>();
    currentRecipient_->deliveredDateTime = platform.clock->now();
    NVMOfflineAttributes& attributes = *currentRecipient_->offlineAttributes;
    attributes.deviceName = platform.deviceName;
    attributes.deviceModel = platform.deviceModel;
    const auto place = platform.location->location();
    if (!place || place->horizontalAccuracy < 0) return;
    attributes.gpsLatitude = place->latitude;
    attributes.gpsLongitude = place->longitude;
}

void NVMNativeSigningViewController::addAnnotations() {
    for (const auto& document : envelope()->sortedDocumentsByOrder()) {
        const int startPage = startPageOfDocument_[document->documentId.value_or("")];
        for (const auto& tab : envelope()->tagsForDocumentId(document->documentId.value_or(""))) {
            if (tab->recipientId != currentRecipient_->recipientId) continue;
            if (currentRecipient_->recipientType == kInPersonSignerType &&
                (tab->tabType == NVMTabTypeCompany || tab->tabType == NVMTabTypeTitle))
                tab->value = "";
            if (tab->frame) {
                // Deliberate: the shift is applied to the stored frame itself, each time the recipient's turn
                // comes.
                if (tab->tabType == NVMTabTypeSignHere) tab->frame->originY += tab->frame->height / 2;
                if (tab->tabType == NVMTabTypeInitialHere) tab->frame->originY += tab->frame->height / 3;
            }
            if (tab->tabType == NVMTabTypeRadio)
                addAnnotationForRadioGroupTag(tab, startPage);
            else
                addAnnotationForTag(tab, startPage);
        }
    }
}

void NVMNativeSigningViewController::addAnnotationForRadioGroupTag(const std::shared_ptr<NVMTab>& tab,
                                                                   int startPage) {
    addAnnotationForTag(tab, startPage);
    const auto* radio = dynamic_cast<const NVMRadio*>(tab.get());
    if (const auto group = radio ? envelope()->radioGroupWith(*radio, currentRecipient_) : nullptr)
        showRadioGroup(*group);
}

void NVMNativeSigningViewController::addAnnotationForTag(const std::shared_ptr<NVMTab>& tab, int startPage) {
    const int page = startPage + static_cast<int>(tab->pageNumber.value_or(1));
    const auto annotation = createTabAnnotation(*tab, docToOpen_, page, view_, *images_);
    if (!annotation) return;
    if (annotation->isTextBased()) {
        if (tab->tabType == NVMTabTypeDateSigned || tab->tabType == NVMTabTypeFullName)
            tab->value = visibleTextOf(*tab);
        annotation->setVisualContent(visibleTextOf(*tab));
    }
    annotationsManager_->registerPDFAnnotationForNVMAnnotation(annotation);
}

std::string NVMNativeSigningViewController::visibleTextOf(const NVMTab& tab) const {
    switch (tab.tabType) {
    case NVMTabTypeDateSigned:
        return shortDateShortTime(Platform::current().clock->now());
    case NVMTabTypeFullName:
        return currentRecipient_->nvm_name();
    default:
        break;
    }
    if (tab.value && !tab.value->empty()) return *tab.value;
    if (!configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_USE_PLACEHOLDER_TAB_VALUE)) return {};
    return tab.nvm_nameForTagType().value_or("");
}

void NVMNativeSigningViewController::finalizeSwitchToCurrentRecipient(
    const std::shared_ptr<NVMRecipient>& previous) {
    const std::size_t count = envelope()->allOfflineRecipientsInCurrentRoutingOrder().size();
    nvm_notifyEnvelopeRecipientWillBeginOfflineSigningWithUserInfo(
        nvm_userInfoWithRecipient(currentRecipient_, envelope()));
    if (envelope()->allOfflineRecipientsInCurrentRoutingOrder().size() != count) {
        isWaitingForRecipients_ = true;
        return;
    }
    deselectAnnotations();
    updateAnnotations();
    updateFinishButton();
    view_->scrollTo(1, 0);
    const std::string name = currentRecipient_->nvm_name();
    view_->showTitle(name);
    if (auto signer = std::dynamic_pointer_cast<NVMSigner>(currentRecipient_)) signer->name = name;

    if (alertsAreHidden() || (!previous && isSignedInUser(*currentRecipient_)))
        return presentSignerPermissions();
    const auto recipients = envelope()->recipients->allRecipients();
    const bool isFirst = !recipients.empty() && recipients.front() == currentRecipient_;
    Alert alert;
    alert.title = text(isFirst ? "Signing.PassToSigner" : "Signing.PassToNextSigner");
    alert.message = Platform::current().strings->format("Signing.PleasePassTheSalt",
                                                        {Platform::current().deviceModel, name});
    alert.actions.push_back({text("Common.OK"), [self = weak_from_this()] {
                                 if (const auto controller = self.lock())
                                     controller->presentSignerPermissions();
                             }});
    Platform::current().alerts->present(std::move(alert));
}

void NVMNativeSigningViewController::presentSignerPermissions() {
    if (isOver_) return;
    if (isSignedInUser(*currentRecipient_)) return view_->beginSigning(currentRecipient_);
    const auto account = NVMCredentials::primaryCredentials();
    ConsumerDisclosure disclosure;
    const auto& origin = envelope()->envelopeTemplateDefinition;
    if (account) {
        disclosure.disclosureId = account->consumerDisclosureId.value_or("");
        disclosure.markup = account->consumerDisclosure.value_or("");
        disclosure.senderName = account->userName.value_or("");
        disclosure.senderCompany = account->accountName.value_or("");
    }
    if (!envelope()->isLocallyOriginatedEnvelope() && origin && origin->owner)
        disclosure.senderName = origin->owner->userName.value_or("");
    disclosure.recipientName = currentRecipient_->nvm_name();
    view_->showConsumerDisclosure(disclosure);
}

void NVMNativeSigningViewController::consumerDisclosureControllerConsented(const std::string& disclosureId) {
    if (!currentRecipient_ || isOver_) return;
    currentRecipient_->offlineAttributes->consumerDisclosureId = disclosureId;
    currentRecipient_->offlineAttributes->accountEsignId = disclosureId;
    view_->dismissPresented();
    view_->beginSigning(currentRecipient_);
}

void NVMNativeSigningViewController::consumerDisclosureControllerCancelled() { presentDiscardSheet(); }

void NVMNativeSigningViewController::updateAnnotations() {
    for (const auto& tab : envelope()->allTags()) {
        const auto annotation = annotationFor(*tab);
        if (!annotation) continue;
        annotation->setEditableForCurrentRecipientId(currentRecipient_->recipientId.value_or(""));
        annotation->updateErroneous();
        annotation->refreshVisuals();
    }
}

std::shared_ptr<NVMTab> NVMNativeSigningViewController::tabWithId(const std::string& tabId) const {
    if (isOver_) return nullptr;
    for (const auto& tab : envelope()->allTags())
        if (tab->tabId == tabId && currentRecipient_ && tab->recipientId == currentRecipient_->recipientId)
            return tab;
    return nullptr;
}

std::shared_ptr<NVMPDFBaseAnnotation> NVMNativeSigningViewController::annotationFor(const NVMTab& tab) const {
    return tab.tabId ? annotationsManager_->pdfAnnotationWithUniqueId(*tab.tabId) : nullptr;
}

bool NVMNativeSigningViewController::alertsAreHidden() const {
    return configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY);
}

bool NVMNativeSigningViewController::isSignedInUser(const NVMRecipient& recipient) const {
    const auto account = NVMCredentials::primaryCredentials();
    return account && recipient.matchesNameAndEmailOfAccount(*account);
}

int NVMNativeSigningViewController::pageOf(const NVMTab& tab) const {
    const auto start = startPageOfDocument_.find(tab.documentId.value_or(""));
    return (start == startPageOfDocument_.end() ? 0 : start->second) +
           static_cast<int>(tab.pageNumber.value_or(1));
}

NVMError NVMNativeSigningViewController::cancelledError() {
    return NVMError::make("user.cancelled", 0, text("Signing.Cancelled"), "SIGNING_CANCELLED");
}

} // namespace norvane
