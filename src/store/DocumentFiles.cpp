#include "src/platform/DurableFile.h"
#include "src/store/FileJournal.h"
#include "src/store/StoreErrorOf.h"
#include "src/store/StoreWork.h"

#include <norvane/platform/Platform.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/ObjectStore.h>

#include <algorithm>
#include <cerrno>
#include <functional>

namespace norvane {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUserDirectory = "/userId";

Files& files() { return *Platform::current().files; }

std::string documentsPath() { return files().documentsFolder().string(); }

std::string subPath(std::string_view folder) {
    return std::string(kUserDirectory) + "/" + std::string(folder) + "/" + NVM_uniqueDocumentFileName();
}

/// Puts the name on record, lets the file be made, which gives its digest, and strikes the name out again
/// when that fails.
Failure makeFile(const std::string& path, std::string_view folder,
                 const std::function<Result<std::string>(const fs::path&)>& make) {
    const auto target = NVM_documentsPathByAppendingPathComponent(path);
    if (!target) return storeError(StoreError::NotFound, "No place for documents: " + path);
    const auto store = ObjectStore::defaultStore();
    if (!store) return storeNotOpen();
    if (auto error = NVM_setupUserDirectories(folder)) return error;
    const auto& session = StoreWork::session(*store);
    if (auto error = StoreWork::write(*store, [&](Connection& c) { FileJournal(c).add(path, session); }))
        return error;
    const auto digest = make(*target);
    if (digest)
        return StoreWork::write(*store, [&](Connection& c) { FileJournal(c).setDigest(path, *digest); });
    FileJournal::removeDropped(*store, {path}); // it may have its name although it could not be synced
    return digest.error();
}

/// The digest that is on record for a file of the store's own, else that of what came.
Result<std::string> digestOfCopy(const fs::path& from, const fs::path& target) {
    const std::string documents = documentsPath() + "/";
    std::optional<std::string> known;
    if (const auto store = ObjectStore::defaultStore(); store && from.string().starts_with(documents)) {
        const std::string path = from.string().substr(documents.size());
        if (auto error = StoreWork::read(*store, [&](Connection& c) { known = FileJournal(c).digest(path); }))
            return *error;
    }
    if (known) return *known;
    return files().sha256(target);
}

/// The document's file, to read. Nothing on the way to it below the documents folder may be a symbolic link:
/// the kit makes none, so one was laid there.
Result<fs::path> documentFile(std::string_view path) {
    const auto file = NVM_documentsPathByAppendingPathComponent(path);
    if (!file) return storeError(StoreError::NotFound, "No place for documents: " + std::string(path));
    fs::path below = files().documentsFolder();
    for (const auto& part : file->lexically_relative(below)) {
        below /= part;
        std::error_code error;
        if (fs::is_symlink(below, error)) return fileError(ELOOP, below);
    }
    return *file;
}

bool deleteFolder(std::string_view folder) {
    return files().remove(NVM_getUserDirectoryPathWithFolder(folder));
}

} // namespace

std::string NVM_getUserDirectoryPath() { return documentsPath() + std::string(kUserDirectory); }

std::string NVM_getUserDirectoryPathWithFolder(std::string_view folder) {
    return NVM_getUserDirectoryPath() + "/" + std::string(folder);
}

Failure NVM_createDirectoryIfMissing(const fs::path& folder) { return files().createFolder(folder); }

Failure NVM_setupUserDirectories(std::string_view folder) {
    if (auto error = NVM_createDirectoryIfMissing(NVM_getUserDirectoryPath())) return error;
    return NVM_createDirectoryIfMissing(NVM_getUserDirectoryPathWithFolder(folder));
}

std::string NVM_uniqueDocumentFileName() { return Platform::current().random->uuidString() + ".pdf"; }
std::string NVM_templateDocumentSubPath() { return subPath(kTemplateDocumentsFolder); }
std::string NVM_envelopeDocumentSubPath() { return subPath(kEnvelopeDocumentsFolder); }

