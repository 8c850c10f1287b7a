#include "src/model/mapping/TabsToWire.h"

#include "src/model/RecordConversion.h"

#include <norvane/model/NVMTabType.h>
#include <norvane/platform/Base64.h>

#include <charconv>

namespace norvane {
namespace {

const RecordConversion& tabToWire();

// The service places the images of these kinds by another corner: deliberate.
constexpr float kSignHereRise = 21;
constexpr float kInitialHereRise = 16;

/// Deliberately in single precision, as the shortest text that says it.
field::Text raised(field::Number origin, float by) {
    if (!origin) return std::nullopt;
    char digits[32];
    const auto [end, error] =
        std::to_chars(std::begin(digits), std::end(digits), static_cast<float>(*origin) - by);
    if (error != std::errc()) return std::nullopt;
    return std::string(std::begin(digits), end);
}

template <class T>
void placeTab(const NVMCDTab& stored, T& tab) {
    if (!stored.frameEntity) return;
    tab.xPosition = Value(stored.frameEntity->originX).stringValue();
    tab.yPosition = Value(stored.frameEntity->originY).stringValue();
}

/// A side of 0 says that the tab has no size of its own.
field::Number sideOf(field::Number stored) { return stored == 0.0 ? std::nullopt : stored; }

template <class T>
void finishSizedTab(const NVMCDTab& stored, T& tab) {
    placeTab(stored, tab);
    if (!stored.frameEntity) return;
    tab.width = sideOf(stored.frameEntity->width);
    if constexpr (requires { tab.height; }) tab.height = sideOf(stored.frameEntity->height);
}

void finishImage(const NVMCDTab& stored, field::Text& imageDataBase64) {
    if (stored.imageData && stored.imageData->data)
        imageDataBase64 = encodeBase64(stored.imageData->data->view(), Base64Lines::SixtyFour);
}

void finishSignHere(const NVMCDTab& stored, NVESSignHere& tab) {
    placeTab(stored, tab);
    if (stored.frameEntity) tab.yPosition = raised(stored.frameEntity->originY, kSignHereRise);
    finishImage(stored, tab.imageDataBase64);
}

void finishInitialHere(const NVMCDTab& stored, NVESInitialHere& tab) {
    placeTab(stored, tab);
    if (stored.frameEntity) tab.yPosition = raised(stored.frameEntity->originY, kInitialHereRise);
    finishImage(stored, tab.imageDataBase64);
}

/// Never sent.
constexpr std::string_view kTabExceptions[] = {"templateLocked", "templateRequired", "status",
                                               "errorDetails",   "originalValue",    "senderRequired"};

template <class T, void (*FINISH)(const NVMCDTab&, T&)>
constexpr ConversionRule tabRule() {
    return {&NVMCDTab::type, &T::type, {}, kTabExceptions, &Then<FINISH>::apply};
}

constexpr std::string_view kRadioGroupFields[] = {"documentId", "recipientId", "groupName", "radios"};

constexpr ConversionRule kRules[] = {
    tabRule<NVESSignHere, &finishSignHere>(),
    tabRule<NVESInitialHere, &finishInitialHere>(),
    tabRule<NVESText, &finishSizedTab<NVESText>>(),
    tabRule<NVESCompany, &finishSizedTab<NVESCompany>>(),
    tabRule<NVESTitle, &finishSizedTab<NVESTitle>>(),
    tabRule<NVESFormulaTab, &finishSizedTab<NVESFormulaTab>>(),
    tabRule<NVESCheckbox, &placeTab<NVESCheckbox>>(),
    tabRule<NVESFullName, &placeTab<NVESFullName>>(),
    tabRule<NVESDateSigned, &placeTab<NVESDateSigned>>(),
    tabRule<NVESRadio, &placeTab<NVESRadio>>(),
    {&NVMCDRadioGroup::type, &NVESRadioGroup::type, kRadioGroupFields},
};

const RecordConversion& tabToWire() {
    static constexpr RecordConversion conversion(kRules);
    return conversion;
}

template <class T, field::List<T> NVESTabs::*LIST>
void add(const NVMCDTab& stored, NVESTabs& tabs) {
    auto& list = tabs.*LIST;
    if (!list) list.emplace();
    list->push_back(tabToWire().make<T>(stored));
}

void addTab(const NVMCDTab& stored, NVESTabs& tabs) {
    switch (static_cast<int>(stored.type_.value_or(NVMTabTypeUnsupported))) {
    case NVMTabTypeSignHere:
        return add<NVESSignHere, &NVESTabs::signHereTabs>(stored, tabs);
    case NVMTabTypeInitialHere:
        return add<NVESInitialHere, &NVESTabs::initialHereTabs>(stored, tabs);
    case NVMTabTypeText:
        return add<NVESText, &NVESTabs::textTabs>(stored, tabs);
    case NVMTabTypeCheckbox:
        return add<NVESCheckbox, &NVESTabs::checkboxTabs>(stored, tabs);
    case NVMTabTypeCompany:
        return add<NVESCompany, &NVESTabs::companyTabs>(stored, tabs);
    case NVMTabTypeTitle:
        return add<NVESTitle, &NVESTabs::titleTabs>(stored, tabs);
    case NVMTabTypeFullName:
        return add<NVESFullName, &NVESTabs::fullNameTabs>(stored, tabs);
    case NVMTabTypeDateSigned:
        return add<NVESDateSigned, &NVESTabs::dateSignedTabs>(stored, tabs);
    case NVMTabTypeFormula:
        return add<NVESFormulaTab, &NVESTabs::formulaTabs>(stored, tabs);
    default:
        return;
    }
}

} // namespace

std::shared_ptr<NVESTabs> wireTabs(const NVMCDTabs& stored) {
    auto tabs = std::make_shared<NVESTabs>();
    for (const auto* list : {&stored.signHereTabs, &stored.initialHereTabs, &stored.fullNameTabs,
                             &stored.dateSignedTabs, &stored.companyTabs, &stored.titleTabs, &stored.textTabs,
                             &stored.checkboxTabs, &stored.formulaTabs}) {
        if (!*list) continue;
        for (const auto& tab : **list)
            addTab(*tab, *tabs);
    }
    if (!stored.radioGroupTabs || stored.radioGroupTabs->empty()) return tabs;
    tabs->radioGroupTabs.emplace();
    for (const auto& group : *stored.radioGroupTabs)
        tabs->radioGroupTabs->push_back(tabToWire().make<NVESRadioGroup>(*group));
    return tabs;
}

} // namespace norvane
