#pragma once

#include <norvane/platform/Data.h>
#include <norvane/record/Record.h>

#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// One operation of the service, as the table of them describes it. All that a call checks and sends follows
/// from its entry. Entries live for ever; any thread may read them.
struct NVESOperation {
    std::string_view service; ///< the class that offers it: "NVESTemplatesApi"
    std::string_view name;    ///< "listTemplates", as programming errors call it
    std::string_view method;
    std::string_view path; ///< with a placeholder in braces for each required parameter
    /// A wire record's name; "NSURL*": the answer is downloaded to a file; "NSObject": the decoded answer;
    /// empty: nothing is decoded.
    std::string_view result = {};
    /// The wire record that is sent; "NSData": bytes as they are; empty: nothing.
    std::string_view body = {};
    const RecordType& (*options)() = nullptr; ///< the record of its optional query parameters
    std::string_view contentType = {};        ///< of what is sent; JSON when empty
    std::string_view facade = {};             ///< the operation of NVMApi that calls it

    /// The names in the path's braces, in their order.
    std::vector<std::string_view> requiredParameters() const;
    /// The names of its query parameters, in the order of the options record.
    std::vector<std::string> queryParameters() const;
};

/// What a call hands over, whatever the operation.
struct NVESOperationArguments {
    /// By name; a query parameter by its own name or by that of the option ("start_position",
    /// "startPosition").
    std::map<std::string, std::string, std::less<>> parameters = {};
    Data body = {}; ///< JSON, sent as it is; or an image
    /// The offline upload alone: the local file of each document, by document id.
    std::map<std::string, std::filesystem::path> documents = {};
};

/// All of them, a service's together.
std::span<const NVESOperation> serviceOperations();

/// The operations that the name means: "NVESTemplatesApi.get", the facade's "getTemplateWithId", or a bare
/// "get". Of several with one bare name, the one that the facade uses; else all of them. Empty: no such
/// operation.
std::vector<const NVESOperation*> serviceOperationsNamed(std::string_view name);

} // namespace norvane
