#include "src/signing/TabAnnotations.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMRadioGroup.h>
#include <norvane/model/NVMSignature.h>
#include <norvane/model/NVMTabImageData.h>
#include <norvane/platform/Platform.h>
#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/NVMPTNPDFImageAnnotation.h>

#include <algorithm>
#include <utility>

// The part of the offline signing controller that fills fields and moves between them.

namespace norvane {

namespace {

/// Page, then from the top, then from the left: the order in which a person reads.
struct ReadingPlace {
    int page = 0;
    std::int64_t originY = 0;
    std::int64_t originX = 0;
    auto operator<=>(const ReadingPlace&) const = default;
};

ReadingPlace placeOf(const NVMTab& tab, int page) {
    return {page, tab.frame ? tab.frame->originY : 0, tab.frame ? tab.frame->originX : 0};
}

bool isBlank(const NVMTab& tab) {
    if (const auto* imageTab = dynamic_cast<const NVMImageTabProtocol*>(&tab))
        return !imageTab->imageData || !imageTab->imageData->data;
    return !tab.value || tab.value->empty();
}

void showHighlight(NVMPDFBaseAnnotation& annotation, bool isHighlighted) {
    annotation.setHighlighted(isHighlighted);
    annotation.updateErroneous();
    annotation.refreshVisuals();
}

} // namespace

void NVMNativeSigningViewController::pdfViewControllerDidTapOnAnnotation(const Annotation& annotation,
                                                                         const Point&) {
    didTapOnAnnotation(annotation->tab().tabId);
}

void NVMNativeSigningViewController::pdfViewControllerDidTapOnPageView(const Point&) {
    if (isOver_) return;
    view_->endEditing();
    deselectAnnotations();
}

void NVMNativeSigningViewController::didTapOnAnnotation(const std::string& tabId) {
    const auto tab = tabWithId(tabId);
    const auto annotation = tab ? annotationFor(*tab) : nullptr;
    if (!annotation || !annotation->isEditable()) return;
    highlightTab(tab);
    switch (tab->tabType) {
    case NVMTabTypeSignHere:
    case NVMTabTypeInitialHere:
        return handleTapOnSignAndInitialAnnotation(tab);
    case NVMTabTypeCheckbox:
        return toggleCheckbox(tab);
    case NVMTabTypeRadio:
        return selectRadio(tab);
    default:
        break;
    }
    if (annotation->isTextBased()) view_->showTextEditor(annotation, tab->value.value_or(""));
}

void NVMNativeSigningViewController::handleTapOnSignAndInitialAnnotation(const std::shared_ptr<NVMTab>& tab) {
    const bool isInitial = tab->tabType == NVMTabTypeInitialHere;
    const auto& signature = currentRecipient_->signature;
    const auto& image = !signature  ? nullptr
                        : isInitial ? signature->initialsImage
                                    : signature->signatureImage;
    if (image && image->data) return stamp(tab, *image->data);
    adoptingForTab_ = tab;
    view_->showSignatureCapture(isInitial);
}

void NVMNativeSigningViewController::signatureCaptureDidFinishWithSignature(const Image& image) {
    updateSignatureWithImage(image, false);
}

void NVMNativeSigningViewController::signatureCaptureDidFinishWithInitials(const Image& image) {
    updateSignatureWithImage(image, true);
}

void NVMNativeSigningViewController::signatureCaptureCanceled() {
    adoptingForTab_.reset();
    view_->dismissPresented();
}

void NVMNativeSigningViewController::updateSignatureWithImage(const Image& image, bool isInitial) {
    if (!currentRecipient_ || isOver_) return;
    if (!currentRecipient_->signature) currentRecipient_->signature = std::make_shared<NVMSignature>();
    auto data = std::make_shared<NVMTabImageData>();
    data->data = image.pngData();
    auto& slot = isInitial ? currentRecipient_->signature->initialsImage
                           : currentRecipient_->signature->signatureImage;
    slot = data;
    if (const auto tab = adoptingForTab_.lock()) stamp(tab, *data->data);
    adoptingForTab_.reset();
    view_->dismissPresented();
}

void NVMNativeSigningViewController::stamp(const std::shared_ptr<NVMTab>& tab, const Data& image) {
    if (auto* imageTab = dynamic_cast<NVMImageTabProtocol*>(tab.get())) {
        auto data = std::make_shared<NVMTabImageData>();
        data->data = image;
        imageTab->imageData = data;
    }
    if (const auto annotation = annotationFor(*tab)) showTabContent(*annotation, *tab, *images_);
    updateFinishButton();
}

void NVMNativeSigningViewController::toggleCheckbox(const std::shared_ptr<NVMTab>& tab) {
    auto* checkbox = dynamic_cast<NVMCheckbox*>(tab.get());
    if (!checkbox) return;
    checkbox->selected = !checkbox->selected;
    checkbox->value.emplace(checkbox->selected ? "X" : "");
    if (const auto annotation = annotationFor(*tab)) showTabContent(*annotation, *tab, *images_);
    updateFinishButton();
}

void NVMNativeSigningViewController::selectRadio(const std::shared_ptr<NVMTab>& tab) {
    const auto* chosen = dynamic_cast<const NVMRadio*>(tab.get());
    const auto group = chosen ? envelope()->radioGroupWith(*chosen, currentRecipient_) : nullptr;
    if (!group) return;
    for (const auto& radio : *group->radios) {
        radio->selected = radio.get() == chosen;
        radio->value.emplace(radio->selected ? "X" : "");
    }
    showRadioGroup(*group);
    updateFinishButton();
}

void NVMNativeSigningViewController::showRadioGroup(const NVMRadioGroup& group) {
    const bool hasChoice = std::any_of(group.radios->begin(), group.radios->end(),
                                       [](const auto& radio) { return radio->selected; });
    for (const auto& radio : *group.radios) {
        const auto annotation = std::dynamic_pointer_cast<NVMPTNPDFImageAnnotation>(annotationFor(*radio));
        if (!annotation) continue;
        annotation->isContentValidForTabGroup = hasChoice;
        showTabContent(*annotation, *radio, *images_);
    }
}

void NVMNativeSigningViewController::textViewDidChange(const std::string& tabId, const std::string& text) {
    const auto tab = tabWithId(tabId);
    const auto annotation = tab ? annotationFor(*tab) : nullptr;
    if (!annotation || !annotation->isEditable() || !annotation->isTextBased()) return;
    tab->value = text;
    annotation->setContentIncreaseWidthToFitContent(text, false);
    updateFinishButton();
}

void NVMNativeSigningViewController::highlightTab(const std::shared_ptr<NVMTab>& tab) {
    if (highlightedTab_.lock() != tab) deselectAnnotations();
    highlightedTab_ = tab;
    if (const auto annotation = annotationFor(*tab)) showHighlight(*annotation, true);
}

void NVMNativeSigningViewController::deselectAnnotations() {
    const auto highlighted = std::exchange(highlightedTab_, {}).lock();
    const auto annotation = highlighted ? annotationFor(*highlighted) : nullptr;
    if (annotation) showHighlight(*annotation, false);
}

void NVMNativeSigningViewController::scrollToNextField() {
    std::vector<std::shared_ptr<NVMTab>> fields;
    const bool blankOnly =
        configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_NAVIGATE_BLANK_REQUIRED_FIELDS);
    const auto required = envelope()->requiredNavigableTagsForRecipient(currentRecipient_);
    for (const auto& tab : required.value_or(TabList()))
        if (annotationFor(*tab) && (!blankOnly || isBlank(*tab))) fields.push_back(tab);
    if (fields.empty()) return;
    const auto place = [&](const std::shared_ptr<NVMTab>& tab) { return placeOf(*tab, pageOf(*tab)); };
    std::sort(fields.begin(), fields.end(),
              [&](const auto& a, const auto& b) { return place(a) < place(b); });
    auto next = fields.begin();
    if (const auto highlighted = highlightedTab_.lock()) {
        next = std::find_if(fields.begin(), fields.end(),
                            [&](const auto& tab) { return place(tab) > place(highlighted); });
        if (next == fields.end()) next = fields.begin();
    }
    view_->scrollTo(pageOf(**next), (*next)->frame ? static_cast<double>((*next)->frame->originY) : 0);
    highlightTab(*next);
}

std::vector<std::shared_ptr<NVMTab>> NVMNativeSigningViewController::remainingRequiredTags() const {
    if (!currentRecipient_) return {};
    return envelope()
        ->remainingRequiredTagsForRecipient(currentRecipient_)
        .value_or(std::vector<std::shared_ptr<NVMTab>>{});
}

std::string NVMNativeSigningViewController::finishButtonTitle() const {
    const char* key = remainingRequiredTags().empty() ? "General.Finish" : "Signing.NextField";
    return Platform::current().strings->text(key);
}

void NVMNativeSigningViewController::updateFinishButton() {
    const auto tags = envelope()->tagsForSigner(currentRecipient_);
    view_->showFinishButton(finishButtonTitle(), tags && !tags->empty());
}

} // namespace norvane
