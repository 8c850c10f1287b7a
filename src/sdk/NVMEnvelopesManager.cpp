#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/signing/NVMSigningModeContext.h>
#include <norvane/signing/SigningNotifications.h>
#include <norvane/store/NVMEnvelopesHandler.h>

namespace norvane {

struct NVMEnvelopesManager::State {
    mutable std::mutex mutex; ///< guards the two below
    std::weak_ptr<NVMOfflineSigningDelegate> delegate;
    std::shared_ptr<NVMEnvelopeCompositionScreens> screens;
};

namespace {

using Delegate = NVMOfflineSigningDelegate;

bool isUsable(const std::string& envelopeId) {
    return NVM_isSetupAndLoginSuccessful() && isUuidString(envelopeId);
}

template <class T>
std::shared_ptr<const T> objectIn(const Notification& notification, std::string_view key) {
    const auto found = notification.userInfo.find(key);
    return found == notification.userInfo.end() ? nullptr : found->second.asObject<T>();
}

Delegate::Envelope envelopeIn(const Notification& notification) {
    return objectIn<NVMEnvelopeDefinition>(notification, "envelopeDefinition");
}

std::vector<Delegate::Recipient> recipientsIn(const Notification& notification) {
    std::vector<Delegate::Recipient> recipients;
    const auto found = notification.userInfo.find("recipients");
    const Array* array = found == notification.userInfo.end() ? nullptr : found->second.asArray();
    if (!array) return recipients;
    for (const Value& value : *array)
        if (auto recipient = value.asObject<NVMRecipient>()) recipients.push_back(std::move(recipient));
    return recipients;
}

void tellSelecting(Delegate& delegate, const Notification& notification) {
    delegate.willShowSelectRecipientAmongCurrentRecipientsOfflineSigningEnvelope(recipientsIn(notification),
                                                                                 envelopeIn(notification));
}

void tellBeginning(Delegate& delegate, const Notification& notification) {
    delegate.recipientWillBeginOfflineSigningEnvelope(objectIn<NVMRecipient>(notification, "recipient"),
                                                      envelopeIn(notification));
}

void tellEnding(Delegate& delegate, const Notification& notification) {
    delegate.recipientDidEndOfflineSigningEnvelope(objectIn<NVMRecipient>(notification, "recipient"),
                                                   envelopeIn(notification));
}

constexpr std::pair<std::string_view, void (*)(Delegate&, const Notification&)> kForwarded[] = {
    {NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification, &tellSelecting},
    {NVMEnvelopeRecipientWillBeginOfflineSigningNotification, &tellBeginning},
    {NVMEnvelopeRecipientDidEndOfflineSigningNotification, &tellEnding},
};

void refuse(const NVMError& error, std::function<void(Failure)> completion) {
    if (!completion) return;
    Platform::current().executors->mainQueue()->async(
        [error, completion = std::move(completion)] { completion(error); });
}

} // namespace

NVMEnvelopesManager::NVMEnvelopesManager()
    : state_(std::make_shared<State>()) {
    for (const auto& [name, tell] : kForwarded) {
        const auto observer = [weak = std::weak_ptr(state_), tell = tell](const Notification& notification) {
            const auto state = weak.lock();
            if (!state) return;
            std::shared_ptr<Delegate> delegate;
            {
                const std::lock_guard lock(state->mutex);
                delegate = state->delegate.lock();
            }
            if (delegate) tell(*delegate, notification);
        };
        subscriptions_.push_back(Platform::current().notifications->addObserver(std::string(name), observer));
    }
}

NVMEnvelopesManager::~NVMEnvelopesManager() = default;

void NVMEnvelopesManager::setOfflineSigningDelegate(
    const std::weak_ptr<NVMOfflineSigningDelegate>& delegate) {
    const std::lock_guard lock(state_->mutex);
    state_->delegate = delegate;
}

std::shared_ptr<NVMOfflineSigningDelegate> NVMEnvelopesManager::offlineSigningDelegate() const {
    const std::lock_guard lock(state_->mutex);
    return state_->delegate.lock();
}

void NVMEnvelopesManager::syncEnvelopeWithId(const std::string& envelopeId) {
    if (isUsable(envelopeId)) NVMEnvelopesHandler::syncEnvelopeWithId(envelopeId);
}

void NVMEnvelopesManager::syncEnvelopes() {
    if (NVM_isSetupAndLoginSuccessful()) NVMEnvelopesHandler::syncEnvelopes();
}

void NVMEnvelopesManager::removeCachedEnvelopeWithId(const std::string& envelopeId) {
    if (isUsable(envelopeId)) NVMEnvelopesHandler::removeCachedEnvelopeWithId(envelopeId);
}

void NVMEnvelopesManager::removeCachedEnvelopes() {
    if (NVM_isSetupAndLoginSuccessful()) NVMEnvelopesHandler::removeCachedEnvelopes();
}

std::vector<std::shared_ptr<NVMEnvelopeDefinition>> NVMEnvelopesManager::cachedEnvelopes() const {
    if (!NVM_isSetupAndLoginSuccessful()) return {};
    return NVMEnvelopesHandler::cachedEnvelopes();
}

std::vector<std::string> NVMEnvelopesManager::cachedEnvelopeIds() const {
    if (!NVM_isSetupAndLoginSuccessful()) return {};
    return NVMEnvelopesHandler::cachedEnvelopeIds();
}

std::vector<EnvelopeSummary> NVMEnvelopesManager::cachedEnvelopeSummaries() {
    if (!NVM_isSetupAndLoginSuccessful()) return {};
    return NVMEnvelopesHandler::cachedEnvelopeSummaries();
}

Failure
NVMEnvelopesManager::eachCachedEnvelopeSummary(const std::function<bool(const EnvelopeSummary&)>& take) {
    if (!NVM_isSetupAndLoginSuccessful()) return std::nullopt;
    return NVMEnvelopesHandler::eachCachedEnvelopeSummary(take);
}

bool NVMEnvelopesManager::hasCachedDraftEnvelope() const {
    return NVMEnvelopesHandler::cachedDraftEnvelopeCount() > 0;
}

void NVMEnvelopesManager::setCompositionScreens(std::shared_ptr<NVMEnvelopeCompositionScreens> screens) {
    const std::lock_guard lock(state_->mutex);
    state_->screens = std::move(screens);
}

void NVMEnvelopesManager::presentComposeEnvelopeController(NVMSigningMode signingMode, bool resumeWithDraft,
                                                           bool animated,
                                                           std::function<void(Failure)> completion) {
    NVMSigningModeContext::sharedInstance().setSigningMode(signingMode);
    std::unique_lock lock(state_->mutex);
    const auto screens = state_->screens;
    lock.unlock();
    if (!screens) return refuse(NVM_errorInvalidInput(), std::move(completion));
    screens->composeEnvelope(resumeWithDraft, animated, std::move(completion));
}

void NVMEnvelopesManager::presentEditRecipientsControllerForEnvelopeWithId(
    const std::string& envelopeId, bool animated, std::function<void(Failure)> completion) {
    Platform::current().notifications->post(
        {std::string(NVMPresentEditRecipientsControllerNotification), {}, {{"envelopeId", envelopeId}}});
    std::unique_lock lock(state_->mutex);
    const auto screens = state_->screens;
    lock.unlock();
    if (!screens) return refuse(NVM_errorInvalidInput(), std::move(completion));
    screens->editRecipients(envelopeId, animated, std::move(completion));
}

} // namespace norvane
