#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// The texts that a user reads. Any thread may call.
class StringTable {
  public:
    virtual ~StringTable() = default;
    /// The text in the user's language, else in English, else the key itself.
    virtual std::string text(std::string_view key) const = 0;
    /// The text with "{0}", "{1}" ... replaced by the arguments, so that translations may reorder them.
    std::string format(std::string_view key, const std::vector<std::string>& arguments) const;
};

} // namespace norvane
