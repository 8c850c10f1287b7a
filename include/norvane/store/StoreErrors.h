#pragma once

#include <norvane/platform/NVMError.h>

#include <cstdint>
#include <string_view>

namespace norvane {

/// Domain of errors of the store; the code is SQLite's extended result code, or a `StoreError` below zero.
inline constexpr std::string_view kStoreErrorDomain = "NorvaneStoreErrorDomain";
/// User-information key: SQLite's extended result code, also when the code says something clearer.
inline constexpr std::string_view kStoreResultCodeKey = "SQLiteExtendedResultCode";
/// User-information key: errno of the system call that failed, when one did.
inline constexpr std::string_view kStoreSystemErrorKey = "SQLiteSystemErrno";
/// User-information key: the document that an error is about.
inline constexpr std::string_view kStoreDocumentKey = "document";

enum class StoreError : std::int64_t {
    NotOpen = -1,         ///< the store was never opened, or closed meanwhile
    NotAStore = -2,       ///< the file is no store of the kit; it was left as it is
    NewerModel = -3,      ///< made by a later kit; it was left as it is
    DiskFull = -4,        ///< the device's storage, or this user's share of it, is full
    ObjectGone = -5,      ///< the row to change was removed meanwhile
    DocumentDamaged = -6, ///< the document's file is missing or is not what was written
    NotFound = -7,        ///< no stored object of that identifier
    OlderModel = -8,      ///< made by an earlier kit and not migrated; it was left as it is
    Damaged = -9,         ///< the store, or the object asked for, is not what was written
};

/// Whether nothing could be written, in the store or as a file, because the disk is full.
bool isDiskFull(const NVMError& error);

} // namespace norvane
