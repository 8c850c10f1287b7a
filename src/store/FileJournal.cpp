#include "src/store/FileJournal.h"

#include "src/platform/DurableFile.h"
#include "src/store/StoreWork.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMCDDocuments.h>

#include <SQLiteCpp/Column.h>

#include <algorithm>
#include <set>
#include <system_error>

namespace norvane {

namespace {

const std::string kAdd =
    "INSERT INTO nv_file (path, session) VALUES (?, ?) ON CONFLICT DO UPDATE SET session = excluded.session";
const std::string kRemove = "DELETE FROM nv_file WHERE path = ?";
const std::string kEntries = "SELECT path, session FROM nv_file";
const std::string kJournalled = "SELECT 1 FROM nv_file WHERE path = ?";
const std::string kSetDigest = "UPDATE nv_file SET sha256 = ? WHERE path = ?";
const std::string kDigest =
    "SELECT _sha256 FROM NVMCDDocument WHERE sandboxFilePath IN (?1, '/' || ?1) AND _sha256 IS NOT NULL "
    "UNION ALL SELECT sha256 FROM nv_file WHERE path = ?1 AND sha256 IS NOT NULL LIMIT 1";
const std::string kNamedOutside = "SELECT 1 FROM NVMCDDocument WHERE sandboxFilePath IN (?1, '/' || ?1) AND "
                                  "envelopeDefinition IS NOT ?2 LIMIT 1";
const std::string kAttemptsOfNone =
    " FROM nv_uploadAttempt WHERE NOT EXISTS (SELECT 1 FROM NVMCDEnvelopeDefinition "
    "WHERE NVMCDEnvelopeDefinition.transactionId = nv_uploadAttempt.transactionId)";
const std::string kAnyAttemptOfNone = "SELECT 1" + kAttemptsOfNone + " LIMIT 1";
const std::string kRemoveAttemptsOfNone = "DELETE" + kAttemptsOfNone;
const std::string kNamed = "SELECT 1 FROM NVMCDDocument WHERE sandboxFilePath IN (?1, '/' || ?1) OR filePath "
                           "IN (?1, '/' || ?1) LIMIT 1";

/// One spelling of a path, so that a row's and the journal's agree: without the slash in front.
std::string canonical(const std::string& path) {
    return std::filesystem::path(path).relative_path().lexically_normal().string();
}

bool isHalfWritten(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    return name.starts_with(".norvane-") && name.ends_with(".tmp");
}

std::vector<std::filesystem::path> filesIn(std::string_view folder) {
    std::error_code error;
    std::vector<std::filesystem::path> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(NVM_getUserDirectoryPathWithFolder(folder), error))
        files.push_back(entry.path());
    return files;
}

/// Removes the files and answers which of them are gone, even if the power fails now: a name that comes back
/// would be nobody's.
std::vector<std::string> removeForGood(const std::vector<std::string>& paths) {
    std::vector<std::string> gone;
    std::set<std::filesystem::path> unsynced;
    for (const auto& path : paths) {
        const auto file = NVM_documentsPathByAppendingPathComponent(path);
        if (!file) continue;
        Platform::current().files->remove(*file);
        std::error_code error;
        const auto type = std::filesystem::symlink_status(*file, error).type();
        if (type != std::filesystem::file_type::not_found) continue;
        gone.push_back(path);
        if (std::filesystem::exists(file->parent_path(), error)) unsynced.insert(*file);
    }
    std::set<std::filesystem::path> folders;
    for (const auto& file : unsynced)
        if (folders.insert(file.parent_path()).second && syncParent(file)) return {};
    return gone;
}

void removeHalfWritten(std::string_view folder) {
    for (const auto& file : filesIn(folder))
        if (isHalfWritten(file)) Platform::current().files->remove(file);
}

/// Downloads become documents by moving away; one that stayed was cut short.
void removeDownloads() {
    std::error_code error;
    for (const auto& entry :
         std::filesystem::directory_iterator(Platform::current().files->temporaryFolder(), error))
        if (entry.path().filename().string().starts_with("download-"))
            Platform::current().files->remove(entry.path());
}

} // namespace

void FileJournal::add(const std::string& path, const std::string& session) {
    const auto statement = connection_.kept(kAdd);
    statement->bind(1, canonical(path));
    statement->bind(2, session);
    statement->exec();
}

void FileJournal::setDigest(const std::string& path, const std::string& sha256) {
    const auto statement = connection_.kept(kSetDigest);
    statement->bind(1, sha256);
    statement->bind(2, canonical(path));
    statement->exec();
}

