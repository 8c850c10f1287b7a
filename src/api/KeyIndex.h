#pragma once

#include <norvane/record/Record.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace norvane {

/// Finds the members of a record by the keys of a JSON document: by the ten thousand and in any order, so
/// without a loop over a key's characters. The next member of the table is tried first; in objects of another
/// order that is soon given up, and no branch depends on the key.
class KeyIndex {
  public:
    /// A key in a form that is hashed and compared by words: its length and up to 32 of its bytes, which are
    /// all bytes of most keys.
    struct Words {
        std::array<std::uint64_t, 4> words; ///< bytes 0 to 7, 8 to 15, the 8 before the last 8, the last 8
        std::string_view key;

        /// Behind the key's end 8 more bytes must be readable, whatever they are.
        explicit Words(std::string_view paddedKey);
        bool operator==(const Words& other) const;
    };
    struct Member {
        Words words;
        const Field* field;
        std::size_t offset; ///< in every record of the type
        bool isText;

        void* in(void* record) const { return static_cast<char*>(record) + offset; }
    };

    /// Which member the next key of one object may name, and how often it did not. A new one for each object.
    struct Guess {
        std::size_t next = 0;
        int wrong = 0;
    };

    /// That of the type, made when a thread first asks for it and kept for that thread.
    static const KeyIndex& of(const RecordType& type);
    explicit KeyIndex(const RecordType& type);

    const RecordType& type() const { return type_; }
    /// The field that keeps the members of other keys, or null.
    const Field* rest() const { return rest_; }
    /// The member that travels under the key, or null. The key must lie in the parser's buffer, which has
    /// room to read beyond the end of any text in it.
    const Member* find(std::string_view key, Guess& guess) const {
        const Words words(key);
        if (guess.wrong < kMaxWrong) {
            if (guess.next < members_.size() && members_[guess.next].words == words)
                return &members_[guess.next++];
            ++guess.wrong;
        }
        for (std::size_t slot = slotOf(words); slots_[slot] != kFree; slot = (slot + 1) % kSlots)
            if (members_[slots_[slot]].words == words) {
                guess.next = std::size_t{slots_[slot]} + 1;
                return &members_[slots_[slot]];
            }
        return nullptr;
    }

  private:
    static constexpr int kMaxWrong = 2; ///< in an object, until guessing is given up
    static constexpr std::uint8_t kFree = 255;
    /// So many that a few factors will do to find one with which no two keys share a slot.
    static constexpr std::size_t kSlots = 1024;

    std::size_t slotOf(const Words& words) const {
        const std::uint64_t mixed =
            words.words[0] ^ (words.words[3] << 29 | words.words[3] >> 35) ^ words.key.size() << 56;
        return static_cast<std::size_t>(mixed * factor_ >> 54);
    }
    bool fillSlots();

    const RecordType& type_;
    const Field* rest_ = nullptr;
    std::vector<Member> members_;
    std::uint64_t factor_ = 0x9E3779B97F4A7C15u;
    std::array<std::uint8_t, kSlots> slots_; ///< a member's number, or kFree
};

inline KeyIndex::Words::Words(std::string_view paddedKey)
    : key(paddedKey) {
    const std::size_t size = key.size();
    const std::uint64_t mask =
        size >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << 8 * size) - 1; // of the lowest bytes
    const auto load = [&](std::size_t offset) {
        std::uint64_t word;
        std::memcpy(&word, key.data() + offset, sizeof word);
        return word & mask;
    };
    const std::size_t last = size > 8 ? size - 8 : 0;
    words = {load(0), load(last < 8 ? last : 8), load(size > 16 ? size - 16 : 0), load(last)};
}

inline bool KeyIndex::Words::operator==(const Words& other) const {
    const std::uint64_t difference = (words[0] ^ other.words[0]) | (words[1] ^ other.words[1]) |
                                     (words[2] ^ other.words[2]) | (words[3] ^ other.words[3]) |
                                     (key.size() ^ other.key.size());
    return difference == 0 && (key.size() <= 32 || key == other.key);
}

} // namespace norvane
