#pragma once

#include "sandbox/HttpMessage.h"
#include "sandbox/Json.h"

#include <string>
#include <string_view>
#include <vector>

namespace norvane::sandbox {

/// A part of an offline envelope's upload.
struct UploadPart {
    enum class Kind { Envelope, Document, Image };

    Kind kind = Kind::Envelope;
    std::string fileName;   ///< of a document
    std::string documentId; ///< of a document
    std::string tabId;      ///< of an image
    std::string contentType;
    std::string_view head; ///< header lines as received; points into the request's body
    std::string_view body; ///< points into the request's body
};

struct Upload {
    Json envelope;
    std::vector<UploadPart> parts; ///< in the order in which they came
    std::string error;             ///< the first fault; empty when there is none
    bool ok() const { return error.empty(); }
};

/// Takes a multipart request apart, strictly. First comes one part named "(null)" with the envelope as JSON,
/// then the documents (name="documentId-N"; filename; documentId), then the images (tabId alone). Each part
/// has the headers Content-Disposition and Content-Type and no others. The request must outlive the result.
Upload readUpload(const Request& request);

} // namespace norvane::sandbox