std::optional<fs::path> NVM_documentsPathByAppendingPathComponent(std::string_view path) {
    const fs::path relative = fs::path(path).relative_path();
    if (path.find('\0') != std::string_view::npos || relative.begin() == relative.end()) return std::nullopt;
    if (*relative.begin() != kUserDirectory.substr(1)) return std::nullopt;
    if (std::find(relative.begin(), relative.end(), "..") != relative.end()) return std::nullopt;
    return files().documentsFolder() / relative;
}

std::string NVM_thumbnailPathForDocumentId(std::string_view documentId) {
    // A folder that cannot be made shows when the thumbnail is written.
    static_cast<void>(NVM_setupUserDirectories(kThumbnailsFolder));
    std::string name(documentId);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == '\0'; }, '_');
    return NVM_getUserDirectoryPathWithFolder(kThumbnailsFolder) + "/" + name + "_thumb.png";
}

std::optional<Data> NVM_dataWithPath(std::string_view path) {
    const auto file = documentFile(path);
    if (!file) return std::nullopt;
    auto bytes = files().read(*file);
    if (!bytes) return std::nullopt;
    return std::move(bytes).value();
}

Result<Data> NVM_verifiedDataWithPath(std::string_view path, const std::optional<std::string>& sha256,
                                      std::string_view documentName) {
    if (path.empty()) return documentDamaged(documentName, "has no file.");
    const auto file = documentFile(path);
    if (!file) return documentDamaged(documentName, "cannot be read.", file.error());
    auto bytes = files().read(*file);
    if (!bytes) return documentDamaged(documentName, "cannot be read.", bytes.error());
    if (sha256 && sha256Hex(bytes->view()) != *sha256)
        return documentDamaged(documentName, "is not what was stored.");
    return bytes;
}

Failure NVM_verifyDocumentWithPath(std::string_view path, const std::optional<std::string>& sha256,
                                   std::string_view documentName) {
    if (path.empty()) return documentDamaged(documentName, "has no file.");
    const auto file = documentFile(path);
    if (!file) return documentDamaged(documentName, "cannot be read.", file.error());
    const auto digest = files().sha256(*file);
    if (!digest) return documentDamaged(documentName, "cannot be read.", digest.error());
    if (sha256 && *digest != *sha256) return documentDamaged(documentName, "is not what was stored.");
    return std::nullopt;
}

Failure NVM_encryptedWriteToFile(const Data& bytes, const std::string& path, std::string_view folder) {
    return makeFile(path, folder, [&](const fs::path& target) -> Result<std::string> {
        if (auto error = files().write(target, bytes)) return *error;
        return sha256Hex(bytes.view());
    });
}

Failure NVM_encryptedWriteTemplateDocument(const Data& bytes, const std::string& path,
                                           std::string_view folder) {
    return NVM_encryptedWriteToFile(bytes, path, folder);
}

Failure NVM_moveDocumentFile(const fs::path& from, const std::string& path, std::string_view folder) {
    return makeFile(path, folder, [&](const fs::path& target) -> Result<std::string> {
        if (auto error = files().move(from, target)) return *error;
        return digestOfCopy(from, target);
    });
}

Failure NVM_linkOrCopyDocumentFile(const fs::path& from, const std::string& path, std::string_view folder) {
    return makeFile(path, folder, [&](const fs::path& target) -> Result<std::string> {
        if (auto error = files().linkOrCopy(from, target)) return *error;
        return digestOfCopy(from, target);
    });
}

bool NVM_deleteDocumentWithPath(std::string_view path) {
    const auto file = NVM_documentsPathByAppendingPathComponent(path);
    const bool removed = file && files().remove(*file);
    if (const auto store = ObjectStore::defaultStore(); removed && store)
        FileJournal::removeDropped(*store, {std::string(path)});
    return removed;
}

bool NVM_deleteAllTemplateDocuments() { return deleteFolder(kTemplateDocumentsFolder); }
bool NVM_deleteAllEnvelopeDocuments() { return deleteFolder(kEnvelopeDocumentsFolder); }
bool NVM_deleteAllDocumentThumbnails() { return deleteFolder(kThumbnailsFolder); }

} // namespace norvane
