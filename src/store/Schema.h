#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// The column of a sealed entity that holds the seal.
inline constexpr std::string_view kSealColumn = "_seal";

/// One version of the model as tables: what an empty store of it consists of.
struct Schema {
    struct Column {
        std::string name;
        std::string type; ///< of SQL, with its constraints
    };
    /// A column that names the row's owner, with which the row goes.
    struct Reference {
        std::string column;
        std::string owner;
    };
    struct Table {
        std::string name;
        std::vector<Column> attributes;
        std::vector<Reference> references; ///< none: nothing owns these rows

        /// Every column, the row's number first.
        std::vector<std::string> columns() const;
        bool hasColumn(std::string_view column) const;
    };

    int version;
    std::vector<Table> tables;
    std::vector<std::string> lookUps; ///< statements that make indexes besides those of the references

    /// Versions 1 and 2. They live as long as the process.
    static const Schema& ofVersion(int version);

    /// The statements that make an empty store, its version included.
    std::vector<std::string> statements() const;
    const Table* find(std::string_view table) const;
};

/// Version 1, which no kit writes any more: as it was, independent of today's entities.
Schema schemaOfVersion1();
/// Version 2, as the entities have it.
Schema schemaOfVersion2();

/// The name as an SQL identifier.
std::string sqlName(std::string_view identifier);
/// The parts with ", " in between.
std::string joined(const std::vector<std::string>& parts);

} // namespace norvane
