#include "sandbox/Tab.h"

#include <cmath>

namespace norvane::sandbox {

namespace {

using Kind = Tab::Kind;

/// The device shows a signature half its height below the position on the wire, initials a third of theirs.
double shownBelowPosition(Kind kind) {
    if (kind == Kind::SignHere) return std::floor(kSignatureSize.height / 2);
    if (kind == Kind::InitialHere) return std::floor(kInitialsSize.height / 3);
    return 0;
}

std::string coordinate(double value) { return std::to_string(std::lround(value)); }

std::string_view listOf(Kind kind) {
    switch (kind) {
    case Kind::SignHere:
        return "signHereTabs";
    case Kind::InitialHere:
        return "initialHereTabs";
    case Kind::Text:
        return "textTabs";
    case Kind::Checkbox:
        return "checkboxTabs";
    case Kind::Company:
        return "companyTabs";
    case Kind::Title:
        return "titleTabs";
    case Kind::FullName:
        return "fullNameTabs";
    case Kind::DateSigned:
        return "dateSignedTabs";
    case Kind::Formula:
        return "formulaTabs";
    case Kind::Radio:
        return "radioGroupTabs";
    }
    return {};
}

Json positioned(const Tab& tab, const std::string& tabId) {
    return Json::object({{"pageNumber", std::to_string(tab.page)},
                         {"xPosition", coordinate(tab.box.x)},
                         {"yPosition", coordinate(tab.box.y - shownBelowPosition(tab.kind))},
                         {"tabId", tabId}});
}

void addTyping(Json& json) {
    json.set("font", "helvetica").set("fontSize", "size9").set("fontColor", "black");
    json.set("bold", "false").set("italic", "false").set("underline", "false");
}

void addEntry(Json& json, const Tab& tab) {
    json.set("required", tab.required ? "true" : "false").set("locked", "false");
    json.set("value", "").set("width", static_cast<int>(std::lround(tab.box.width)));
    json.set("maxLength", tab.maximumLength);
    json.set("concealValueOnDocument", "false").set("disableAutoSize", "false");
}

void addShared(Json& json) { json.set("shared", "false").set("requireInitialOnSharedChange", "false"); }

Json& child(Json& parent, std::string_view key, Json empty) {
    if (!parent.find(key)) parent.set(key, std::move(empty));
    return *parent.find(key);
}

void addRadio(Json& tabs, const Tab& tab, const std::string& documentId, const std::string& tabId) {
    Json radio = positioned(tab, tabId);
    radio.set("value", tab.label).set("selected", "false");
    radio.set("required", tab.required ? "true" : "false").set("locked", "false");
    Json& groups = child(tabs, listOf(Kind::Radio), Json::Array());
    for (Json& group : *groups.mutableItems())
        if (group.text("groupName") == tab.group)
            return child(group, "radios", Json::Array()).push(std::move(radio));
    Json group = Json::object({{"documentId", documentId}, {"recipientId", tab.recipientId}});
    group.set("groupName", tab.group).set("radios", Json::Array{std::move(radio)});
    addShared(group);
    group.set("requireAll", "false");
    groups.push(std::move(group));
}

} // namespace

void addTab(Json& tabs, const Tab& tab, const std::string& documentId, const std::string& tabId, int order) {
    if (tab.kind == Kind::Radio) return addRadio(tabs, tab, documentId, tabId);
    Json json = Json::object({{"name", tab.label}, {"tabLabel", tab.label}});
    json.set("documentId", documentId).set("recipientId", tab.recipientId);
    const Json position = positioned(tab, tabId);
    for (const auto& [key, value] : position.members())
        json.set(key, value);
    json.set("templateLocked", "false").set("templateRequired", "false").set("tabOrder", order);
    const bool image = tab.kind == Kind::SignHere || tab.kind == Kind::InitialHere;
    if (image) json.set("scaleValue", "1").set("optional", tab.required ? "false" : "true");
    if (tab.kind == Kind::Checkbox) {
        json.set("selected", "false").set("required", tab.required ? "true" : "false").set("locked", "false");
        addShared(json);
    } else if (!image) {
        addTyping(json);
    }
    const bool formula = tab.kind == Kind::Formula;
    const bool text = tab.kind == Kind::Text || formula;
    if (text || tab.kind == Kind::Company || tab.kind == Kind::Title) addEntry(json, tab);
    if (text) {
        json.set("isPaymentAmount", "false").set("senderRequired", "false").set("requireAll", "false");
        addShared(json);
    }
    if (tab.kind == Kind::Text) json.set("height", static_cast<int>(std::lround(tab.box.height)));
    if (formula) json.set("formula", tab.formula).set("roundDecimalPlaces", "2");
    child(tabs, listOf(tab.kind), Json::Array()).push(std::move(json));
}

} // namespace norvane::sandbox
