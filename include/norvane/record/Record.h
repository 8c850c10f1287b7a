#pragma once

#include <norvane/record/Kinds.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

namespace norvane {

/// What a field holds; each kind is one member type of Kinds.h.
enum class FieldKind {
    Text,
    Bool,
    Integer,
    Number,
    DateTime,
    Bytes,
    TextList,
    Any,
    Record,
    List,
    Local,
    Rest
};

class RecordType;

namespace detail {

template <class Word>
inline bool sameWord(const char* a, const char* b) {
    Word first, second;
    std::memcpy(&first, a, sizeof first);
    std::memcpy(&second, b, sizeof second);
    return first == second;
}

/// Names are short and looked up by the ten thousand: cheaper than a call of memcmp. The last word may
/// overlap the one before.
inline bool sameName(std::string_view first, std::string_view second) {
    const std::size_t size = first.size();
    if (size != second.size()) return false;
    const char* const a = first.data();
    const char* const b = second.data();
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8)
            if (!sameWord<std::uint64_t>(a + at, b + at)) return false;
        return sameWord<std::uint64_t>(a + size - 8, b + size - 8);
    }
    if (size >= 4)
        return sameWord<std::uint32_t>(a, b) && sameWord<std::uint32_t>(a + size - 4, b + size - 4);
    return first == second;
}

} // namespace detail

/// How to reach the elements of a `field::List` or the target of a `field::Record` without its type.
struct ReferenceAccess {
    const RecordType& (*type)();
    std::size_t recordSize; ///< bytes of one element, without what it refers to
    std::size_t (*size)(const void* member);
    void* (*at)(const void* member, std::size_t index);
    /// Appends (List) or sets (Record) a fresh element and gives it.
    void* (*emplace)(void* member);
    /// Fresh elements side by side, and the way to append (List) or set (Record) one of them, which keeps all
    /// of them alive: for short runs of a list that is filled at once.
    std::shared_ptr<void> (*makeBlock)(std::size_t count);
    void* (*emplaceOf)(void* member, const std::shared_ptr<void>& block, std::size_t index);
    /// The same with an element that exists; it must be of `type`.
    void (*adopt)(void* member, std::shared_ptr<void> element);
    std::shared_ptr<void> (*share)(const void* member, std::size_t index);
    /// Makes the member an empty list with room for `capacity` elements (List) or null (Record).
    void (*reset)(void* member, std::size_t capacity);
    bool (*present)(const void* member);
    void (*clear)(void* member); ///< absent
};

/// One row of a record's table.
struct Field {
    std::string_view
        name; ///< the property's name; a trailing underscore that avoids a C++ keyword is dropped
    FieldKind kind;
    void* (*member)(void* record);
    const ReferenceAccess* reference; ///< Record and List only

    void* in(void* record) const { return member(record); }
    const void* in(const void* record) const { return member(const_cast<void*>(record)); }
    template <class T>
    T& as(void* record) const {
        return *static_cast<T*>(member(record));
    }
    template <class T>
    const T& as(const void* record) const {
        return *static_cast<const T*>(in(record));
    }
};

/// A record's table: its name, its fields in declaration order (a base record's first where it stands first
/// in the list), an index of their names and how to make a record. Tables live for ever; look-ups are
/// thread-safe.
class RecordType {
  public:
    constexpr RecordType(std::string_view recordName, std::span<const Field> fieldRows,
                         std::span<const std::uint8_t> nameSlots, std::shared_ptr<void> (*maker)())
        : name_(recordName)
        , fields_(fieldRows)
        , slots_(nameSlots)
        , make_(maker) {}

    constexpr std::string_view name() const { return name_; }
    constexpr std::span<const Field> fields() const { return fields_; }
    std::shared_ptr<void> make() const { return make_(); }
    /// The field of that name, or null. `hint` is where the caller expects it (the field after the last one
    /// found): records mostly arrive in the order of their table.
    const Field* find(std::string_view name, std::size_t hint = 0) const {
        return hint < fields_.size() && detail::sameName(fields_[hint].name, name) ? &fields_[hint]
                                                                                   : findByHash(name);
    }

  private:
    const Field* findByHash(std::string_view name) const;

    std::string_view name_;
    std::span<const Field> fields_;
    std::span<const std::uint8_t> slots_;
    std::shared_ptr<void> (*make_)();
};

