#pragma once

#include "Output.h"

#include <norvane/platform/Result.h>

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace norvane::cli {

/// The options that stand before the command.
struct GlobalOptions {
    std::optional<std::filesystem::path> home;
    std::optional<std::filesystem::path> trustAnchor;
    std::string credentials = "automatic";
    bool json = false;
};

/// Makes and installs the platform that the options describe. Alerts answer themselves with their harmless
/// action: whoever runs the program has said all in its arguments and its script.
Failure installPlatform(const GlobalOptions& options);

/// A platform for commands that keep nothing and reach nobody. `locale` as in PlatformOptions.
void installPlatformWithoutHome(std::optional<std::string> locale);

/// Set-up, then the stored sign-in. The error says what to do when nobody is signed in.
Failure openKit();
/// Set-up alone.
Failure setUpKit();

/// Holds the first answer of an asynchronous operation until it is asked for. Copies share one slot, so that
/// late answers of an operation that answers more than once have somewhere to go.
template <class T>
class Answer {
  public:
    void give(T value) const {
        {
            const std::lock_guard lock(slot_->mutex);
            if (slot_->value) return;
            slot_->value.emplace(std::move(value));
        }
        slot_->arrived.notify_all();
    }
    T wait() const {
        std::unique_lock lock(slot_->mutex);
        slot_->arrived.wait(lock, [this] { return slot_->value.has_value(); });
        return *slot_->value;
    }

  private:
    struct Slot {
        std::mutex mutex; ///< guards value
        std::condition_variable arrived;
        std::optional<T> value;
    };
    std::shared_ptr<Slot> slot_ = std::make_shared<Slot>();
};

} // namespace norvane::cli
