#pragma once

#include <norvane/platform/Result.h>
#include <norvane/signing/NVMSigningMode.h>
#include <norvane/store/EnvelopeSummary.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

struct Notification;
struct NVMEnvelopeDefinition;
struct NVMRecipient;

/// Told by NVMEnvelopesManager how an offline signing goes on, on the thread that signs. Each callback may be
/// left out.
class NVMOfflineSigningDelegate {
  public:
    using Envelope = std::shared_ptr<const NVMEnvelopeDefinition>;
    using Recipient = std::shared_ptr<const NVMRecipient>;

    virtual ~NVMOfflineSigningDelegate() = default;
    /// One of the recipients is about to be chosen.
    virtual void
    willShowSelectRecipientAmongCurrentRecipientsOfflineSigningEnvelope(const std::vector<Recipient>&,
                                                                        const Envelope&) {}
    virtual void recipientWillBeginOfflineSigningEnvelope(const Recipient&, const Envelope&) {}
    virtual void recipientDidEndOfflineSigningEnvelope(const Recipient&, const Envelope&) {}
};

/// The screens that compose an envelope and edit its recipients, given by the host.
class NVMEnvelopeCompositionScreens {
  public:
    virtual ~NVMEnvelopeCompositionScreens() = default;
    virtual void composeEnvelope(bool resumeWithDraft, bool animated,
                                 std::function<void(Failure)> completion) = 0;
    virtual void editRecipients(const std::string& envelopeId, bool animated,
                                std::function<void(Failure)> completion) = 0;
};

/// Posted when the recipients of a stored envelope are about to be edited: "envelopeId".
inline constexpr std::string_view NVMPresentEditRecipientsControllerNotification =
    "NVMPresentEditRecipientsControllerNotification";

/// The envelopes kept on the device, for the host. Any thread may call. Unless the kit is set up and signed
/// in, and for an identifier that is no UUID, operations do nothing and find nothing.
class NVMEnvelopesManager {
  public:
    /// Listens from now on for its delegate.
    NVMEnvelopesManager();
    ~NVMEnvelopesManager();
    NVMEnvelopesManager(const NVMEnvelopesManager&) = delete;
    NVMEnvelopesManager& operator=(const NVMEnvelopesManager&) = delete;

    /// Held weakly.
    void setOfflineSigningDelegate(const std::weak_ptr<NVMOfflineSigningDelegate>& delegate);
    std::shared_ptr<NVMOfflineSigningDelegate> offlineSigningDelegate() const;

    /// Begin an upload and return; notifications tell how it goes.
    void syncEnvelopeWithId(const std::string& envelopeId);
    void syncEnvelopes();

    /// With its documents, also when it was not uploaded yet.
    void removeCachedEnvelopeWithId(const std::string& envelopeId);
    /// All, drafts and envelopes not yet uploaded too.
    void removeCachedEnvelopes();

    /// Without documents, and without drafts.
    std::vector<std::shared_ptr<NVMEnvelopeDefinition>> cachedEnvelopes() const;
    std::vector<std::string> cachedEnvelopeIds() const;
    /// What a list shows, drafts too.
    static std::vector<EnvelopeSummary> cachedEnvelopeSummaries();
    /// The same one by one, until `take` answers no; see NVMEnvelopesHandler.
    static Failure eachCachedEnvelopeSummary(const std::function<bool(const EnvelopeSummary&)>& take);
    /// Answers before sign-in too.
    bool hasCachedDraftEnvelope() const;

    /// Without screens, the presentations complete with an error.
    void setCompositionScreens(std::shared_ptr<NVMEnvelopeCompositionScreens> screens);
    /// Sets the signing mode that the composed envelope will be signed in.
    void presentComposeEnvelopeController(NVMSigningMode signingMode, bool resumeWithDraft, bool animated,
                                          std::function<void(Failure)> completion);
    void presentEditRecipientsControllerForEnvelopeWithId(const std::string& envelopeId, bool animated,
                                                          std::function<void(Failure)> completion);

  private:
    struct State;
    const std::shared_ptr<State> state_;
    std::vector<std::shared_ptr<void>> subscriptions_;
};

} // namespace norvane
