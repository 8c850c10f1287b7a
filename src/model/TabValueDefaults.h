#pragma once

#include <norvane/model/NVMEnvelopeDefinition.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace norvane {

/// How a tab's label matches a key of the host's defaults; any other number matches nothing.
inline constexpr std::uint64_t kLabelIsKey = 0;
inline constexpr std::uint64_t kLabelEqualsKeyIgnoringCase = 1;
inline constexpr std::uint64_t kLabelContainsKey = 2;

/// Finds the value of a tab by its label. The defaults must outlive it.
class TabValueMatcher {
  public:
    TabValueMatcher(std::uint64_t comparison, const TabValueDefaults& defaults);

    /// The value of the last matching key that has one.
    std::optional<std::string> valueForLabel(const std::optional<std::string>& label) const;

  private:
    std::uint64_t comparison_;
    std::unordered_map<std::string, const std::string*> byKey_;           ///< folded where case is ignored
    std::vector<std::pair<std::string_view, const std::string*>> pieces_; ///< in the host's order
};

} // namespace norvane
