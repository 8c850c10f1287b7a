#pragma once

#include <norvane/api/NVESResult.h>
#include <norvane/platform/Data.h>
#include <norvane/platform/NVMError.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// A file part of a multipart request.
struct NVESFileEntry {
    enum class Kind { Document = 1, TabImage = 2 };
    Kind kind = Kind::Document;
    std::string key = {};            ///< "documentId-1", "tabId-17"
    std::filesystem::path file = {}; ///< Document: read from disk while it is sent
    Data bytes = {};                 ///< TabImage: PNG
    std::string identifier = {};     ///< the document's or tab's id
};

/// One service operation with all its arguments. Parameters are taken in their dictionary's key order.
struct NVESRequest {
    std::string path = {}; ///< with placeholders "{name}"
    std::string method = "GET";
    Dictionary pathParams = {};
    Dictionary queryParams = {}; ///< a value may be a `Value::object(NVESQueryParamCollection)`
    Dictionary formParams = {};
    std::vector<NVESFileEntry> files = {};
    /// A dictionary or list goes out as JSON; text (such as a record already written as JSON) and bytes as
    /// they are.
    Value body = {};
    Dictionary headerParams = {};
    std::vector<std::string> authSettings = {};
    std::string requestContentType = {};
    std::string responseContentType = {};
    /// See NVESResponseDeserializer; "NSURL" downloads to a file. Empty: nothing is decoded.
    std::string responseType = {};
};

/// A result or an error, or neither where the answer is of no type. Called at most once, on the HTTP
/// session's completion thread, never inside the call that started the request, and never after its cancel.
///
/// Errors are of `kTransportErrorDomain`, `kStatusErrorDomain`, `kDeserializationErrorDomain` or
/// `kRequestErrorDomain`. `kTransportRequestSentKey` in their user information tells whether the service may
/// have acted: false when it cannot, true when its outcome is unknown (as with an answer that makes no
/// sense). Status errors carry none: the status says it.
using NVESCompletion = std::function<void(const NVESResult& result, const std::optional<NVMError>& error)>;

} // namespace norvane
