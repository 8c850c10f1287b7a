#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norvane {

// Comparison of texts as a reader sees them. Texts are UTF-8; what is ill-formed counts as U+FFFD. Any
// thread.

enum class Diacritics { Regard, Ignore };

/// The form by which texts compare: two texts of one form are the same ignoring case, and diacritics when
/// asked to. Full case folding and canonical decomposition, less the combining marks; vowel signs that no
/// script can do without are none of them.
std::string foldedText(std::string_view text, Diacritics diacritics = Diacritics::Regard);

/// Whether two texts are the same ignoring case, and diacritics when asked to: "JOSÉ" is "josé", and with
/// `Ignore` also "Jose"; "STRASSE" is "straße". The rules of no particular language.
bool foldedEqual(std::string_view a, std::string_view b, Diacritics diacritics = Diacritics::Regard);
/// How names, e-mails and roles are matched: the same ignoring case and diacritics. An absent text matches
/// nothing, not even another absent one.
bool nvm_caseAndDiacriticInsensitivelyMatches(const std::optional<std::string>& a,
                                              const std::optional<std::string>& b);

/// Whether `text` contains `part`, ignoring case and diacritics; every text contains the empty one.
bool foldedContains(std::string_view text, std::string_view part);

/// The text without white space and line breaks at both ends: Unicode's separators, the tab, U+000A to
/// U+000D, U+0085.
std::string_view trimmed(std::string_view text);
/// Whether nothing is left of the text by `trimmed`; an absent one is blank.
bool isBlank(const std::optional<std::string>& text);

/// The number of code points.
std::size_t codePointLength(std::string_view text);
/// Where, in bytes, that many code points end; the text's size when it has no more.
std::size_t codePointOffset(std::string_view text, std::size_t count);

} // namespace norvane
