#pragma once

#include <norvane/platform/NVMError.h>
#include <norvane/platform/Value.h>

#include <string>
#include <vector>

namespace norvane::cli {

/// Exit statuses of the program.
enum class Exit { Done = 0, KitError = 1, WrongUsage = 2 };

/// What a command prints. With `json` exactly one JSON document goes to standard output, and nothing else;
/// without it, lines for a person. Errors always have their line on standard error.
class Output {
  public:
    explicit Output(bool json)
        : json_(json) {}

    bool isJson() const { return json_; }
    /// The command's answer: the document, or the lines.
    void result(const Value& document, const std::vector<std::string>& lines) const;
    /// An answer that is JSON already, for a person in lines with its members in the order in which they
    /// stand.
    void json(const std::string& text) const;
    /// "error: <description> [<reason>] (<domain>, <code>)", and with `json` the error's document.
    Exit error(const NVMError& error) const;

    /// {"domain", "code", "description", "reason"}.
    static Value describe(const NVMError& error);

  private:
    bool json_;
};

/// A line on standard error, in the place of a progress bar where one is drawn.
void warn(const std::string& text);

/// An answer that is a list, printed as it comes: it need not fit into memory.
class ListOutput {
  public:
    explicit ListOutput(const Output& output)
        : json_(output.isJson()) {}
    void add(const Value& element, const std::string& line);
    void end() const;

  private:
    const bool json_;
    bool isEmpty_ = true;
};

/// A bar on standard error, drawn only when that is a terminal; erased at the end.
class Progress {
  public:
    Progress(std::string title, std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void advance(const std::string& what);

  private:
    void draw(const std::string& what) const;
    std::string title_;
    std::size_t total_;
    std::size_t done_ = 0;
    bool visible_;
};

} // namespace norvane::cli
