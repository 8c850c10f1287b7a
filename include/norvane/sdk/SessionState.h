#pragma once

#include <norvane/platform/Result.h>

#include <cstdint>
#include <functional>

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
/// left, and must not store what it brings.
std::uint64_t sessionNumber();
/// The new number. Waits for work that runs in the present session.
std::uint64_t beginNextSession();
/// Runs the work, and hands on its error, while no session can end; NVM_errorUserNotLoggedIn, without running
/// it, when that session has ended. The work must not call the host, nor begin a session.
Failure inSession(std::uint64_t session, const std::function<Failure()>& work);

} // namespace norvane
