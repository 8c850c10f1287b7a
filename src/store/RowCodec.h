#pragma once

#include "src/store/Model.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>

namespace norvane {

/// Binds the attributes to parameters 1 and up without copying texts and bytes, and answers the next
/// parameter. The record must stay as it is until the statement is reset.
int bindAttributes(SQLite::Statement& statement, const Entity& entity, const void* record);
void bindAttribute(SQLite::Statement& statement, int parameter, const Field& field, const void* record);

/// Sets the record's attributes from the columns from `firstColumn` on. What a column holds beyond its kind
/// reads as absent.
void readAttributes(SQLite::Statement& statement, int firstColumn, const Entity& entity, void* record);
/// A list as it is read back once stored.
field::TextList storedFormOf(const field::TextList& list);
Value readValue(SQLite::Statement& statement, int column, FieldKind kind);

/// Binds a condition's value as the column stores it.
void bindValue(SQLite::Statement& statement, int parameter, const Value& value);

} // namespace norvane
