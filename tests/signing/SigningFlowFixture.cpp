#include "tests/signing/SigningFlowFixture.h"

#include <norvane/sdk/Configuration.h>
#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/templates/NVMTemplatesManager.h>

namespace norvane {

namespace {

Image ink() {
    return Image::generate(40, 20, 1, [](std::uint8_t* pixels) { std::fill_n(pixels, 3200, 0x60); });
}

} // namespace

void SigningFlowFixture::SetUp() {
    SandboxKitFixture::SetUp();
    signIn();
    observer_ = platform().notifications->addObserver("", [this](const Notification& notification) {
        const std::lock_guard lock(mutex_);
        notifications_.push_back(notification);
    });
}

void SigningFlowFixture::TearDown() {
    observer_.reset();
    platform().executors->mainQueue()->sync([this] {
        notifications_.clear(); // they hold the controller
        controller_.reset();
    });
    SandboxKitFixture::TearDown();
}

void SigningFlowFixture::use(const char* templateId, const std::vector<std::string>& names) {
    ASSERT_EQ(failureOf([&](auto completion) {
                  NVMTemplatesManager().cacheTemplateWithId(templateId, completion);
              }),
              std::nullopt);
    auto envelope = offlineEnvelopeFromTemplate(templateId, {});
    ASSERT_TRUE(envelope) << envelope.error().localizedDescription();
    envelope_ = *envelope;
    for (std::size_t i = 0; i < names.size(); ++i) {
        signers().at(i)->hostName = user().userName;
        signers().at(i)->hostEmail = user().email;
        signers().at(i)->signerName = names[i];
        signers().at(i)->signerEmail = "guest@example.com";
    }
}

void SigningFlowFixture::begin() {
    auto made = NVMNativeSigningViewController::viewControllerForEnvelope(
        envelope_, view_, [this](const Result<std::string>& outcome) {
            outcome_ = outcome ? *outcome : "error " + outcome.error().failureReason();
            ended_.set();
        });
    ASSERT_TRUE(made) << made.error().localizedDescription();
    controller_ = *made;
    onMain([](auto& controller) { controller.viewDidLoad(); });
}

void SigningFlowFixture::consent() {
    ASSERT_TRUE(view_->disclosure.wait(++disclosed_));
    onMain([](auto& controller) { controller.consumerDisclosureControllerConsented("disclosure-1"); });
}

void SigningFlowFixture::fillIn() {
    onMain([this](auto& controller) {
        for (const auto& missing : controller.remainingRequiredTags()) {
            const std::string id = missing->tabId.value_or("");
            if (missing->tabType == NVMTabTypeText) controller.textViewDidChange(id, "entry");
            const std::size_t captures = view_->captures.size();
            controller.didTapOnAnnotation(id);
            if (view_->captures.size() == captures) continue;
            if (view_->captures.back())
                controller.signatureCaptureDidFinishWithInitials(ink());
            else
                controller.signatureCaptureDidFinishWithSignature(ink());
        }
    });
}

void SigningFlowFixture::finishTurn() {
    onMain([](auto& controller) { controller.finishTapped(); });
    EXPECT_TRUE(alerts_->answer("Confirm Signing").isSheet);
}

void SigningFlowFixture::signTurn() {
    consent();
    waitForTurn();
    fillIn();
    finishTurn();
}

void SigningFlowFixture::hideAlerts() {
    NVMManager::setupWithConfiguration({{std::string(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY), "true"}});
}

void SigningFlowFixture::onMain(const std::function<void(NVMNativeSigningViewController&)>& work) {
    platform().executors->mainQueue()->sync([&] { work(*controller_); });
}

std::shared_ptr<NVMTab> SigningFlowFixture::tab(const std::string& label) const {
    for (const auto& tab : envelope_->allTags())
        if (tab->tabLabel == label) return tab;
    ADD_FAILURE() << "no tab " << label;
    return nullptr;
}

std::string SigningFlowFixture::outcome() {
    if (!ended_.wait()) ADD_FAILURE() << "the signing did not end";
    return outcome_;
}

std::vector<std::string> SigningFlowFixture::told() const {
    const std::lock_guard lock(mutex_);
    std::vector<std::string> names;
    for (const auto& notification : notifications_)
        if (notification.name.find("Recipient") != std::string::npos ||
            notification.name.find("MetaData") != std::string::npos ||
            notification.name.find("Sign") != std::string::npos ||
            notification.name.find("ached") != std::string::npos)
            names.push_back(notification.name);
    return names;
}

} // namespace norvane
