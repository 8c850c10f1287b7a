#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/NVMAccount.h>

namespace norvane {

bool NVMAccount::caseInsensitivelyMatchesName(const Text& name, const Text& andEmail) const {
    return foldedEqual(userName, name, Diacritics::Ignore) &&
           foldedEqual(email, andEmail, Diacritics::Ignore);
}

} // namespace norvane
