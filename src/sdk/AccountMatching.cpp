#include <norvane/platform/TextCompare.h>
#include <norvane/sdk/NVMAccount.h>

namespace norvane {

bool NVMAccount::caseInsensitivelyMatchesName(const Text& name, const Text& andEmail) const {
    return nvm_caseAndDiacriticInsensitivelyMatches(userName, name) &&
           nvm_caseAndDiacriticInsensitivelyMatches(email, andEmail);
}

} // namespace norvane