/// Sets the fields of `to` from the like-named fields of `from`, whatever the two types. Like kinds are
/// copied; Bool, Integer and Number convert among one another (absent reads as false or 0); Record and List
/// fields are shared between records of one type and left alone otherwise. Fields named in `except` are left.
void copyLikeNamedFields(const RecordType& fromType, const void* from, const RecordType& toType, void* to,
                         std::span<const std::string_view> except = {});

/// Copies one field as `copyLikeNamedFields` does, whatever the two names; false, and nothing changes, where
/// the kinds do not allow it.
bool copyField(const Field& fromField, const void* from, const Field& toField, void* to);

/// Field by field, sub-records by content.
bool equalRecords(const RecordType& type, const void* a, const void* b);

/// Whether the field holds anything: text, number, date, bytes and lists when present, Bool and Integer
/// always.
bool hasValue(const Field& field, const void* record);

/// A scalar field as a boxed value; null when absent and for Record and List fields.
Value valueOf(const Field& field, const void* record);

namespace detail {

template <class T>
struct KindOf;
#define NORVANE_KIND(TYPE, KIND)                                                                             \
    template <>                                                                                              \
    struct KindOf<field::TYPE> {                                                                             \
        static constexpr FieldKind kind = FieldKind::KIND;                                                   \
        static constexpr const ReferenceAccess* reference = nullptr;                                         \
    };
NORVANE_KIND(Text, Text)
NORVANE_KIND(Bool, Bool)
NORVANE_KIND(Integer, Integer)
NORVANE_KIND(Number, Number)
NORVANE_KIND(Date, DateTime)
NORVANE_KIND(Bytes, Bytes)
NORVANE_KIND(TextList, TextList)
NORVANE_KIND(Any, Any)
NORVANE_KIND(LocalText, Local)
NORVANE_KIND(Rest, Rest)
#undef NORVANE_KIND

/// Not zeroed first: every member has its initial value.
template <class T>
std::shared_ptr<void> makeRecords(std::size_t count) {
    const std::shared_ptr<T[]> block = std::make_shared_for_overwrite<T[]>(count);
    return {block, block.get()};
}

template <class T>
struct RecordAccess {
    using Member = std::shared_ptr<T>;
    static Member& of(void* member) { return *static_cast<Member*>(member); }
    static const Member& of(const void* member) { return *static_cast<const Member*>(member); }
    static constexpr ReferenceAccess value{
        []() -> const RecordType& { return T::type(); },
        sizeof(T),
        [](const void* member) -> std::size_t { return of(member) ? 1 : 0; },
        [](const void* member, std::size_t) -> void* { return of(member).get(); },
        [](void* member) -> void* { return (of(member) = std::make_shared<T>()).get(); },
        &makeRecords<T>,
        [](void* member, const std::shared_ptr<void>& block, std::size_t index) -> void* {
            return (of(member) = {block, static_cast<T*>(block.get()) + index}).get();
        },
        [](void* member, std::shared_ptr<void> element) {
            of(member) = std::static_pointer_cast<T>(std::move(element));
        },
        [](const void* member, std::size_t) -> std::shared_ptr<void> { return of(member); },
        [](void* member, std::size_t) { of(member).reset(); },
        [](const void* member) { return of(member) != nullptr; },
        [](void* member) { of(member).reset(); },
    };
};

template <class T>
struct ListAccess {
    using Member = std::optional<std::vector<std::shared_ptr<T>>>;
    static Member& of(void* member) { return *static_cast<Member*>(member); }
    static const Member& of(const void* member) { return *static_cast<const Member*>(member); }
    static constexpr ReferenceAccess value{
        []() -> const RecordType& { return T::type(); },
        sizeof(T),
        [](const void* member) -> std::size_t { return of(member) ? of(member)->size() : 0; },
        [](const void* member, std::size_t index) -> void* { return (*of(member))[index].get(); },
        [](void* member) -> void* {
            if (!of(member)) of(member).emplace();
            return of(member)->emplace_back(std::make_shared<T>()).get();
        },
        &makeRecords<T>,
        [](void* member, const std::shared_ptr<void>& block, std::size_t index) -> void* {
            if (!of(member)) of(member).emplace();
            return of(member)->emplace_back(block, static_cast<T*>(block.get()) + index).get();
        },
        [](void* member, std::shared_ptr<void> element) {
            if (!of(member)) of(member).emplace();
            of(member)->push_back(std::static_pointer_cast<T>(std::move(element)));
        },
        [](const void* member, std::size_t index) -> std::shared_ptr<void> { return (*of(member))[index]; },
        [](void* member, std::size_t capacity) { of(member).emplace().reserve(capacity); },
        [](const void* member) { return of(member).has_value(); },
        [](void* member) { of(member).reset(); },
    };
};

template <class T>
struct KindOf<std::shared_ptr<T>> {
    static constexpr FieldKind kind = FieldKind::Record;
    static constexpr const ReferenceAccess* reference = &RecordAccess<T>::value;
};
template <class T>
struct KindOf<std::optional<std::vector<std::shared_ptr<T>>>> {
    static constexpr FieldKind kind = FieldKind::List;
    static constexpr const ReferenceAccess* reference = &ListAccess<T>::value;
};

constexpr std::string_view fieldName(std::string_view member) {
    return member.ends_with('_') ? member.substr(0, member.size() - 1) : member;
}

template <class R, auto MEMBER>
constexpr Field makeField(std::string_view name) {
    using Kind = KindOf<std::remove_reference_t<decltype(std::declval<R&>().*MEMBER)>>;
    return {fieldName(name), Kind::kind,
            [](void* record) -> void* { return &(static_cast<R*>(record)->*MEMBER); }, Kind::reference};
}

inline constexpr std::uint8_t kEmptySlot = 255;

/// Names of one table mostly differ in length or in one of these characters.
constexpr std::size_t nameHash(std::string_view name) {
    const std::size_t size = name.size();
    if (size == 0) return 0;
    const auto at = [&](std::size_t index) {
        return static_cast<std::size_t>(static_cast<unsigned char>(name[index]));
    };
    return size * 131 + at(0) * 31 + at(size / 3) * 7 + at(size / 2) * 17 + at(size - 1) * 61;
}

/// Field numbers by the hash of the name; a taken slot moves on to the next.
template <std::size_t COUNT>
constexpr auto indexNames(const Field (&fields)[COUNT]) {
    static_assert(COUNT < kEmptySlot);
    std::array<std::uint8_t, std::bit_ceil(COUNT * 2)> slots{};
    slots.fill(kEmptySlot);
    for (std::size_t number = 0; number < COUNT; ++number) {
        std::size_t slot = nameHash(fields[number].name) % slots.size();
        while (slots[slot] != kEmptySlot)
            slot = (slot + 1) % slots.size();
        slots[slot] = static_cast<std::uint8_t>(number);
    }
    return slots;
}

} // namespace detail

