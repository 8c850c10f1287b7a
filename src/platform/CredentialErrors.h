#pragma once

#include <norvane/platform/CredentialStore.h>

#include <string>

namespace norvane {

inline NVMError credentialError(CredentialStoreError code, std::string description, std::string cause = {}) {
    return NVMError::make(std::string(kCredentialStoreErrorDomain), static_cast<std::int64_t>(code),
                          std::move(description), std::move(cause));
}

} // namespace norvane
