#pragma once

#include <norvane/record/Record.h>

#include <random>

namespace norvane {

/// Fills a record and all that it owns with arbitrary content.
class RandomTree {
  public:
    explicit RandomTree(unsigned seed)
        : random_(seed) {}

    template <class T>
    std::shared_ptr<T> make() {
        auto record = std::make_shared<T>();
        fill(T::type(), record.get());
        return record;
    }

    void fill(const RecordType& type, void* record) {
        for (const Field& field : type.fields()) {
            if (field.kind == FieldKind::Bool)
                field.as<bool>(record) = chance(2);
            else if (chance(5))
                continue; // absent
            else if (field.reference)
                fillReference(field, record);
            else
                fillScalar(field, record);
        }
    }

  private:
    bool chance(unsigned in) { return random_() % in == 0; }

    std::string text() {
        std::string text;
        for (auto length = random_() % 12; length > 0; --length)
            text += std::string_view("aZ0'\";\\\n\0\xc3\xa9", 11).substr(random_() % 9, 1);
        return text + "\xe2\x82\xac";
    }

    void fillReference(const Field& field, void* record) {
        void* member = field.in(record);
        const ReferenceAccess& access = *field.reference;
        const std::size_t count = field.kind == FieldKind::Record ? 1 : 1 + random_() % 3;
        access.reset(member, count);
        for (std::size_t index = 0; index < count; ++index)
            fill(access.type(), access.emplace(member));
    }

    void fillScalar(const Field& field, void* record) {
        switch (field.kind) {
        case FieldKind::Text:
            field.as<field::Text>(record) = chance(6) ? "" : text();
            break;
        case FieldKind::Integer:
            field.as<std::int64_t>(record) = std::int64_t(random_() % 2'000'000) - 1'000'000;
            break;
        case FieldKind::Number:
            field.as<field::Number>(record) = chance(2) ? double(random_() % 2) : double(random_()) / 7 - 1e8;
            break;
        case FieldKind::DateTime:
            field.as<field::Date>(record) =
                norvane::Date(std::chrono::milliseconds(std::int64_t(random_()) * 700 - 1));
            break;
        case FieldKind::Bytes:
            field.as<field::Bytes>(record) = chance(4) ? Data() : Data(text());
            break;
        case FieldKind::TextList:
            field.as<field::TextList>(record) = std::vector<std::string>{"", text(), "x"};
            break;
        default:
            break;
        }
    }

    std::mt19937 random_;
};

} // namespace norvane
