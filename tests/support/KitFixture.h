#pragma once

#include "tests/support/RecordingAlerts.h"
#include "tests/support/RecordingLog.h"
#include "tests/support/TemporaryFolder.h"

#include <norvane/platform/Platform.h>

#include <gtest/gtest.h>

#include <memory>

namespace norvane {

/// A home of the test's own with the real adapters in it: files, defaults, credentials in an encrypted file,
/// queues, notifications, HTTP. Only the log and the alerts are the test's. Texts are English.
class KitFixture : public ::testing::Test {
  protected:
    KitFixture();
    ~KitFixture() override;

    void SetUp() override;
    /// Ends the installed platform and completes a new one on the same home, as a restart of the host would.
    void restart();
    /// A fixture that wants members of its own overrides this.
    virtual void adjust(Platform& given, PlatformOptions& options);

    const Platform& platform() const { return Platform::current(); }

    TemporaryFolder home_;
    std::shared_ptr<RecordingLog> log_ = std::make_shared<RecordingLog>();
    std::shared_ptr<RecordingAlerts> alerts_; ///< made anew by `restart`
};

} // namespace norvane
