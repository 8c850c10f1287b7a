#pragma once

#include "sandbox/Json.h"
#include "sandbox/Upload.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace norvane::sandbox {

/// Calls back for every signer and in-person signer.
void forEachSigner(const Json& recipients, const std::function<void(const Json& signer)>& call);

/// Calls back for every tab of a recipient, radios one by one with their group's documentId; `list` is the
/// key that holds it ("signHereTabs").
void forEachTab(
    const Json& recipient,
    const std::function<void(const std::string& list, const std::string& documentId, const Json& tab)>& call);

/// The first scalar that does not travel as it should, as "recipients.signers[0].note must be text"; empty
/// when all do. Scalars are text, but for page counts, tab orders, sizes and lengths, which are numbers.
std::string checkScalars(const Json& envelope);

/// What makes an uploaded offline envelope unacceptable, the first fault only: its fields, recipients and
/// tabs, and whether parts and envelope belong together. Empty when it is acceptable.
std::string checkOfflineEnvelope(const Upload& upload);

/// What is accepted but looks forgotten, such as a signer without a signature's image.
std::vector<std::string> warningsOf(const Upload& upload);

} // namespace norvane::sandbox
