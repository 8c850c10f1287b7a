#include "sandbox/TemplateIds.h"
#include "tests/signing/SigningFlowFixture.h"

#include <norvane/model/NVMRecipients.h>
#include <norvane/signing/SigningNotifications.h>
#include <norvane/store/CacheNotifications.h>
#include <norvane/store/DocumentFiles.h>
#include <norvane/store/NVMEnvelopesHandler.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace norvane {
namespace {

using Names = std::vector<std::string>;
using Handler = NVMEnvelopesHandler;

class SigningFlowTest : public SigningFlowFixture {
  protected:
    void bothAtOnce() {
        use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
        for (const auto& signer : signers())
            signer->routingOrder = 1;
    }
    /// What the notification of that name carried when it came last.
    Dictionary userInfoOf(std::string_view name) const {
        Dictionary found;
        for (const auto& notification : notifications_)
            if (notification.name == name) found = notification.userInfo;
        return found;
    }
    /// Changes who signs here when the step is announced: the first becomes a remote signer.
    std::shared_ptr<void> convertFirstSignerAt(std::string_view step) {
        const auto done = std::make_shared<bool>(false);
        return platform().notifications->addObserver(std::string(step), [this, done](const Notification&) {
            if (std::exchange(*done, true)) return;
            envelope_->recipients->signerFromInPersonSigner(signers().front(), "Cy Remote", "cy@example.com");
        });
    }
    bool hasFiles() const {
        const auto path = NVM_documentsPathByAppendingPathComponent(
            envelope_->documents->front()->sandboxFilePath.value_or(""));
        return path && std::filesystem::exists(*path);
    }
};

TEST_F(SigningFlowTest, PassesTheDeviceFromSignerToSignerAndBack) {
    use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
    begin();
    EXPECT_TRUE(view_->disclosures.empty()) << "before the device was passed on";
    const Alert first = alerts_->answer("OK");
    EXPECT_EQ(first.title, "Pass to the signer");
    EXPECT_NE(first.message.find("Ann Smith"), std::string::npos) << first.message;
    consent();
    waitForTurn();
    EXPECT_EQ(view_->disclosures.back().recipientName, "Ann Smith");
    EXPECT_EQ(view_->disclosures.back().senderName, user().userName);
    EXPECT_EQ(signers()[0]->offlineAttributes->consumerDisclosureId, "disclosure-1");
    EXPECT_EQ(view_->finishButton, "Next Field");

    const std::size_t before = view_->scrolls.size();
    onMain([](auto& controller) { controller.finishTapped(); });
    EXPECT_EQ(view_->scrolls.size(), before + 1) << "to the next field, as some are missing";
    EXPECT_EQ(alerts_->openCount(), 0u);
    fillIn();
    EXPECT_EQ(view_->finishButton, "Finish");
    EXPECT_EQ(std::count(view_->captures.begin(), view_->captures.end(), false), 1)
        << "a signature is adopted once";
    finishTurn();

    const Alert second = alerts_->answer("OK");
    EXPECT_EQ(second.title, "Pass to the next signer");
    EXPECT_TRUE(signers()[0]->signedDateTime && signers()[0]->offlineAttributes->offlineSigningHash);
    signTurn();
    const Alert back = alerts_->answer("OK");
    EXPECT_EQ(back.title, "Pass back to the host");
    EXPECT_NE(back.message.find(user().userName), std::string::npos) << back.message;
    EXPECT_TRUE(Handler::cachedEnvelopeIds().empty()) << "not before the host has it back";
    EXPECT_EQ(alerts_->answer("OK").title, "All in-person signers have finished");
    const std::string id = outcome();
    EXPECT_EQ(Handler::cachedEnvelopeIds(), Names{id});
    EXPECT_EQ(view_->closed, 1);
    EXPECT_EQ(view_->titles, (Names{"Ann Smith", "Bo Lund"}));
    EXPECT_EQ(told(), (Names{"NVMEnvelopeRecipientWillBeginOfflineSigningNotification",
                             "NVMEnvelopeRecipientDidEndOfflineSigningNotification",
                             "NVMEnvelopeRecipientWillBeginOfflineSigningNotification",
                             "NVMEnvelopeRecipientDidEndOfflineSigningNotification",
                             "NVMSigningCompletedNotification", "NVMRecordMetaDataDidAddNotification",
                             "NVMEnvelopeCachedNotification"}))
        << "one signer at a time: nobody chooses";
    EXPECT_EQ(userInfoOf(NVMSigningCompletedNotification),
              (Dictionary{{"templateId", sandbox::kLeaseTemplateId}, {"signingMode", "offline"}}));
}

TEST_F(SigningFlowTest, HiddenAlertsLeaveOnlyTheConfirmation) {
    hideAlerts();
    use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
    begin();
    signTurn();
    signTurn();
    EXPECT_EQ(Handler::cachedEnvelopeIds(), Names{outcome()});
    EXPECT_EQ(alerts_->openCount(), 0u);
}

TEST_F(SigningFlowTest, TheHostSignsWithoutBeingHandedTheDevice) {
    use(sandbox::kConsentTemplateId, {});
    const auto signer = envelope_->recipients->signers->front();
    signer->setNameAndEmail(user().userName, user().email);
    begin();
    waitForTurn();
    EXPECT_EQ(alerts_->openCount(), 0u);
    EXPECT_TRUE(view_->disclosures.empty());
    fillIn();
    finishTurn();
    EXPECT_EQ(alerts_->answer("OK").title, "Signing complete");
    EXPECT_EQ(Handler::cachedEnvelopeIds(), Names{outcome()});
}

TEST_F(SigningFlowTest, WhoMaySignAtTheSameTimeIsChosen) {
    bothAtOnce();
    begin();
    ASSERT_EQ(view_->offered.size(), 2u);
    EXPECT_EQ(told(), Names{"NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification"});
    onMain([](auto& controller) { controller.signersViewControllerCanceled(); });
    EXPECT_EQ(controller_->currentRecipient(), nullptr);
    EXPECT_EQ(view_->closed, 0) << "the screen stays as it is";

    onMain([this](auto& controller) { controller.signersViewControllerDidChooseSigner(signers()[1]); });
    EXPECT_EQ(alerts_->answer("OK").title, "Pass to the next signer") << "not the first of the list";
    signTurn();
    ASSERT_TRUE(view_->chooser.wait(2));
    ASSERT_EQ(view_->offered.size(), 1u) << "who has signed is not offered again";
    EXPECT_EQ(view_->offered.front(), signers()[0]);
}

TEST_F(SigningFlowTest, WaitsWhileTheHostChangesWhoSigns) {
    for (const auto step : {NVMEnvelopeSelectRecipientToBeginOfflineSigningNotification,
                            NVMEnvelopeRecipientWillBeginOfflineSigningNotification}) {
        SCOPED_TRACE(step);
        view_ = std::make_shared<RecordingSigningView>();
        bothAtOnce();
        const auto host = convertFirstSignerAt(step);
        begin();
        if (step == NVMEnvelopeRecipientWillBeginOfflineSigningNotification)
            onMain([this](auto& controller) {
                controller.signersViewControllerDidChooseSigner(signers().front());
            });
        // The one who is left is alone now, and goes on at once.
        EXPECT_NE(alerts_->answer("OK").message.find("Bo Lund"), std::string::npos);
        EXPECT_EQ(alerts_->openCount(), 0u);
        EXPECT_EQ(controller_->currentRecipient()->nvm_name(), "Bo Lund");
        EXPECT_EQ(view_->titles, Names{"Bo Lund"});
        onMain([](auto& controller) { controller.exitNativeSigning(); });
        EXPECT_EQ(outcome(), "error SIGNING_CANCELLED");
    }
}

TEST_F(SigningFlowTest, DiscardingLeavesNothingAndNothingComesAfterIt) {
    hideAlerts();
    use(sandbox::kRentalTemplateId, {"Ann Smith"});
    begin();
    consent();
    waitForTurn();
    onMain([](auto& controller) { controller.cancelTapped(); });
    const Alert sheet = alerts_->dismiss();
    EXPECT_EQ(sheet.title, "You will not be able to resume signing this document.");
    EXPECT_TRUE(sheet.isSheet && sheet.actions.front().isDestructive);
    EXPECT_TRUE(hasFiles());
    onMain([](auto& controller) { controller.consumerDisclosureControllerCancelled(); });
    alerts_->answer("Discard Document");
    EXPECT_EQ(outcome(), "error SIGNING_CANCELLED");
    EXPECT_FALSE(hasFiles());
    EXPECT_EQ(userInfoOf(NVMSigningCancelledNotification)["signingMode"], "offline");

    onMain([&](auto& controller) {
        sheet.actions.front().handler();
        controller.finishTapped();
        controller.cancelTapped();
        controller.didTapOnAnnotation(*tab("Renter Signature")->tabId);
    });
    const Names names = told();
    EXPECT_EQ(std::count(names.begin(), names.end(), NVMSigningCancelledNotification), 1);
    EXPECT_EQ(view_->closed, 1);
    EXPECT_EQ(alerts_->openCount(), 0u);
    EXPECT_TRUE(Handler::cachedEnvelopeIds().empty());
}

TEST_F(SigningFlowTest, ASheetLeftOpenConfirmsForNobodyElse) {
    hideAlerts();
    use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
    begin();
    consent();
    waitForTurn();
    fillIn();
    onMain([](auto& controller) { controller.finishTapped(); });
    const Alert leftOpen = alerts_->dismiss();
    finishTurn();
    consent();
    waitForTurn();
    onMain([&](auto&) { leftOpen.actions.front().handler(); });
    EXPECT_FALSE(signers()[1]->signedDateTime);
    EXPECT_EQ(controller_->currentRecipient()->nvm_name(), "Bo Lund");
}

TEST_F(SigningFlowTest, AnEarlierCopyGivesWayToTheFinishedEnvelope) {
    hideAlerts();
    use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
    ASSERT_EQ(failureOf([&](auto completion) { Handler::cacheEnvelope(*envelope_, completion); }),
              std::nullopt);
    const auto earlier = Handler::cachedEnvelopes();
    ASSERT_EQ(earlier.size(), 1u);
    envelope_->envelopeId = earlier.front()->envelopeId;
    const std::size_t before = told().size();
    begin();
    signTurn();
    signTurn();
    const std::string id = outcome();
    EXPECT_EQ(Handler::cachedEnvelopeIds(), Names{id});
    Names after = told();
    after.erase(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(before) + 4); // the two turns
    EXPECT_EQ(after, (Names{"NVMSigningCompletedNotification", "NVMEnvelopeUncachedNotification",
                            "NVMRecordMetaDataDidAddNotification", "NVMEnvelopeCachedNotification"}));
}

TEST_F(SigningFlowTest, AnEnvelopeThatCannotBeKeptIsSaid) {
    use(sandbox::kLeaseTemplateId, {"Ann Smith"});
    signers().pop_back();
    begin();
    alerts_->answer("OK");
    signTurn();
    alerts_->answer("OK");
    NVMManager::clearCredentialsAndCachedTemplates(); // closes the store
    alerts_->answer("OK");
    EXPECT_TRUE(outcome().starts_with("error")) << "nothing stands in the cache";
    EXPECT_EQ(alerts_->errors().size(), 1u);
    EXPECT_EQ(view_->closed, 1);
}

} // namespace
} // namespace norvane
