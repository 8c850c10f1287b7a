#pragma once

#include <norvane/platform/Result.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace norvane {

/// Something about the store or its files that is not as it should be.
struct StoreFinding {
    /// "database", "model", "reference", "owner", "content", "identifier", "document", "file" or "mode".
    std::string kind;
    std::string subject;     ///< the table and row, the document's name or the file's path
    std::string description; ///< a sentence
};

/// Verifies the open default store and the document files against each other: SQLite's own checks, one owner
/// a row, the seals over envelopes and templates, each document's file with its digest, files that nothing
/// names, and who may read it all. Changes nothing. That a removed envelope leaves its bookkeeping row
/// (NVMCDCacheMetaData) is no finding, nor is a file that a living process is about to store. Empty: all is
/// well. Blocks for long on a large store; any thread may call.
Result<std::vector<StoreFinding>> checkStore();

/// What the open default store holds.
struct StoreStatistics {
    int modelVersion = 0;
    std::size_t envelopes = 0; ///< drafts included
    std::size_t drafts = 0;
    std::size_t waitingForUpload = 0;
    std::size_t templates = 0;
    std::size_t documents = 0;
    std::uintmax_t documentBytes = 0; ///< of the files in the folders for documents
    std::uintmax_t storeBytes = 0;    ///< of the store's file
    std::uintmax_t journalBytes = 0;  ///< of what is not yet in the store's file
    std::vector<std::pair<std::string, std::size_t>> envelopesByStatus; ///< "" for those without
    std::vector<std::pair<std::string, std::size_t>> rows;              ///< by entity, those that have any
};

Result<StoreStatistics> storeStatistics();

} // namespace norvane
