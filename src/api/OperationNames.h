#pragma once

#include <norvane/record/Record.h>

#include <string>
#include <string_view>

namespace norvane {

/// The query name of an option: "includeAccountIdGuid" as "include_account_id_guid".
std::string queryName(std::string_view option);

/// The option of either name, or null.
const Field* optionNamed(const RecordType& options, std::string_view name);

} // namespace norvane
