#pragma once

#include <norvane/store/NVMManagedObject.h>

// Documents as they are stored. Members are the attributes and the relationships that lead to what a row
// owns; a number that stands for a Boolean is 1 or 0.
// A field list is a table, so its form is its own.
// clang-format off
namespace norvane {

#define NVMCD_NAME_VALUE_FIELDS(FIELD, R) \
    FIELD(R, Text, name) FIELD(R, Text, value)

/// A field of a document.
struct NVMCDNameValue : NVMManagedObject {
    NVMCD_ENTITY(NVMCDNameValue, NVMCD_NAME_VALUE_FIELDS)
};

#define NVMCD_DOCUMENT_FIELDS(FIELD, R) \
    FIELD(R, Text, applyAnchorTabs) FIELD(R, Text, documentBase64) FIELD(R, Text, documentId) \
    FIELD(R, Number, encryptedWithKeyManager) FIELD(R, Text, fileExtension) FIELD(R, Text, filePath) \
    FIELD(R, Text, name) FIELD(R, Text, order) FIELD(R, Text, pages) FIELD(R, Text, password) \
    FIELD(R, Text, remoteUrl) FIELD(R, Text, sandboxFilePath) FIELD(R, Number, transformPdfFields) \
    FIELD(R, Text, uri) FIELD(R, Text, display) FIELD(R, Text, signerMustAcknowledge) \
    FIELD(R, Number, includeInDownload) FIELD(R, Text, _sha256) \
    FIELD(R, List<NVMCDNameValue>, documentFields)

/// One document. Its bytes are a file: `sandboxFilePath` and `filePath` are relative to the documents folder.
/// `_sha256` is the lower-case hexadecimal digest of the file from the moment it was written.
struct NVMCDDocument : NVMManagedObject {
    NVMCD_ENTITY(NVMCDDocument, NVMCD_DOCUMENT_FIELDS)
};

} // namespace norvane
