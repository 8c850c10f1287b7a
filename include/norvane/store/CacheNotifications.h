#pragma once

#include <string_view>

namespace norvane {

// Notifications of the envelope cache and the synchroniser: posted on the thread that did the work, without
// an object, and where nothing else is said after what they tell of is on disk.

/// An envelope was stored. "envelopeId" holds its transaction identifier, deliberately; "templateId" when
/// present.
inline constexpr std::string_view NVMEnvelopeCachedNotification = "NVMEnvelopeCachedNotification";
/// It was not: the same, and "error".
inline constexpr std::string_view NVMEnvelopeCacheFailedNotification = "NVMEnvelopeCacheFailedNotification";
/// A document, recipient or tab of a stored envelope changed: "envelopeId", "templateId" when present.
inline constexpr std::string_view NVMEnvelopeUpdatedNotification = "NVMEnvelopeUpdatedNotification";
/// It did not: the same, and "error".
inline constexpr std::string_view NVMEnvelopeUpdateFailedNotification = "NVMEnvelopeUpdateFailedNotification";
/// A stored envelope was removed: "envelopeId", "templateId" when known. Of the copy that a finished signing
/// replaces it is told before that one save, which takes the one out and the other in.
inline constexpr std::string_view NVMEnvelopeUncachedNotification = "NVMEnvelopeUncachedNotification";
/// Caching was enabled for a record: "cacheURI". Told before its row is saved.
inline constexpr std::string_view NVMRecordMetaDataDidAddNotification = "NVMRecordMetaDataDidAddNotification";
/// A record's cache status changed: its own user information, "cacheURI", "templateId", "transactionId" and
/// "cacheStatus".
inline constexpr std::string_view NVMEnvelopeStatusDidChangeNotification =
    "NVMEnvelopeStatusDidChangeNotification";

/// A run of uploads starts: for each envelope, under its transaction identifier, {"envelopeId", "templateId",
/// "transactionId"}; what is absent is the empty text.
inline constexpr std::string_view NVMEnvelopeSyncingStartedNotification =
    "NVMEnvelopeSyncingStartedNotification";
/// An envelope was uploaded and its local copy is about to go. This and the next two carry the envelope's own
/// user information, "cacheURI", "templateId" and "transactionId".
inline constexpr std::string_view NVMEnvelopeSyncingWillDeleteEnvelopeNotification =
    "NVMEnvelopeSyncingWillDeleteEnvelopeNotification";
inline constexpr std::string_view NVMEnvelopeSyncingSucceededNotification =
    "NVMEnvelopeSyncingSucceededNotification";
inline constexpr std::string_view NVMEnvelopeSyncingFailedNotification =
    "NVMEnvelopeSyncingFailedNotification";
/// Nothing waits any more, or the run was cancelled.
inline constexpr std::string_view NVMEnvelopeSyncingEndedNotification = "NVMEnvelopeSyncingEndedNotification";

inline constexpr std::string_view NVMEnvelopeIdKey = "envelopeId";
inline constexpr std::string_view NVMTemplateIdKey = "templateId";
inline constexpr std::string_view NVMTransactionIdKey = "transactionId";
inline constexpr std::string_view NVMErrorKey = "error"; ///< `Value::object` of an NVMError
inline constexpr std::string_view NVMCacheURIKey = "cacheURI";
inline constexpr std::string_view NVMCacheStatusKey = "cacheStatus";

inline constexpr std::string_view NVMCacheDidAddStatus = "NVMCacheDidAddStatus";
inline constexpr std::string_view NVMCacheDidUpdateStatus = "NVMCacheDidUpdateStatus";
inline constexpr std::string_view NVMCacheDidFailStatus = "NVMCacheDidFailStatus";
inline constexpr std::string_view NVMCacheDidRemoveStatus = "NVMCacheDidRemoveStatus";

} // namespace norvane
