#include "tests/model/ModelFixture.h"

namespace norvane {
namespace {

using Ids = std::vector<std::string>;
using Envelope = ModelFixture;

struct NotFromTemplate : NVMEnvelopeDefinition {
    bool isCreatedFromTemplate() const override { return false; }
};

void signOffline(NVMRecipient& recipient) {
    recipient.offlineAttributes = std::make_shared<NVMOfflineAttributes>();
    recipient.offlineAttributes->offlineSigningHash = "hash";
    recipient.signedDateTime = Date(std::chrono::seconds(1));
}

TEST_F(Envelope, SignersAreSortedByRoutingOrderKindByKind) {
    const auto envelope = envelopeOf(
        {inPersonSigner("p2", 2), inPersonSigner("p1", 1), signer("s3", "", "", 3), signer("s1a", "", "", 1),
         signer("s1b", "", "", 1), signer("s", "", "", std::nullopt), signer("s0", "", "", -1)});
    EXPECT_EQ(idsOf(envelope->allSigners()), (Ids{"s0", "s", "s1a", "s1b", "s3", "p1", "p2"}));
}

TEST_F(Envelope, LocalSignersAreTheUserAndThoseWhomTheUserHosts) {
    const auto mine = signer("1", "jose", "JOSE@example.com", 2);
    const auto hosted = inPersonSigner("2", 1);
    const auto other = signer("3", "Bob", "bob@example.com", 1);
    const auto envelope = envelopeOf({mine, hosted, other});
    EXPECT_TRUE(envelope->incompleteLocalSigners().empty()) << "nobody is signed in";
    signIn();
    EXPECT_EQ(idsOf(envelope->incompleteLocalSigners()), (Ids{"2", "1"}));
    envelope->envelopeId = "remote";
    envelope->currentRoutingOrder = 1;
    EXPECT_EQ(idsOf(envelope->incompleteLocalSigners()), Ids{"2"});
    signOffline(*hosted);
    EXPECT_TRUE(envelope->incompleteLocalSigners().empty());
    EXPECT_EQ(idsOf(envelope->localSignersWithOnlyIncomplete(false)), Ids{"2"});

    NotFromTemplate local;
    local.recipients = envelope->recipients;
    local.currentRoutingOrder = 1;
    EXPECT_EQ(idsOf(local.localSignersWithOnlyIncomplete(false)), (Ids{"2", "1"}))
        << "made here: every order";
}

TEST_F(Envelope, SelfSignNeedsTheUserAlone) {
    signIn();
    const auto envelope = envelopeOf({signer("1")});
    EXPECT_TRUE(envelope->isSelfSign());
    envelope->recipients->signers->front()->email = "other@example.com";
    EXPECT_FALSE(envelope->isSelfSign());
    EXPECT_FALSE(envelopeOf({signer("1"), signer("2")})->isSelfSign());
}

TEST_F(Envelope, SignedRecipientsAreThoseOfThisSession) {
    const auto first = signer("1");
    const auto done = signer("2");
    const auto later = inPersonSigner("3", 2);
    const auto open = signer("4");
    for (const RecipientList::value_type& recipient : RecipientList{first, done, later})
        signOffline(*recipient);
    done->status = "completed";
    const auto envelope = envelopeOf({first, done, later, open});
    envelope->currentRoutingOrder = 1;
    EXPECT_EQ(idsOf(envelope->signedRecipients()->allSigners()), Ids{"1"});
    EXPECT_FALSE(envelope->isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession());
    envelope->envelopeId = "remote";
    EXPECT_TRUE(envelope->isRemoteEnvelopeSignedByAtLeastOneSignerInCurrentSession());
    signIn();
    EXPECT_EQ(idsOf(envelope->unsignedRecipients()->allSigners()), Ids{"4"});

    NotFromTemplate downloaded;
    downloaded.recipients = envelope->recipients;
    downloaded.currentRoutingOrder = 1;
    first->tabs->addTab(std::make_shared<NVMText>());
    EXPECT_EQ(idsOf(downloaded.allOfflineRecipientsInCurrentRoutingOrder()), Ids{"1"});
}

TEST_F(Envelope, SubjectComesFromTheFirstDocumentWhenSent) {
    NVMEnvelopeDefinition envelope;
    envelope.documents.emplace().push_back(std::make_shared<NVMDocument>());
    envelope.documents->front()->name = "Lease.pdf";
    envelope.setSubjectIfNeeded();
    EXPECT_EQ(envelope.emailSubject, std::nullopt);
    envelope.status = "sent";
    envelope.setSubjectIfNeeded();
    EXPECT_EQ(envelope.emailSubject, "Lease.pdf");
    envelope.documents->front()->name = "Other.pdf";
    envelope.setSubjectIfNeeded();
    EXPECT_EQ(envelope.emailSubject, "Lease.pdf");
}

TEST_F(Envelope, DocumentsSortByTheNumberInTheirOrder) {
    NVMEnvelopeDefinition envelope;
    envelope.documents.emplace();
    for (const char* order : {"10", "9", "x"}) {
        envelope.documents->push_back(std::make_shared<NVMDocument>());
        envelope.documents->back()->order = order;
        envelope.documents->back()->pdf = Data("%PDF");
    }
    const auto sorted = envelope.sortedDocumentsByOrder();
    EXPECT_EQ(sorted[0]->order, "x");
    EXPECT_EQ(sorted[1]->order, "9");
    const NVMEnvelopeDefinition copy(envelope, false);
    EXPECT_EQ(copy.documents->front()->pdf, std::nullopt);
    EXPECT_TRUE(envelope.documents->front()->pdf.has_value());
}

} // namespace
} // namespace norvane
