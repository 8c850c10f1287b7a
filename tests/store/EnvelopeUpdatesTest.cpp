#include "tests/store/EnvelopeFixture.h"

#include <norvane/store/NVMCDTemplates.h>

namespace norvane {
namespace {

using Handler = NVMEnvelopesHandler;

class EnvelopeUpdates : public EnvelopeFixture {
  protected:
    static NVMEnvelopeDefinition keyOf(const std::string& id) {
        NVMEnvelopeDefinition key;
        key.envelopeId = id;
        return key;
    }
};

TEST_F(EnvelopeUpdates, PiecesOfAnEnvelopeAreChangedInPlace) {
    const auto id = cached(envelope());
    auto key = envelope();
    key.envelopeId = id;
    std::shared_ptr<NVMEnvelopeDefinition> now;
    NotificationLog log;

    auto newcomer = signer("");
    newcomer->recipientId.reset();
    ASSERT_EQ(
        updated([&](auto done) { Handler::updateCachedEnvelopeAddOrUpdateRecipient(key, newcomer, done); },
                &now),
        std::nullopt);
    EXPECT_TRUE(isUuidString(newcomer->recipientId.value_or("")));
    ASSERT_EQ(now->recipients->signers->size(), 2u);
    EXPECT_EQ(log.first(NVMEnvelopeUpdatedNotification),
              (Dictionary{{"envelopeId", id}, {"templateId", "template-1"}}));

    ASSERT_EQ(
        updated([&](auto done) { Handler::updateCachedEnvelopeMoveRecipient(key, *newcomer, 1, 0, done); },
                &now),
        std::nullopt);
    EXPECT_EQ(now->recipients->signers->front()->recipientId, newcomer->recipientId);

    auto inPerson = std::make_shared<NVMInPersonSigner>();
    inPerson->recipientId = "1";
    inPerson->signerName = "Bob";
    ASSERT_EQ(
        updated([&](auto done) { Handler::updateCachedEnvelopeAddOrUpdateRecipient(key, inPerson, done); },
                &now),
        std::nullopt);
    EXPECT_EQ(now->recipients->signers->size(), 1u);
    ASSERT_EQ(now->recipients->inPersonSigners->size(), 1u);
    EXPECT_EQ(now->recipients->inPersonSigners->front()->tabs->textTabs->front()->tabId, "tab-1")
        << "keeps its tabs";

    auto box = std::make_shared<NVMCheckbox>();
    box->tabId = "box";
    ASSERT_EQ(updated([&](auto done) { Handler::updateSignerAddOrUpdateTab(*inPerson, box, done); }),
              std::nullopt);
    box->selected = true;
    ASSERT_EQ(updated([&](auto done) { Handler::updateSignerAddOrUpdateTab(*inPerson, box, done); }, &now),
              std::nullopt);
    ASSERT_EQ(now->recipients->inPersonSigners->front()->tabs->checkboxTabs->size(), 1u);
    EXPECT_TRUE(now->recipients->inPersonSigners->front()->tabs->checkboxTabs->front()->selected);
    ASSERT_EQ(updated([&](auto done) { Handler::updateSignerRemoveTab(*inPerson, *box, done); }),
              std::nullopt);
    EXPECT_FALSE(Handler::findTabWithId("box", context()));

    ASSERT_EQ(updated([&](auto done) { Handler::updateCachedEnvelopeRemoveRecipient(key, *inPerson, done); }),
              std::nullopt);
    EXPECT_FALSE(Handler::findRecipientWithId("1", context()));
    EXPECT_FALSE(Handler::findTabWithId("tab-1", context()));
    EXPECT_TRUE(
        updated([&](auto done) { Handler::updateCachedEnvelopeRemoveRecipient(key, *inPerson, done); }));
    EXPECT_EQ(log.count(NVMEnvelopeUpdateFailedNotification), 1u);
    NotificationLog unknown;
    NVMEnvelopeDefinition nowhere;
    nowhere.envelopeId = "nowhere";
    EXPECT_TRUE(
        updated([&](auto done) { Handler::updateCachedEnvelopeRemoveRecipient(nowhere, *inPerson, done); }));
    EXPECT_EQ(unknown.first(NVMEnvelopeUpdateFailedNotification).at("envelopeId"), Value("nowhere"));
}

TEST_F(EnvelopeUpdates, DocumentsAreUpdatedAndRemovedWithTheirFiles) {
    const auto id = cached(envelope());
    auto key = envelope();
    key.envelopeId = id;
    std::shared_ptr<NVMEnvelopeDefinition> now;
    ASSERT_EQ(updated([&](auto done) {
                  Handler::updateCachedEnvelopeAddOrUpdateDocument(key, *document("2", "%PDF two"), done);
              }),
              std::nullopt);
    ASSERT_EQ(updated(
                  [&](auto done) {
                      Handler::updateCachedEnvelopeUpdateDocuments(
                          key, {document("1", "%PDF new"), document("9", "x")}, done);
                  },
                  &now),
              std::nullopt);
    ASSERT_EQ(now->documents->size(), 2u);
    EXPECT_EQ(now->documents->front()->pdf->view(), "%PDF new");
    EXPECT_EQ(filesIn("ed").size(), 2u);
    Handler::removeCachedDocumentWithId("1", id, true);
    EXPECT_FALSE(Handler::findDocumentWithId("1", id, context()));
    EXPECT_TRUE(Handler::findTabsWithDocumentId("1", context()).empty());
    EXPECT_EQ(filesIn("ed").size(), 1u);
}

TEST_F(EnvelopeUpdates, StayInsideTheEnvelopeThatIsNamed) {
    const auto first = cached(envelope()), second = cached(envelope());
    const auto key = keyOf(second);
    auto renamed = signer("1");
    renamed->setNameAndEmail("Bob", "bob@example.com");
    ASSERT_EQ(
        updated([&](auto done) { Handler::updateCachedEnvelopeAddOrUpdateRecipient(key, renamed, done); }),
        std::nullopt);
    EXPECT_EQ(stored(first)->recipients->signers->front()->name, "Ann 1");
    EXPECT_EQ(stored(second)->recipients->signers->front()->name, "Bob");
    ASSERT_EQ(updated([&](auto done) {
                  Handler::updateCachedEnvelopeUpdateDocuments(key, {document("1", "%PDF new")}, done);
              }),
              std::nullopt);
    EXPECT_EQ(Handler::cachedEnvelopeById(first)->documents->front()->pdf->view(), "%PDF one");
    ASSERT_EQ(updated([&](auto done) { Handler::updateCachedEnvelopeRemoveRecipient(key, *renamed, done); }),
              std::nullopt);
    EXPECT_EQ(stored(first)->recipients->signers->size(), 1u);
    EXPECT_FALSE(stored(second)->recipients->signers);

    Handler::removeCachedDocumentWithId("1", second, true);
    EXPECT_TRUE(stored(first)->documents) << "the other envelope's document stays";
    EXPECT_FALSE(stored(first)->recipients->signers->front()->tabs->textTabs) << "its tabs go, deliberately";
}

TEST_F(EnvelopeUpdates, ASignerIsLookedForInEnvelopesNotInTemplates) {
    const auto row = std::make_shared<NVMCDEnvelopeTemplate>();
    row->recipients = std::make_shared<NVMCDRecipients>();
    row->recipients->signers.emplace().emplace_back(std::make_shared<NVMCDRecipient>())->recipientId = "1";
    context().insert(row);
    ASSERT_EQ(context().save(), std::nullopt);
    const auto id = cached(envelope());
    auto title = std::make_shared<NVMTitle>();
    title->tabId = "title";
    std::shared_ptr<NVMEnvelopeDefinition> now;
    ASSERT_EQ(
        updated([&](auto done) { Handler::updateSignerAddOrUpdateTab(*signer("1"), title, done); }, &now),
        std::nullopt);
    EXPECT_EQ(now->envelopeId, id);
    EXPECT_EQ(now->recipients->signers->front()->tabs->titleTabs->size(), 1u);
}

TEST_F(EnvelopeUpdates, KeepWhatOnlyTheStoreKnowsOfARecipient) {
    const auto id = cached(envelope());
    const auto row = stored(id);
    row->recipients->signers->front()->statusCode = "7";
    context().update(row);
    ASSERT_EQ(context().save(), std::nullopt);
    ASSERT_EQ(updated([&](auto done) {
                  Handler::updateCachedEnvelopeAddOrUpdateRecipient(keyOf(id), signer("1"), done);
              }),
              std::nullopt);
    EXPECT_EQ(stored(id)->recipients->signers->front()->statusCode, "7");
}

TEST_F(EnvelopeUpdates, ATabThatBecomesAnotherKindIsReadAsThatKind) {
    const auto id = cached(envelope());
    auto sign = std::make_shared<NVMSignHere>();
    sign->tabId = "tab-1";
    sign->imageData = std::make_shared<NVMTabImageData>(Data("PNG"));
    std::shared_ptr<NVMEnvelopeDefinition> now;
    ASSERT_EQ(
        updated([&](auto done) { Handler::updateSignerAddOrUpdateTab(*signer("1"), sign, done); }, &now),
        std::nullopt);
    const auto read = Handler::cachedEnvelopeById(id);
    const auto& tabs = *read->recipients->signers->front()->tabs;
    EXPECT_FALSE(tabs.textTabs);
    ASSERT_EQ(tabs.signHereTabs->size(), 1u);
    EXPECT_EQ(tabs.signHereTabs->front()->imageData->data, Data("PNG"));
    EXPECT_EQ(tabs.signHereTabs->front()->value, std::nullopt);
}

} // namespace
} // namespace norvane
