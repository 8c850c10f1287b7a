#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace norvane {

/// A session bus with a keyring on it, for this process alone. The keyring's password is empty.
class PrivateKeyring {
  public:
    /// The one of this process: the bus libraries cannot change the bus that they are on.
    static PrivateKeyring& shared();

    /// Starts the keyring anew on what it stored, unlocked.
    void restart();
    void lock();

  private:
    PrivateKeyring();
    void start();

    TemporaryFolder folder_;
    ChildProcess bus_;
    ChildProcess keyring_;
};

} // namespace norvane
