#include "src/model/mapping/StoreToDomain.h"

#include "src/model/mapping/ImageTabFrame.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/NVMCDTemplates.h>

namespace norvane {
namespace {

template <class To, class From>
std::shared_ptr<To> read(const std::shared_ptr<From>& record) {
    return record ? storeToDomain().make<To>(*record) : nullptr;
}

/// A stored type of 0 says that the tab's kind is not supported; else the list tells the kind.
void finishTab(const NVMCDTab& stored, NVMTab& tab) {
    if (stored.type_ == NVMTabTypeUnsupported) tab.tabType = NVMTabTypeUnsupported;
    if (!stored.frameEntity) return;
    const NVMCDFrame& frame = *stored.frameEntity;
    tab.frame = std::make_shared<NVMTabFrame>(wholePoints(frame.originX), wholePoints(frame.originY),
                                              wholePoints(frame.width), wholePoints(frame.height));
}

template <class T>
void finishImageTab(const NVMCDTab& stored, T& tab) {
    const Size size = defaultSizeForTagType(tab.tabType);
    finishTab(stored, tab);
    tab.scaleValue = stored.scaleValue ? numberFromText(*stored.scaleValue, true) : std::nullopt;
    if (!tab.frame) tab.frame = std::make_shared<NVMTabFrame>();
    const NVMCDFrame frame = stored.frameEntity ? *stored.frameEntity : NVMCDFrame();
    const double scale = tab.scaleValue.value_or(0);
    tab.frame->width = scaledSide(frame.width, size.width, scale);
    tab.frame->height = scaledSide(frame.height, size.height, scale);
}

void finishRadio(const NVMCDTab& stored, NVMRadio& radio) {
    finishTab(stored, radio);
    if (!radio.frame) return;
    radio.xPosition = radio.frame->originX;
    radio.yPosition = radio.frame->originY;
}

void finishFormula(const NVMCDTab& stored, NVMFormula& formula) {
    finishTab(stored, formula);
    if (!stored.frameEntity) return;
    formula.xPosition = Value(stored.frameEntity->originX).stringValue();
    formula.yPosition = Value(stored.frameEntity->originY).stringValue();
    formula.width = stored.frameEntity->width;
}

void finishRadioGroup(const NVMCDRadioGroup&, NVMRadioGroup& group) { group.adoptRadios(); }

void finishRecipient(const NVMCDRecipient& stored, NVMRecipient& recipient) {
    recipient.signature = read<NVMSignature>(stored._signature);
}

void finishOfflineAttributes(const NVMCDOfflineAttributes& stored, NVMOfflineAttributes& attributes) {
    attributes.consumerDisclosureId = stored._consumerDisclosureId;
}

void finishEnvelope(const NVMCDEnvelopeDefinition& stored, NVMEnvelopeDefinition& envelope) {
    envelope.disclosureSetting = wholePoints(stored.useDisclosure);
    envelope.failedAttemptsToSync = wholePoints(stored.syncPendingUploadRetryCount);
    if (stored.recipients) envelope.currentRoutingOrder = wholePoints(stored.recipients->currentRoutingOrder);
    if (!stored.templateId) return;
    envelope.envelopeTemplateDefinition = std::make_shared<NVMEnvelopeTemplateDefinition>();
    envelope.envelopeTemplateDefinition->templateId = stored.templateId;
}

void finishTemplate(const NVMCDEnvelopeTemplate& stored, NVMEnvelopeTemplate& envelope) {
    envelope.disclosureSetting = Value(stored.useDisclosure).boolValue() ? 1 : 0;
}

template <class T, void (*FINISH)(const NVMCDTab&, T&)>
constexpr ConversionRule tabRule() {
    return {&NVMCDTab::type, &T::type, {}, {}, &Then<FINISH>::apply};
}

template <class T>
constexpr ConversionRule plainTabRule() {
    return {&NVMCDTab::type, &T::type, {}, {}, [](const void* from, void* to) {
                finishTab(*static_cast<const NVMCDTab*>(from), *static_cast<T*>(to));
            }};
}

/// The kind, which the record's class tells, is kept whatever was stored.
constexpr std::string_view kRecipientExceptions[] = {"recipientType"};

template <class T>
constexpr ConversionRule recipientRule() {
    return {&NVMCDRecipient::type, &T::type, {}, kRecipientExceptions, [](const void* from, void* to) {
                finishRecipient(*static_cast<const NVMCDRecipient*>(from), *static_cast<T*>(to));
            }};
}

constexpr ConversionRule kRules[] = {
    tabRule<NVMSignHere, &finishImageTab<NVMSignHere>>(),
    tabRule<NVMInitialHere, &finishImageTab<NVMInitialHere>>(),
    tabRule<NVMRadio, &finishRadio>(),
    tabRule<NVMFormula, &finishFormula>(),
    plainTabRule<NVMTab>(),
    plainTabRule<NVMText>(),
    plainTabRule<NVMCheckbox>(),
    plainTabRule<NVMCompany>(),
    plainTabRule<NVMTitle>(),
    plainTabRule<NVMFullName>(),
    plainTabRule<NVMDateSigned>(),
    recipientRule<NVMRecipient>(),
    recipientRule<NVMAgent>(),
    recipientRule<NVMCarbonCopy>(),
    recipientRule<NVMCertifiedDelivery>(),
    recipientRule<NVMEditor>(),
    recipientRule<NVMInPersonSigner>(),
    recipientRule<NVMIntermediary>(),
    recipientRule<NVMSigner>(),
    {&NVMCDRadioGroup::type, &NVMRadioGroup::type, {}, {}, &Then<finishRadioGroup>::apply},
    {&NVMCDOfflineAttributes::type,
     &NVMOfflineAttributes::type,
     {},
     {},
     &Then<finishOfflineAttributes>::apply},
    {&NVMCDEnvelopeDefinition::type, &NVMEnvelopeDefinition::type, {}, {}, &Then<finishEnvelope>::apply},
    {&NVMCDEnvelopeTemplate::type, &NVMEnvelopeTemplate::type, {}, {}, &Then<finishTemplate>::apply},
};

} // namespace

const RecordConversion& storeToDomain() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

} // namespace norvane
