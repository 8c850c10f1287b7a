#pragma once

#include <norvane/platform/Files.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

// Document files live in folders below the documents folder: "/userId/ed" for envelopes, "/userId/td" for
// templates, "/userId/thumbnails". "/userId" is a fixed name, not a user's. Paths kept in rows are relative
// to the documents folder ("/userId/ed/<UUID>.pdf").
//
// A file comes before its row and goes after it: its name is on record in the store before it is written, and
// from the moment its row is removed. What a process that ended in between left is removed by the next
// set-up, so a file that no saved row names lasts only as long as the process that wrote it. All of these
// need an open default store to write; any thread may call, and calls block.

std::string NVM_getUserDirectoryPath(); ///< "<documents>/userId"
std::string NVM_getUserDirectoryPathWithFolder(std::string_view folder);
/// Makes "/userId" and the folder in it when missing; `folder` is "ed", "td" or "thumbnails".
Failure NVM_setupUserDirectories(std::string_view folder);
Failure NVM_createDirectoryIfMissing(const std::filesystem::path& folder);

std::string NVM_uniqueDocumentFileName();  ///< a fresh upper-case UUID and ".pdf"
std::string NVM_templateDocumentSubPath(); ///< "/userId/td/<fresh name>"
std::string NVM_envelopeDocumentSubPath(); ///< "/userId/ed/<fresh name>"
/// The documents folder joined with the relative path. Nothing when the path would lead out of "/userId".
std::optional<std::filesystem::path> NVM_documentsPathByAppendingPathComponent(std::string_view path);
/// "<documents>/userId/thumbnails/<documentId>_thumb.png", after making sure that the folder is there.
/// Characters that have no place in a file name become "_".
std::string NVM_thumbnailPathForDocumentId(std::string_view documentId);

/// The bytes of the file at a relative path; nothing on any error.
std::optional<Data> NVM_dataWithPath(std::string_view path);
/// The same, but an error that names the document unless the file's SHA-256 is the one given. Without one
/// only the file's presence is checked.
Result<Data> NVM_verifiedDataWithPath(std::string_view path, const std::optional<std::string>& sha256,
                                      std::string_view documentName);
/// Checks without keeping the bytes.
Failure NVM_verifyDocumentWithPath(std::string_view path, const std::optional<std::string>& sha256,
                                   std::string_view documentName);

/// Writes the bytes to a relative path, durably and readable for this user alone (no cipher of the kit's
/// own), after making the folder. An error leaves nothing behind.
Failure NVM_encryptedWriteToFile(const Data& bytes, const std::string& path, std::string_view folder);
Failure NVM_encryptedWriteTemplateDocument(const Data& bytes, const std::string& path,
                                           std::string_view folder);
/// Brings a file to a relative path without reading it into memory: moved, or as a second name of its own.
Failure NVM_moveDocumentFile(const std::filesystem::path& from, const std::string& path,
                             std::string_view folder);
Failure NVM_linkOrCopyDocumentFile(const std::filesystem::path& from, const std::string& path,
                                   std::string_view folder);

// Removals answer whether the files were there and are gone.
bool NVM_deleteDocumentWithPath(std::string_view path);
bool NVM_deleteAllTemplateDocuments();
bool NVM_deleteAllEnvelopeDocuments();
bool NVM_deleteAllDocumentThumbnails();

inline constexpr std::string_view kEnvelopeDocumentsFolder = "ed";
inline constexpr std::string_view kTemplateDocumentsFolder = "td";
inline constexpr std::string_view kThumbnailsFolder = "thumbnails";

} // namespace norvane
