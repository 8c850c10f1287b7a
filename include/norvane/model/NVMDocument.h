#pragma once

#include <norvane/model/NVMNameValue.h>
#include <norvane/record/Record.h>

namespace norvane {

struct NVMCDDocument;

/// One document of an envelope. `order` is decimal digits in a text, by whose integer value documents sort;
/// `sandboxFilePath` is relative to the documents folder; `pdf` holds the bytes when they were asked for.
/// `documentFields` is a set: its order means nothing.
// clang-format off
#define NVM_DOCUMENT_FIELDS(FIELD, R) \
    FIELD(R, Text, documentId) FIELD(R, Text, uri) FIELD(R, Text, remoteUrl) FIELD(R, Text, name) \
    FIELD(R, Text, password) FIELD(R, Text, fileExtension) FIELD(R, Text, order) FIELD(R, Text, pages) \
    FIELD(R, Text, documentBase64) FIELD(R, Text, applyAnchorTabs) FIELD(R, Text, sandboxFilePath) \
    FIELD(R, Text, display) FIELD(R, Text, signerMustAcknowledge) FIELD(R, Bool, transformPdfFields) \
    FIELD(R, Bool, encryptedWithKeyManager) FIELD(R, Bool, includeInDownload) FIELD(R, Bytes, pdf) \
    FIELD(R, List<NVMNameValue>, documentFields)
// clang-format on
struct NVMDocument {
    NORVANE_RECORD(NVMDocument, NVM_DOCUMENT_FIELDS)

    NVMDocument() = default;
    /// An independent copy, with the bytes only when asked for.
    NVMDocument(const NVMDocument& document, bool includePdf);
    /// Reads the bytes from the document's file when asked for them; `pdf` stays absent when that fails.
    NVMDocument(const NVMCDDocument& stored, bool includePdf);
};

} // namespace norvane
