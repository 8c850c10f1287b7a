#pragma once

#include <norvane/store/StoreErrors.h>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

NVMError storeError(StoreError error, std::string description);
NVMError storeNotOpen();
/// `reason` goes on after the document's name; `cause` stands beneath when given.
NVMError documentDamaged(std::string_view documentName, const std::string& reason,
                         const std::optional<NVMError>& cause = std::nullopt);

/// The error of a failed statement, with SQLite's extended code and, where a system call failed, its errno.
/// `handle` may be null when the file could not even be opened.
NVMError storeErrorOf(const SQLite::Exception& exception, sqlite3* handle);

} // namespace norvane
