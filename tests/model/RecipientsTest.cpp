#include "tests/model/ModelFixture.h"

#include <norvane/model/NVMTemplateRecipient.h>
#include <norvane/sdk/Configuration.h>

namespace norvane {
namespace {

using Ids = std::vector<std::string>;
using Recipients = ModelFixture;

template <class T>
std::shared_ptr<T> plain(const std::string& id) {
    auto recipient = std::make_shared<T>();
    recipient->recipientId = id;
    return recipient;
}

TEST_F(Recipients, ListsKeepTheirOrderAmongOneAnother) {
    NVMRecipients recipients;
    for (const RecipientList::value_type& recipient :
         RecipientList{signer("s"), plain<NVMIntermediary>("i"), inPersonSigner("p"), plain<NVMEditor>("e"),
                       plain<NVMCertifiedDelivery>("d"), plain<NVMCarbonCopy>("c"), plain<NVMAgent>("a")})
        ASSERT_TRUE(recipients.addRecipient(recipient));
    EXPECT_EQ(idsOf(recipients.allRecipients()), (Ids{"a", "c", "d", "e", "p", "i", "s"}));
    EXPECT_EQ(idsOf(recipients.allSigners()), (Ids{"p", "s"}));
    EXPECT_EQ(idsOf(recipients.allSignersIncludingNeedsToView()), (Ids{"p", "s", "d"}));
    for (NVMRecipientType type = NVMRecipientTypeAgent; type <= NVMRecipientTypeSigner; ++type) {
        const auto list = recipients.recipientsOfType(type);
        ASSERT_TRUE(list && list->size() == 1) << type;
        EXPECT_EQ(list->front()->recipientType, type);
    }
    EXPECT_FALSE(recipients.recipientsOfType(0));
    EXPECT_FALSE(NVMRecipients().recipientsOfType(NVMRecipientTypeSigner));
}

TEST_F(Recipients, RoleIsFoundOnlyWhenOneHasIt) {
    NVMRecipients recipients;
    recipients.addRecipient(signer("1"));
    recipients.addRecipient(inPersonSigner("2"));
    recipients.signers->front()->roleName = "Réviseur";
    const auto found = recipients.recipientWithRoleName("Réviseur");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->recipientId, "1");
    EXPECT_FALSE(recipients.recipientWithRoleName("  REVISEUR\n"));
    ASSERT_EQ(nvm_setDefaults(Value("true"), NVM_SETUP_RECIPIENT_DEFAULTS_CASE_INSENSITIVELY_MATCH_ROLE_NAME),
              std::nullopt);
    EXPECT_TRUE(recipients.recipientWithRoleName("  REVISEUR\n"));
    recipients.inPersonSigners->front()->roleName = "reviseur";
    EXPECT_FALSE(recipients.recipientWithRoleName("Réviseur"));
    EXPECT_FALSE(recipients.recipientWithRoleName(std::nullopt));
}

TEST_F(Recipients, RoutingOrderTellsWhoseTurnItIs) {
    NVMRecipients recipients;
    recipients.addRecipient(signer("1", "A", "a@example.com", 1));
    recipients.addRecipient(signer("2", "B", "b@example.com", 2));
    recipients.addRecipient(signer("3", "C", "c@example.com", std::nullopt));
    EXPECT_TRUE(recipients.currentRoutingOrderRecipients().empty());
    recipients.currentRoutingOrder = 2;
    EXPECT_EQ(idsOf(recipients.currentRoutingOrderRecipients()), Ids{"2"});
    EXPECT_FALSE(recipients.anyCurrentRecipientsHaveDeclined());
    recipients.signers->at(1)->status = "declined";
    EXPECT_TRUE(recipients.anyCurrentRecipientsHaveDeclined());
    EXPECT_FALSE(recipients.allRecipientsHaveCompletedOrDeclined());
    EXPECT_TRUE(NVMRecipients().allRecipientsHaveCompletedOrDeclined());
}

TEST_F(Recipients, InPersonSignerBecomesSignerAndIsAnnounced) {
    NVMRecipients recipients;
    const auto before = inPersonSigner("7");
    before->roleName = "Client";
    before->tabs = std::make_shared<NVMTabs>();
    recipients.addRecipient(signer("1"));
    recipients.addRecipient(before);
    std::vector<Dictionary> posted;
    const auto token = platform().notifications->addObserver(
        std::string(NVMEnvelopeRecipientsDidChangeNotification),
        [&](const Notification& notification) { posted.push_back(notification.userInfo); });

    const auto after = recipients.signerFromInPersonSigner(before, "Bob", "bob@example.com");
    ASSERT_TRUE(after);
    EXPECT_EQ(after->recipientType, NVMRecipientTypeSigner);
    EXPECT_EQ(after->nvm_name(), "Bob");
    EXPECT_EQ(after->roleName, std::nullopt);
    EXPECT_EQ(after->tabs, before->tabs);
    EXPECT_EQ(idsOf(recipients.allRecipients()), (Ids{"1", "7"}));
    EXPECT_EQ(posted, (std::vector<Dictionary>{{{"recipientIds", Array{Value("7")}}}}));

    EXPECT_FALSE(recipients.signerFromInPersonSigner(after, "Eve", "eve@example.com"));
    EXPECT_EQ(after->nvm_name(), "Bob");
    const auto back =
        recipients.inPersonSignerFromSigner(after, "Host", "host@example.com", "Bob", std::nullopt);
    EXPECT_EQ(back->recipientType, NVMRecipientTypeInPersonSigner);
    EXPECT_EQ(idsOf(recipients.allSigners()), (Ids{"7", "1"}));
    EXPECT_EQ(posted.size(), 1u);
}

TEST_F(Recipients, RemovalGoesByTypeAndIdentity) {
    NVMRecipients recipients;
    const auto first = signer("1");
    recipients.addRecipient(first);
    recipients.removeRecipient(std::make_shared<NVMSigner>(*first));
    EXPECT_EQ(recipients.signers->size(), 1u);
    first->recipientType = NVMRecipientTypeNotSet;
    recipients.removeRecipient(first);
    EXPECT_EQ(recipients.signers->size(), 1u);
    first->recipientType = NVMRecipientTypeSigner;
    recipients.removeRecipient(first);
    EXPECT_TRUE(recipients.signers->empty());
}

TEST_F(Recipients, CopiesShareNothing) {
    NVMRecipients recipients;
    const auto original = signer("1");
    original->tabs = std::make_shared<NVMTabs>();
    auto group = std::make_shared<NVMRadioGroup>();
    group->radios.emplace().push_back(std::make_shared<NVMRadio>());
    group->adoptRadios();
    original->tabs->radioGroupTabs.emplace().push_back(group);
    recipients.addRecipient(original);

    const auto copy = NVMRecipients::withRecipients(recipients);
    EXPECT_TRUE(equalRecords(NVMRecipients::type(), &recipients, copy.get()));
    const auto& copiedGroup = copy->signers->front()->tabs->radioGroupTabs->front();
    EXPECT_NE(copiedGroup, group);
    EXPECT_EQ(copiedGroup->radios->front()->radioGroup.lock(), copiedGroup);
    EXPECT_FALSE(copy->agents.has_value());
}

TEST_F(Recipients, TemplateRecipientFixesWhatTheTemplateGives) {
    auto remote = signer("1", "  Ann ", "");
    remote->roleName = "Client";
    NVMTemplateRecipient client(*remote);
    EXPECT_EQ(client.recipientName, "Ann");
    EXPECT_EQ(client.disabledProperties,
              NVMTemplateRecipientNameDisabled | NVMTemplateRecipientInPersonSignerNameDisabled);
    EXPECT_FALSE(client.isCompleted());
    EXPECT_TRUE(client.isEditable());

    signIn();
    remote = signer("2", "", "");
    remote->roleName = "@SÉLF";
    NVMTemplateRecipient self(*remote);
    EXPECT_TRUE(self.isSenderRole());
    EXPECT_EQ(self.recipientEmail, "jose@example.com");
    EXPECT_TRUE(self.isCompleted());
}

TEST_F(Recipients, KindsAreNamed) {
    EXPECT_EQ(localizedTextForRecipientType(NVMRecipientTypeSigner), "Remote signer");
    EXPECT_EQ(localizedTextForRecipientType(NVMRecipientTypeNotSet), "Not set");
    EXPECT_EQ(localizedTextForRecipientType(8), std::nullopt);
    EXPECT_EQ(NVMAgent().nvm_name(), "recipient name");
    EXPECT_EQ(inPersonSigner("1")->nvm_name(), "Ann");
}

} // namespace
} // namespace norvane
