#pragma once

#include <string>

namespace norvane::bench {

/// A template of one signer with that many text tabs, as a service writes it: every key present, in table
/// order. 1,000 tabs make about a megabyte.
std::string templateJson(int tabs);

} // namespace norvane::bench
