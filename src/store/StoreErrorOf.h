#pragma once

#include <norvane/store/StoreErrors.h>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>

namespace norvane {

NVMError storeError(StoreError error, std::string description);

/// The error of a failed statement, with SQLite's extended code and, where a system call failed, its errno.
/// `handle` may be null when the file could not even be opened.
NVMError storeErrorOf(const SQLite::Exception& exception, sqlite3* handle);

} // namespace norvane
