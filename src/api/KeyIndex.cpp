#include "src/api/KeyIndex.h"

#include <norvane/api/NVESObject.h>

#include <bit>
#include <memory>
#include <string>
#include <unordered_map>

namespace norvane {
namespace {

// Short keys are masked by their lowest bytes, which come first.
static_assert(std::endian::native == std::endian::little);

KeyIndex::Words wordsOf(std::string_view key) {
    const std::string padded = std::string(key) + std::string(8, '\0');
    KeyIndex::Words words(std::string_view(padded).substr(0, key.size()));
    words.key = key;
    return words;
}

bool travels(const Field& field) { return field.kind != FieldKind::Local && field.kind != FieldKind::Rest; }

} // namespace

const KeyIndex& KeyIndex::of(const RecordType& type) {
    thread_local std::unordered_map<const RecordType*, std::unique_ptr<const KeyIndex>> made;
    auto& index = made[&type];
    if (!index) index = std::make_unique<const KeyIndex>(type);
    return *index;
}

KeyIndex::KeyIndex(const RecordType& type)
    : type_(type) {
    const std::shared_ptr<void> sample = type.make();
    for (const Field& field : type.fields()) {
        if (field.kind == FieldKind::Rest) rest_ = &field;
        if (!travels(field)) continue;
        const auto offset = static_cast<char*>(field.in(sample.get())) - static_cast<char*>(sample.get());
        members_.push_back({wordsOf(jsonKey(field.name)), &field, static_cast<std::size_t>(offset),
                            field.kind == FieldKind::Text});
    }
    constexpr std::uint64_t kStep = 0xD1B54A32D192ED02u;
    for (int tries = 60; !fillSlots() && tries > 0; --tries)
        factor_ += kStep;
}

/// Whether no two keys share a slot; one that does takes the next.
bool KeyIndex::fillSlots() {
    bool isPerfect = true;
    slots_.fill(kFree);
    for (std::size_t number = 0; number < members_.size(); ++number) {
        std::size_t slot = slotOf(members_[number].words);
        isPerfect = isPerfect && slots_[slot] == kFree;
        while (slots_[slot] != kFree)
            slot = (slot + 1) % kSlots;
        slots_[slot] = static_cast<std::uint8_t>(number);
    }
    return isPerfect;
}

} // namespace norvane