bool FileJournal::isKnown(const std::string& path) {
    if (isNamed(path)) return true;
    const auto statement = connection_.kept(kJournalled);
    statement->bind(1, canonical(path));
    return statement->executeStep();
}

std::optional<std::string> FileJournal::digest(const std::string& path) {
    const auto statement = connection_.kept(kDigest);
    statement->bind(1, canonical(path));
    if (!statement->executeStep()) return std::nullopt;
    return statement->getColumn(0).getString();
}

bool FileJournal::isNamedOutside(const std::string& path, std::int64_t envelopeRow) {
    const auto statement = connection_.kept(kNamedOutside);
    statement->bind(1, canonical(path));
    if (envelopeRow != 0) statement->bind(2, envelopeRow);
    return statement->executeStep();
}

void FileJournal::adopt(NVMCDDocument& document) {
    if (!document.sandboxFilePath || document.sandboxFilePath->empty()) return;
    if (!document._sha256) document._sha256 = digest(*document.sandboxFilePath);
    remove(*document.sandboxFilePath);
}

void FileJournal::remove(const std::string& path) {
    const auto statement = connection_.kept(kRemove);
    statement->bind(1, canonical(path));
    statement->exec();
}

std::vector<FileJournal::Entry> FileJournal::entries() {
    std::vector<Entry> entries;
    const auto statement = connection_.kept(kEntries);
    while (statement->executeStep())
        entries.push_back({statement->getColumn(0).getString(), statement->getColumn(1).getString()});
    return entries;
}

bool FileJournal::isNamed(const std::string& path) {
    const auto statement = connection_.kept(kNamed);
    statement->bind(1, canonical(path));
    return statement->executeStep();
}

void FileJournal::removeDropped(ObjectStore& store, const std::vector<std::string>& paths) {
    std::vector<std::string> unnamed, settled;
    const auto sort = [&](Connection& connection) {
        for (const auto& path : paths)
            (FileJournal(connection).isNamed(path) ? settled : unnamed).push_back(path);
    };
    if (paths.empty() || StoreWork::read(store, sort)) return;
    const auto gone = removeForGood(unnamed);
    settled.insert(settled.end(), gone.begin(), gone.end());
    // An entry that stays names a file that is gone or has a row, which is no harm.
    static_cast<void>(StoreWork::write(store, [&](Connection& connection) {
        for (const auto& path : settled)
            FileJournal(connection).remove(path);
    }));
}

std::vector<std::string> FileJournal::unknownFiles(ObjectStore& store, std::string_view folder) {
    // Listed first: what is written from now on is in the journal by the time that it is read.
    const auto files = filesIn(folder);
    std::vector<std::string> unknown;
    const auto collect = [&](Connection& connection) {
        for (const auto& file : files) {
            const std::string path = "/userId/" + std::string(folder) + "/" + file.filename().string();
            if (!isHalfWritten(file) && !FileJournal(connection).isKnown(path)) unknown.push_back(path);
        }
    };
    if (StoreWork::read(store, collect)) return {};
    return unknown;
}

void FileJournal::removeUnknown(ObjectStore& store, std::string_view folder) {
    removeForGood(unknownFiles(store, folder));
}

Failure clearLeftovers(ObjectStore& store, const Session& session) {
    std::vector<std::string> settled, unnamed;
    bool hasAttemptsOfNone = false;
    const auto collect = [&](Connection& connection) {
        hasAttemptsOfNone = connection.kept(kAnyAttemptOfNone)->executeStep();
        FileJournal journal(connection);
        for (const auto& entry : journal.entries()) {
            if (session.isAlive(entry.session)) continue;
            (journal.isNamed(entry.path) ? settled : unnamed).push_back(entry.path);
        }
    };
    if (auto error = StoreWork::read(store, collect)) return error;
    const auto gone = removeForGood(unnamed);
    settled.insert(settled.end(), gone.begin(), gone.end());
    // What has no name in the journal may be anybody's, so only when nobody else lives.
    if (!session.clearEnded()) {
        for (const auto folder : {kEnvelopeDocumentsFolder, kTemplateDocumentsFolder, kThumbnailsFolder})
            removeHalfWritten(folder);
        removeDownloads();
    }
    // Another process that writes for long keeps nobody from reading.
    if (settled.empty() && !hasAttemptsOfNone) return std::nullopt;
    return StoreWork::write(store, [&](Connection& connection) {
        for (const auto& path : settled)
            FileJournal(connection).remove(path);
        connection.kept(kRemoveAttemptsOfNone)->exec();
    });
}

} // namespace norvane