// A field list is a macro that calls its first argument once a field; lists may contain other lists. After
//     #define NVES_NAME_VALUE_FIELDS(FIELD, R) FIELD(R, Text, name) FIELD(R, Text, value)
// the header says
//     struct NVESNameValue : NVESObject { NORVANE_RECORD(NVESNameValue, NVES_NAME_VALUE_FIELDS) };
// and one source says
//     NORVANE_TABLE(NVESNameValue, NVES_NAME_VALUE_FIELDS)
// A derived record declares its own fields and names its base's too in its table.
#define NORVANE_DECLARE_FIELD(R, KIND, NAME) ::norvane::field::KIND NAME{};
#define NORVANE_DESCRIBE_FIELD(R, KIND, NAME) ::norvane::detail::makeField<R, &R::NAME>(#NAME),

#define NORVANE_RECORD(R, FIELDS)                                                                            \
    FIELDS(NORVANE_DECLARE_FIELD, R)                                                                         \
    static const ::norvane::RecordType& type();

#define NORVANE_TABLE(R, FIELDS)                                                                             \
    const ::norvane::RecordType& R::type() {                                                                 \
        static constexpr ::norvane::Field fields[] = {FIELDS(NORVANE_DESCRIBE_FIELD, R)};                    \
        static constexpr auto slots = ::norvane::detail::indexNames(fields);                                 \
        static constexpr ::norvane::RecordType table(                                                        \
            #R, fields, slots, []() -> std::shared_ptr<void> { return std::make_shared<R>(); });             \
        return table;                                                                                        \
    }

} // namespace norvane
