#include <norvane/model/NVMRecipient.h>
#include <norvane/sdk/NVMAccount.h>

namespace norvane {

bool NVMAccount::caseInsensitivelyMatchesNameAndEmailOfRecipient(const NVMRecipient& recipient) const {
    return recipient.matchesNameAndEmailOfAccount(*this);
}

bool NVMAccount::caseInsensitivelyMatchesHostNameAndHostEmailOfRecipient(
    const NVMRecipient& recipient) const {
    return recipient.matchesHostNameAndHostEmailOfAccount(*this);
}

} // namespace norvane
