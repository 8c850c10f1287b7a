#pragma once

#include "sandbox/Document.h"
#include "sandbox/Operations.h"

#include <functional>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// Those of the envelope or of the template that the call names.
std::vector<Document> documentsOf(const Call& call);
/// The one of "{documentId}".
std::optional<Document> documentOf(const Call& call);
Answer unknownDocument();

/// Adds the "documents" of a body, with their bytes out of "documentBase64"; one whose id is there takes that
/// one's place. Answers what is wrong with them, or nothing.
std::string putDocuments(const Json& body, std::vector<Document>& documents);

/// Changes the documents of the template or of the draft; an answer of 400 and up leaves them as they were.
/// An envelope that is no draft any more refuses.
Answer changeDocuments(const Call& call, const std::function<Answer(std::vector<Document>&)>& change);
/// Takes the tabs out of all recipients for which `isGone(documentId, tab)`, which may change those that
/// stay; a radio group goes with its last radio.
void eraseTabs(Json& recipients, const std::function<bool(const std::string& documentId, Json& tab)>& isGone);
/// The answer to a change of an envelope that only a draft allows.
Answer notADraft();

} // namespace norvane::sandbox
