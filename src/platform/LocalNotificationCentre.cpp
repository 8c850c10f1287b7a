#include "src/platform/Adapters.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace norvane {

namespace {

/// One observer and the calls that it is in.
class Subscription {
  public:
    Subscription(std::string name, NotificationCentre::Observer observer)
        : name_(std::move(name))
        , observer_(std::move(observer)) {}

    bool wants(const std::string& name) const { return name_.empty() || name_ == name; }

    void deliver(const Notification& notification) {
        {
            const std::lock_guard lock(mutex_);
            if (ended_) return;
            callers_.push_back(std::this_thread::get_id());
        }
        const CallEnd end{*this};
        observer_(notification);
    }

    /// No call begins any more; waits for those of other threads, but not for one that this call is made
    /// from.
    void end() {
        std::unique_lock lock(mutex_);
        ended_ = true;
        const auto self = std::this_thread::get_id();
        callEnded_.wait(lock, [&] {
            return std::all_of(callers_.begin(), callers_.end(),
                               [self](auto caller) { return caller == self; });
        });
    }

  private:
    struct CallEnd {
        Subscription& subscription;
        ~CallEnd() {
            const std::lock_guard lock(subscription.mutex_);
            auto& callers = subscription.callers_;
            callers.erase(std::find(callers.begin(), callers.end(), std::this_thread::get_id()));
            subscription.callEnded_.notify_all();
        }
    };

    const std::string name_;
    const NotificationCentre::Observer observer_;
    std::mutex mutex_; ///< guards all below
    std::condition_variable callEnded_;
    std::vector<std::thread::id> callers_;
    bool ended_ = false;
};

using Subscriptions = std::vector<std::shared_ptr<Subscription>>;

struct Registry {
    std::mutex mutex; ///< guards `subscriptions`
    Subscriptions subscriptions;
};

class LocalNotificationCentre final : public NotificationCentre {
  public:
    void post(const Notification& notification) override {
        Subscriptions interested;
        {
            const std::lock_guard lock(registry_->mutex);
            std::copy_if(registry_->subscriptions.begin(), registry_->subscriptions.end(),
                         std::back_inserter(interested),
                         [&](const auto& subscription) { return subscription->wants(notification.name); });
        }
        for (const auto& subscription : interested)
            subscription->deliver(notification);
    }

    std::shared_ptr<void> addObserver(std::string name, Observer observer) override {
        const auto subscription = std::make_shared<Subscription>(std::move(name), std::move(observer));
        {
            const std::lock_guard lock(registry_->mutex);
            registry_->subscriptions.push_back(subscription);
        }
        // The token may outlive the centre.
        return {subscription.get(), [registry = registry_, subscription](void*) {
                    {
                        const std::lock_guard lock(registry->mutex);
                        std::erase(registry->subscriptions, subscription);
                    }
                    subscription->end();
                }};
    }

  private:
    const std::shared_ptr<Registry> registry_ = std::make_shared<Registry>();
};

} // namespace

std::shared_ptr<NotificationCentre> makeLocalNotificationCentre() {
    return std::make_shared<LocalNotificationCentre>();
}

} // namespace norvane
