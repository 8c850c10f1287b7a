#include "src/api/MimeTypes.h"

#include "src/platform/AsciiText.h"

#include <utility>

namespace norvane {
namespace {

constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
    {"pdf", "application/pdf"},
    {"doc", "application/msword"},
    {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {"xls", "application/vnd.ms-excel"},
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"ppt", "application/vnd.ms-powerpoint"},
    {"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    {"odt", "application/vnd.oasis.opendocument.text"},
    {"rtf", "application/rtf"},
    {"txt", "text/plain"},
    {"csv", "text/csv"},
    {"htm", "text/html"},
    {"html", "text/html"},
    {"xml", "application/xml"},
    {"json", "application/json"},
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"gif", "image/gif"},
    {"bmp", "image/bmp"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"zip", "application/zip"},
};

} // namespace

std::string_view mimeTypeForExtension(std::string_view extension) {
    for (const auto& [known, type] : kTypes)
        if (asciiEqualsIgnoringCase(known, extension)) return type;
    return "application/octet-stream";
}

} // namespace norvane
