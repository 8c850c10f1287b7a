#include "src/model/mapping/NotKept.h"

#include <norvane/model/NVMEnvelopeDefinition.h>

#include <algorithm>

namespace norvane {
namespace {

constexpr std::string_view kOfTemplates = "only templates have it";
constexpr std::string_view kByList = "the list that holds the record tells its kind; of tabs, 0 is kept";
constexpr std::string_view kWholeOffset = "read as a whole number";
constexpr std::string_view kOfFrame = "the frame's, whenever there is one; else lost";
constexpr std::string_view kImageFrame = "width and height follow the scale at every reading";

constexpr NotKept kRows[] = {
    {&NVMEnvelopeTemplate::type, "autoNavigation", kOfTemplates},
    {&NVMEnvelopeTemplate::type, "isSignatureProviderEnvelope", kOfTemplates},
    {&NVMEnvelopeTemplate::type, "cachedDateTime", kOfTemplates},
    {&NVMEnvelopeTemplate::type, "combinedDocument", "made from the documents when it is needed"},
    {&NVMEnvelopeTemplate::type, "envelopeTemplateDefinition", "its templateId alone, if it has one"},
    {&NVMEnvelopeTemplate::type, "currentRoutingOrder", "the recipients', cut to a whole number; 0 is none"},
    {&NVMRecipients::type, "currentRoutingOrder", "the envelope's, where that is known"},
    {&NVMDocument::type, "pdf", "the bytes of the document's file, when asked for"},
    {&NVMRecipient::type, "recipientType", kByList},
    {&NVMTab::type, "tabType", kByList},
    {&NVMTab::type, "anchorXOffset", kWholeOffset},
    {&NVMTab::type, "anchorYOffset", kWholeOffset},
    {&NVMImageTabProtocol::type, "frame", kImageFrame},
    {&NVMRadio::type, "xPosition", kOfFrame},
    {&NVMRadio::type, "yPosition", kOfFrame},
    {&NVMFormula::type, "xPosition", kOfFrame},
    {&NVMFormula::type, "yPosition", kOfFrame},
    {&NVMFormula::type, "width", kOfFrame},
};

/// A kind of a record has all of the record's fields.
bool isKindOf(const RecordType& type, const RecordType& base) {
    return &type == &base || std::all_of(base.fields().begin(), base.fields().end(), [&](const Field& field) {
        return type.find(field.name) != nullptr;
    });
}

} // namespace

std::span<const NotKept> fieldsNotKept() { return kRows; }

const NotKept* findNotKept(const RecordType& type, std::string_view field) {
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows), [&](const NotKept& candidate) {
        return candidate.field == field && isKindOf(type, candidate.record());
    });
    return row == std::end(kRows) ? nullptr : row;
}

} // namespace norvane
