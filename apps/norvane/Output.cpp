#include "Output.h"

#include <norvane/platform/Json.h>

#include <unistd.h>

#include <iostream>

namespace norvane::cli {

namespace {

constexpr const char* kEraseLine = "\r\033[K";

/// JSON text with a line for each member and element.
std::string indented(std::string_view json) {
    std::string result;
    std::size_t depth = 0;
    const auto newLine = [&] { result.append("\n").append(2 * depth, ' '); };
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char c = json[at];
        const bool isEmpty = at + 1 < json.size() && (json[at + 1] == '}' || json[at + 1] == ']');
        if (c == '"') {
            const std::size_t start = at;
            for (++at; at < json.size() && json[at] != '"'; ++at)
                if (json[at] == '\\') ++at;
            result += json.substr(start, at + 1 - start);
        } else if ((c == '{' || c == '[') && !isEmpty) {
            result += c;
            ++depth;
            newLine();
        } else if ((c == '}' || c == ']') && depth > 0 && json[at - 1] != '{' && json[at - 1] != '[') {
            --depth;
            newLine();
            result += c;
        } else if (c == ',') {
            result += c;
            newLine();
        } else if (c == ':') {
            result += ": ";
        } else if (c != ' ' && c != '\n' && c != '\r' && c != '\t') {
            result += c;
        }
    }
    return result;
}

} // namespace

void Output::result(const Value& document, const std::vector<std::string>& lines) const {
    if (json_) {
        std::cout << writeJson(document, true) << '\n';
    } else {
        for (const std::string& line : lines)
            std::cout << line << '\n';
    }
    std::cout.flush();
}

void Output::json(const std::string& text) const {
    std::cout << (json_ ? text : indented(text)) << '\n';
    std::cout.flush();
}

Exit Output::error(const NVMError& error) const {
    const Value described = describe(error);
    std::cerr << "error: " << *described["description"].asString() << " [" << *described["reason"].asString()
              << "] (" << error.domain << ", " << error.code << ")\n";
    if (json_) std::cout << writeJson(Dictionary{{"error", described}}, true) << std::endl;
    return Exit::KitError;
}

Value Output::describe(const NVMError& error) {
    std::string description = error.localizedDescription();
    std::string reason = error.failureReason();
    // What the service said of a failed request, when the error has no words of the kit's own.
    const auto entry = error.userInfo.find("NVESResponseObject");
    if (reason.empty() && entry != error.userInfo.end()) {
        const std::string* message = entry->second["message"].asString();
        const std::string* code = entry->second["errorCode"].asString();
        if (message) description = *message;
        if (code) reason = *code;
    }
    return Dictionary{
        {"domain", error.domain}, {"code", error.code}, {"description", description}, {"reason", reason}};
}

void warn(const std::string& text) {
    if (isatty(STDERR_FILENO) != 0) std::cerr << kEraseLine;
    std::cerr << "warning: " << text << '\n';
}

void ListOutput::add(const Value& element, const std::string& line) {
    if (json_)
        std::cout << (isEmpty_ ? "[\n" : ",\n") << writeJson(element, true);
    else
        std::cout << line << '\n';
    isEmpty_ = false;
}

void ListOutput::end() const {
    if (json_) std::cout << (isEmpty_ ? "[]\n" : "\n]\n");
    std::cout.flush();
}

Progress::Progress(std::string title, std::size_t total)
    : title_(std::move(title))
    , total_(total)
    , visible_(isatty(STDERR_FILENO) != 0) {
    draw({});
}

Progress::~Progress() {
    if (visible_) std::cerr << kEraseLine << std::flush;
}

void Progress::advance(const std::string& what) {
    if (done_ < total_) ++done_;
    draw(what);
}

void Progress::draw(const std::string& what) const {
    if (!visible_) return;
    constexpr std::size_t width = 24;
    const std::size_t filled = total_ == 0 ? width : width * done_ / total_;
    std::cerr << '\r' << title_ << " [" << std::string(filled, '=') << std::string(width - filled, ' ')
              << "] " << done_ << '/' << total_ << ' ' << what << "\033[K" << std::flush;
}

} // namespace norvane::cli
