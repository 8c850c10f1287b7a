#include "tests/support/KitFixture.h"

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/sdk/SessionState.h>
#include <norvane/signing/SigningNotifications.h>
#include <norvane/store/ManagedObjectContext.h>
#include <norvane/store/NVMCDEnvelopes.h>
#include <norvane/store/ObjectStore.h>

namespace norvane {
namespace {

constexpr const char* kId = "F47AC10B-58CC-4372-A567-0E02B2C3D479";

class EnvelopesManagerTest : public KitFixture {
  protected:
    void SetUp() override {
        KitFixture::SetUp();
        ASSERT_EQ(ObjectStore::setupDefaultStore(), std::nullopt);
        NVM_setupSuccessful(true);
        NVM_loginSuccessful(true);
        manager_ = std::make_unique<NVMEnvelopesManager>();
    }
    void TearDown() override {
        manager_.reset();
        NVM_clearCredentialsAndCachedTemplatesSuccessful(true);
        ObjectStore::closeDefaultStore();
    }
    static void store(const std::string& id, const std::string& status) {
        auto envelope = std::make_shared<NVMCDEnvelopeDefinition>();
        envelope->envelopeId = id;
        envelope->status = status;
        auto& context = ObjectStore::defaultStore()->defaultContext();
        context.insert(envelope);
        ASSERT_EQ(context.save(), std::nullopt);
    }

    std::unique_ptr<NVMEnvelopesManager> manager_; ///< listens on the platform of the moment it is made
};

TEST_F(EnvelopesManagerTest, DoesNothingUntilTheKitIsSetUpAndSignedIn) {
    store(kId, "sent");
    store("draft", "created");
    NVM_loginSuccessful(false);
    manager_->removeCachedEnvelopeWithId(kId);
    manager_->removeCachedEnvelopes();
    manager_->syncEnvelopes();
    EXPECT_TRUE(manager_->cachedEnvelopes().empty());
    EXPECT_TRUE(manager_->cachedEnvelopeIds().empty());
    EXPECT_TRUE(manager_->hasCachedDraftEnvelope()) << "asks for no sign-in";
    NVM_loginSuccessful(true);
    EXPECT_EQ(manager_->cachedEnvelopeIds(), std::vector<std::string>{kId});
    EXPECT_EQ(manager_->cachedEnvelopes().size(), 1u);
    EXPECT_EQ(NVMEnvelopesManager::cachedEnvelopeSummaries().size(), 2u);
    manager_->removeCachedEnvelopeWithId("draft"); // no UUID
    EXPECT_TRUE(manager_->hasCachedDraftEnvelope());
    manager_->removeCachedEnvelopeWithId(kId);
    EXPECT_TRUE(manager_->cachedEnvelopeIds().empty());
}

TEST_F(EnvelopesManagerTest, TellsItsDelegateHowASigningGoesOn) {
    struct Recording final : NVMOfflineSigningDelegate {
        std::vector<std::string> told;
        void willShowSelectRecipientAmongCurrentRecipientsOfflineSigningEnvelope(
            const std::vector<Recipient>& among, const Envelope& envelope) override {
            told.push_back("select " + std::to_string(among.size()) + " " +
                           envelope->emailSubject.value_or(""));
        }
        void recipientWillBeginOfflineSigningEnvelope(const Recipient& recipient, const Envelope&) override {
            told.push_back("begin " + recipient->recipientId.value_or(""));
        }
    };
    auto envelope = std::make_shared<NVMEnvelopeDefinition>();
    envelope->emailSubject = "Lease";
    std::shared_ptr<NVMRecipient> signer = std::make_shared<NVMSigner>();
    signer->recipientId = "1";
    auto delegate = std::make_shared<Recording>();
    manager_->setOfflineSigningDelegate(delegate);
    nvm_notifySelectRecipientWillShowSigningWithUserInfo(
        nvm_userInfoWithRecipients({signer, signer}, envelope));
    nvm_notifyEnvelopeRecipientWillBeginOfflineSigningWithUserInfo(
        nvm_userInfoWithRecipient(signer, envelope));
    nvm_notifyEnvelopeRecipientDidEndOfflineSigningWithUserInfo(nvm_userInfoWithRecipient(signer, envelope));
    EXPECT_EQ(delegate->told, (std::vector<std::string>{"select 2 Lease", "begin 1"}));
    delegate.reset();
    nvm_notifyEnvelopeRecipientWillBeginOfflineSigningWithUserInfo(
        nvm_userInfoWithRecipient(signer, envelope));
    EXPECT_EQ(manager_->offlineSigningDelegate(), nullptr);
}

} // namespace
} // namespace norvane
