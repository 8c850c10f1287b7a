#include "sandbox/Upload.h"

#include "sandbox/Multipart.h"
#include "sandbox/Text.h"

namespace norvane::sandbox {

namespace {

using Kind = UploadPart::Kind;

std::string_view nameOf(const std::vector<HeaderParameter>& parameters, std::size_t index) {
    return index < parameters.size() ? std::string_view(parameters[index].first) : std::string_view();
}

/// Tells the kinds apart by their parameters; answers what is wrong with them, or nothing.
std::string readDisposition(const std::string& text, UploadPart& part) {
    const HeaderValue disposition = parseHeaderValue(text, true);
    if (!disposition.error.empty()) return "Content-Disposition: " + disposition.error;
    if (disposition.value != "form-data") return "Content-Disposition is not form-data";
    const auto& given = disposition.parameters;
    if (given.size() == 1 && nameOf(given, 0) == "tabId") {
        part.kind = Kind::Image;
        part.tabId = given[0].second;
        return part.tabId.empty() ? "the tabId is empty" : "";
    }
    if (given.size() == 1 && nameOf(given, 0) == "name")
        return given[0].second == "(null)" ? "" : "the form parameter is not named (null)";
    if (given.size() != 3 || nameOf(given, 0) != "name" || nameOf(given, 1) != "filename" ||
        nameOf(given, 2) != "documentId")
        return "Content-Disposition has neither the parameters of a form part, a document nor an image";
    part.kind = Kind::Document;
    part.fileName = given[1].second;
    part.documentId = given[2].second;
    if (part.documentId.empty() || part.fileName.empty()) return "the documentId or the filename is empty";
    if (part.fileName.find('/') != std::string::npos) return "the filename has a folder";
    return given[0].second == "documentId-" + part.documentId ? "" : "the name is not documentId- and the id";
}

std::string checkContentType(const UploadPart& part) {
    const std::string& type = part.contentType;
    const bool namedPdf = lowered(part.fileName).ends_with(".pdf");
    switch (part.kind) {
    case Kind::Envelope:
        return type == "application/json" ? "" : "Content-Type is not application/json";
    case Kind::Image:
        return type == "image/png" ? "" : "Content-Type is not image/png";
    case Kind::Document:
        if (type == "application/pdf" || (type == "application/octet-stream" && !namedPdf)) return {};
        return "Content-Type does not fit the filename";
    }
    return {};
}

std::string readPart(const MultipartPart& source, UploadPart& part) {
    for (const auto& [name, value] : source.headers)
        if (!equalsIgnoringCase(name, "Content-Disposition") && !equalsIgnoringCase(name, "Content-Type"))
            return "unexpected header " + name;
    const std::string* disposition = source.header("Content-Disposition");
    const std::string* type = source.header("Content-Type");
    if (!disposition || !type || source.headers.size() != 2)
        return "Content-Disposition and Content-Type are needed once each";
    part.contentType = *type;
    part.head = source.head;
    part.body = source.body;
    if (auto problem = readDisposition(*disposition, part); !problem.empty()) return problem;
    return checkContentType(part);
}

std::string checkOrder(const std::vector<UploadPart>& parts) {
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if ((parts[index].kind == Kind::Envelope) != (index == 0))
            return "the form part named (null) does not come first and once";
        if (index > 0 && parts[index].kind < parts[index - 1].kind) return "a document follows an image";
    }
    return {};
}

} // namespace

Upload readUpload(const Request& request) {
    Upload upload;
    const std::string* type = request.header("Content-Type");
    const std::string boundary = multipartBoundary(type ? *type : "");
    if (boundary.empty()) {
        upload.error = "Content-Type has no usable boundary";
        return upload;
    }
    const MultipartResult parsed = parseMultipart(boundary, request.body);
    upload.error = parsed.error;
    for (const MultipartPart& source : parsed.parts) {
        if (!upload.ok()) return upload;
        const auto problem = readPart(source, upload.parts.emplace_back());
        if (!problem.empty()) upload.error = "part " + std::to_string(upload.parts.size()) + ": " + problem;
    }
    if (upload.ok()) upload.error = checkOrder(upload.parts);
    if (!upload.ok()) return upload;
    JsonResult envelope = parseJson(upload.parts.front().body);
    upload.error = envelope.error;
    upload.envelope = std::move(envelope.value);
    return upload;
}

} // namespace norvane::sandbox
