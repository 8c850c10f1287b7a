#include "src/model/RecordConversion.h"
#include "src/model/mapping/ImageTabFrame.h"

#include <norvane/api/NVESTemplates.h>
#include <norvane/model/NVMCustomFields.h>
#include <norvane/model/NVMEnvelopeTemplateDefinition.h>
#include <norvane/model/NVMRecipients.h>
#include <norvane/platform/Base64.h>

// The domain records' constructors from wire records.

namespace norvane {
namespace {

field::Number numberOf(const field::Text& text) { return text ? numberFromText(*text) : std::nullopt; }

template <class Wire>
std::shared_ptr<NVMTabFrame> frameOf(const Wire& wire) {
    auto frame = std::make_shared<NVMTabFrame>();
    frame->originX = wholePoints(numberOf(wire.xPosition));
    frame->originY = wholePoints(numberOf(wire.yPosition));
    if constexpr (requires { wire.width; }) frame->width = wholePoints(wire.width);
    if constexpr (requires { wire.height; }) frame->height = wholePoints(wire.height);
    return frame;
}

template <class Wire, class T>
void finishTab(const Wire& wire, T& tab) {
    tab.frame = frameOf(wire);
}

template <class Wire, class T>
void finishImageTab(const Wire& wire, T& tab) {
    tab.frame = frameOf(wire);
    tab.scaleValue = wire.scaleValue ? numberFromText(*wire.scaleValue, true) : std::nullopt;
    const Size size = defaultSizeForTagType(tab.tabType);
    tab.frame->width = scaledSide(std::nullopt, size.width, tab.scaleValue.value_or(0));
    tab.frame->height = scaledSide(std::nullopt, size.height, tab.scaleValue.value_or(0));
    if (wire.imageDataBase64)
        tab.imageData = std::make_shared<NVMTabImageData>(decodeBase64(*wire.imageDataBase64));
}

void finishRadioGroup(const NVESRadioGroup&, NVMRadioGroup& group) {
    group.adoptRadios();
    if (!group.radios) return;
    for (const auto& radio : *group.radios) {
        radio->documentId = group.documentId;
        radio->recipientId = group.recipientId;
    }
}

void finishTemplateDefinition(const NVESEnvelopeTemplateResult& wire,
                              NVMEnvelopeTemplateDefinition& definition) {
    definition.templateDescription = wire._description;
}

template <class Wire, class T>
constexpr ConversionRule tabRule() {
    return {&Wire::type, &T::type, {}, {}, &Then<finishTab<Wire, T>>::apply};
}

template <class Wire, class T>
constexpr ConversionRule imageTabRule() {
    return {&Wire::type, &T::type, {}, {}, &Then<finishImageTab<Wire, T>>::apply};
}

constexpr ConversionRule kRules[] = {
    imageTabRule<NVESSignHere, NVMSignHere>(),
    imageTabRule<NVESInitialHere, NVMInitialHere>(),
    tabRule<NVESText, NVMText>(),
    tabRule<NVESCheckbox, NVMCheckbox>(),
    tabRule<NVESCompany, NVMCompany>(),
    tabRule<NVESTitle, NVMTitle>(),
    tabRule<NVESFullName, NVMFullName>(),
    tabRule<NVESDateSigned, NVMDateSigned>(),
    tabRule<NVESFormulaTab, NVMFormula>(),
    tabRule<NVESRadio, NVMRadio>(),
    {&NVESRadioGroup::type, &NVMRadioGroup::type, {}, {}, &Then<finishRadioGroup>::apply},
    {&NVESEnvelopeTemplateResult::type,
     &NVMEnvelopeTemplateDefinition::type,
     {},
     {},
     &Then<finishTemplateDefinition>::apply},
};

constexpr RecordConversion wireToDomain(kRules);

} // namespace

#define NORVANE_FROM_WIRE(RECORD, WIRE)                                                                      \
    RECORD::RECORD(const WIRE& wire)                                                                         \
        : RECORD() {                                                                                         \
        wireToDomain.apply(wire, *this);                                                                     \
    }

NORVANE_FROM_WIRE(NVMAgent, NVESAgent)
NORVANE_FROM_WIRE(NVMCarbonCopy, NVESCarbonCopy)
NORVANE_FROM_WIRE(NVMCertifiedDelivery, NVESCertifiedDelivery)
NORVANE_FROM_WIRE(NVMCustomFields, NVESCustomFields)
NORVANE_FROM_WIRE(NVMEditor, NVESEditor)
NORVANE_FROM_WIRE(NVMEnvelopeTemplateDefinition, NVESEnvelopeTemplateResult)
NORVANE_FROM_WIRE(NVMInPersonSigner, NVESInPersonSigner)
NORVANE_FROM_WIRE(NVMIntermediary, NVESIntermediary)
NORVANE_FROM_WIRE(NVMListCustomField, NVESListCustomField)
NORVANE_FROM_WIRE(NVMRecipientSignatureInformation, NVESRecipientSignatureInformation)
NORVANE_FROM_WIRE(NVMRecipients, NVESRecipients)
NORVANE_FROM_WIRE(NVMSigner, NVESSigner)
NORVANE_FROM_WIRE(NVMTabs, NVESTabs)
NORVANE_FROM_WIRE(NVMTextCustomField, NVESTextCustomField)
#undef NORVANE_FROM_WIRE

} // namespace norvane
