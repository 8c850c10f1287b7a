#pragma once

#include <norvane/record/Record.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

struct NVESRecipients;
struct NVESTabs;

/// Any wire record, or a tab that is a mere JSON object, read by the names of its properties. It refers to
/// what it was made from and must not outlive it.
class WireView {
  public:
    template <class R>
    static WireView of(const R& record) {
        return WireView(&R::type(), &record, nullptr);
    }
    static WireView ofObject(const Value& object) {
        return WireView(nullptr, nullptr, object.asDictionary());
    }

    /// Nothing when there is no such property, it is absent, or it is no scalar.
    std::optional<std::string> text(std::string_view property) const;
    /// Whether the property exists and is not null; an empty text counts as a value.
    bool hasNonNilValueForSelector(std::string_view property) const;
    /// Whether the property's text is exactly the given one.
    bool hasValue(std::string_view value, std::string_view property) const { return text(property) == value; }
    /// Whether both texts are equal or both absent.
    bool isEqualOrBothAreNil(const WireView& other, std::string_view property) const {
        return text(property) == other.text(property);
    }
    bool isSame(const WireView& other) const { return record_ == other.record_ && object_ == other.object_; }

  private:
    WireView(const RecordType* type, const void* record, const Dictionary* object)
        : type_(type)
        , record_(record)
        , object_(object) {}

    const RecordType* type_;
    const void* record_;
    const Dictionary* object_;
};

/// One recipient of a wire template.
struct WireRecipient {
    std::uint64_t recipientType; ///< numbered as in NVMRecipient.h
    WireView view;
    std::shared_ptr<NVESTabs> tabs; ///< null for the kinds that have none
    bool isInPersonSigner() const { return recipientType == 6; }
    bool isSigner() const { return recipientType == 7; }
};

/// Agents, carbon copies, certified deliveries, editors, in-person signers, intermediaries, signers.
std::vector<WireRecipient> allRecipients(const NVESRecipients* recipients);

/// Every tab of every list; a radio group counts as a tab, and so does each of its radios.
std::vector<WireView> allTabs(const NVESTabs& tabs);
/// The same for the kinds that offline signing shows.
std::vector<WireView> allOfflineSupportedTabs(const NVESTabs& tabs);

} // namespace norvane
