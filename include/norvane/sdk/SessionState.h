#pragma once

#include <cstdint>
#include <mutex>

namespace norvane {

// The two flags that say how far the kit is: set up, and signed in. Both are false when the process starts.
// Any thread may read them. Writes run one after another on the serial queue
// "com.norvane.mobile.sdk.manager.setup-login.queue" and return when done, so none may be made from inside
// it.

bool setupSuccessful();
bool loginSuccessful();

void NVM_setupSuccessful(bool successful);
void NVM_loginSuccessful(bool successful);
/// True lowers both flags; false leaves them as they are.
void NVM_clearCredentialsAndCachedTemplatesSuccessful(bool successful);

/// The gate of every public template and envelope operation: set up and signed in.
bool NVM_isSetupAndLoginSuccessful();

/// Goes up with every sign-in and sign-out. Work that began under another number belongs to a user who has
/// left: it must not store what it brings. To store, hold the session, compare the number, store, let go.
std::uint64_t sessionNumber();
/// While held, no session ends. Never while calling out to the host.
std::unique_lock<std::mutex> holdSession();
/// Waits for those who hold the session.
void beginNextSession();

} // namespace norvane
