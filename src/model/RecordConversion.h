#pragma once

#include <norvane/record/Record.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace norvane {

/// What is special about turning one kind of record into another, beyond copying like-named fields.
struct ConversionRule {
    const RecordType& (*from)(); ///< null: whatever record it comes from
    const RecordType& (*to)();
    std::span<const std::string_view> only = {};   ///< unless empty, no other like-named fields are copied
    std::span<const std::string_view> except = {}; ///< like-named fields that are left alone
    void (*then)(const void* from, void* to) = nullptr; ///< runs after the like-named fields
};

/// Adapts a function over records for `ConversionRule::then`.
template <auto FUNCTION>
struct Then;
template <class From, class To, void (*FUNCTION)(const From&, To&)>
struct Then<FUNCTION> {
    static void apply(const void* from, void* to) {
        FUNCTION(*static_cast<const From*>(from), *static_cast<To*>(to));
    }
};

/// One way between two forms of the records, for all their kinds. Like-named fields are copied whatever their
/// types: a Boolean is "true" or "false" as text, a number its decimal text, a date that of the wire,
/// sub-records and lists are converted element by element into new ones. Texts that say no number or no date
/// read as absent.
class RecordConversion {
  public:
    /// The rules must live as long as the conversion. For one pair of records the first that fits counts.
    constexpr explicit RecordConversion(std::span<const ConversionRule> rules)
        : rules_(rules) {}

    void apply(const RecordType& fromType, const void* from, const RecordType& toType, void* to) const;

    template <class From, class To>
    void apply(const From& from, To& to) const {
        apply(From::type(), &from, To::type(), &to);
    }
    template <class To, class From>
    std::shared_ptr<To> make(const From& from) const {
        auto to = std::make_shared<To>();
        apply(from, *to);
        return to;
    }

  private:
    void convertField(const Field& source, const void* from, const Field& target, void* to) const;
    void convertReferences(const Field& source, const void* from, const Field& target, void* to) const;
    const ConversionRule* ruleFor(const RecordType& fromType, const RecordType& toType) const;

    std::span<const ConversionRule> rules_;
};

/// The number that the whole text says, with "." for the decimals; `grouped` skips "," between digits and
/// takes an exponent. Absent otherwise, and beyond the range of a double.
std::optional<double> numberFromText(std::string_view text, bool grouped = false);

/// Whether a number of that name stands for a Boolean in the store's records.
bool isBooleanAttribute(std::string_view name);

} // namespace norvane
