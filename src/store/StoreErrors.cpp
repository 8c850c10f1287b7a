#include "src/store/Connection.h"
#include "src/store/StoreErrorOf.h"

#include <norvane/platform/Files.h>
#include <norvane/store/StoreErrors.h>

#include <sqlite3.h>

#include <cerrno>

namespace norvane {

namespace {

/// No room on the device, in this user's share of it, or in what one file may take.
bool isWantOfSpace(std::int64_t systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

bool isOutOfSpace(int code, int systemError) {
    if (code == SQLITE_FULL) return true;
    // A write-ahead log that cannot grow fails with an input/output error, not with SQLITE_FULL.
    const int kind = code & 0xff;
    return (kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN) && isWantOfSpace(systemError);
}

StoreError plainMeaning(int code, int systemError) {
    if (isOutOfSpace(code, systemError)) return StoreError::DiskFull;
    // The index of the log is made anew at the first access; it has no size for want of space alone.
    if (code == SQLITE_IOERR_SHMSIZE && systemError == 0) return StoreError::DiskFull;
    if ((code & 0xff) == SQLITE_NOTADB) return StoreError::NotAStore;
    if ((code & 0xff) == SQLITE_CORRUPT) return StoreError::Damaged;
    return StoreError{code};
}

} // namespace

NVMError storeError(StoreError error, std::string description) {
    return NVMError::make(std::string(kStoreErrorDomain), static_cast<std::int64_t>(error),
                          std::move(description));
}

NVMError storeNotOpen() { return storeError(StoreError::NotOpen, "The store is not open."); }

NVMError documentDamaged(std::string_view documentName, const std::string& reason,
                         const std::optional<NVMError>& cause) {
    auto error = storeError(StoreError::DocumentDamaged,
                            "The document \"" + std::string(documentName) + "\" " + reason);
    error.userInfo.emplace(kStoreDocumentKey, documentName);
    if (cause)
        error.userInfo.emplace(kUnderlyingErrorKey, Value::object(std::make_shared<const NVMError>(*cause)));
    return error;
}

NVMError storeErrorOf(const SQLite::Exception& exception, sqlite3* handle) {
    const int code =
        exception.getExtendedErrorCode() > 0 ? exception.getExtendedErrorCode() : exception.getErrorCode();
    const auto* opening = dynamic_cast<const OpeningFailed*>(&exception);
    const int systemError = opening ? opening->systemError : handle ? sqlite3_system_errno(handle) : 0;
    const StoreError meaning = plainMeaning(code, systemError);
    auto error = storeError(meaning, meaning == StoreError::DiskFull
                                         ? "The device's storage is full."
                                         : "The store failed: " + std::string(exception.what()));
    error.userInfo.emplace(kStoreResultCodeKey, std::int64_t{code});
    if (systemError != 0) error.userInfo.emplace(kStoreSystemErrorKey, std::int64_t{systemError});
    return error;
}

bool isDiskFull(const NVMError& error) {
    if (error.domain == kFileErrorDomain) return isWantOfSpace(error.code);
    return error.domain == kStoreErrorDomain && error.code == static_cast<std::int64_t>(StoreError::DiskFull);
}

} // namespace norvane
