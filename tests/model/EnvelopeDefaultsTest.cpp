#include "tests/model/ModelFixture.h"

#include <norvane/api/NVESEnvelopes.h>
#include <norvane/model/NVMEnvelopeDefaults.h>
#include <norvane/model/mapping/WireEnvelopeDefaults.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/Errors.h>

namespace norvane {
namespace {

std::shared_ptr<NVMRecipientDefault> entry(NVMRecipientType type, const std::optional<std::string>& name,
                                           const std::optional<std::string>& email) {
    auto made = std::make_shared<NVMRecipientDefault>();
    made->recipientId = "1";
    made->recipientType = type;
    made->recipientName = name;
    made->recipientEmail = email;
    return made;
}

class EnvelopeDefaults : public ModelFixture {
  protected:
    std::shared_ptr<NVMSigner> signer_ = signer("1", "Old", "old@example.com");
    std::shared_ptr<NVMEnvelopeDefinition> envelope_ = envelopeOf({signer_});
};

TEST_F(EnvelopeDefaults, TheLastFaultOfTheEntriesIsReported) {
    NVMEnvelopeDefaults defaults;
    Failure error;
    EXPECT_FALSE(defaults.hasValidEnvelopeRecipients(error));
    EXPECT_EQ(error, std::nullopt);

    const auto inPerson = entry(NVMRecipientTypeInPersonSigner, "Host", "host@example.com");
    const auto removed = entry(NVMRecipientTypeSigner, "<>", "");
    removed->removeRecipient = true;
    defaults.recipientDefaults = {inPerson, removed};
    EXPECT_FALSE(defaults.hasValidEnvelopeRecipients(error));
    EXPECT_EQ(error, NVM_errorInvalidInPersonSignerName());
    inPerson->recipientEmail = "host@";
    EXPECT_FALSE(defaults.hasValidEnvelopeRecipients(error));
    EXPECT_EQ(error, NVM_errorInvalidSignerEmail());
    inPerson->recipientName = "  ";
    EXPECT_FALSE(defaults.hasValidEnvelopeRecipients(error));
    EXPECT_EQ(error, NVM_errorInvalidSignerName()) << "the name is looked at before the e-mail";

    defaults.recipientDefaults = {entry(NVMRecipientTypeSigner, "Ann", "ann@example.com")};
    error.reset();
    EXPECT_TRUE(defaults.hasValidEnvelopeRecipients(error));
    EXPECT_EQ(error, std::nullopt);
}

TEST_F(EnvelopeDefaults, ASignerTakesNameAndEmailEvenWhenAbsent) {
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults(
                  {entry(NVMRecipientTypeSigner, "Ann", std::nullopt)}),
              std::nullopt);
    EXPECT_EQ(signer_->name, "Ann");
    EXPECT_EQ(signer_->email, std::nullopt);
}

TEST_F(EnvelopeDefaults, KindsAreSwitchedAsTheEntrySays) {
    const auto toInPerson = entry(NVMRecipientTypeInPersonSigner, "Host", "host@example.com");
    toInPerson->inPersonSignerName = "Ann";
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults({toInPerson}), std::nullopt);
    ASSERT_EQ(envelope_->recipients->inPersonSigners->size(), 1u);
    const auto inPerson = envelope_->recipients->inPersonSigners->front();
    EXPECT_EQ(inPerson->hostEmail, "host@example.com");
    EXPECT_EQ(inPerson->signerName, "Ann");
    EXPECT_EQ(inPerson->signerEmail, std::nullopt);

    toInPerson->inPersonSignerName = "Bea";
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults(
                  {toInPerson, entry(NVMRecipientTypeSigner, "Cy", "cy@example.com")}),
              std::nullopt);
    EXPECT_EQ(inPerson->signerName, "Bea") << "the first entry was applied before the second";
    ASSERT_EQ(envelope_->recipients->signers->size(), 1u);
    EXPECT_EQ(envelope_->recipients->signers->front()->name, "Cy");
}

TEST_F(EnvelopeDefaults, TheLastRecipientCannotBeRemoved) {
    const auto removal = entry(NVMRecipientTypeSigner, {}, {});
    removal->removeRecipient = true;
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults({removal}),
              NVM_errorTemplateCannotRemoveRecipient());
    envelope_->recipients->addRecipient(std::make_shared<NVMCarbonCopy>());
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults({removal}), std::nullopt);
    EXPECT_TRUE(envelope_->recipients->signers->empty());
}

TEST_F(EnvelopeDefaults, UnknownRecipientsEndItButEarlierEntriesStay) {
    const auto byRole = entry(NVMRecipientTypeSigner, "Ann", "ann@example.com");
    byRole->recipientSelectorType = 1;
    byRole->recipientRoleName = "Client";
    const auto byId = entry(NVMRecipientTypeSigner, "Ann", "ann@example.com");
    byId->recipientId = "9";
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults(
                  {entry(NVMRecipientTypeSigner, "First", "first@example.com"), byRole}),
              NVM_errorTemplateWithInvalidRecipientsForRoleName("Client"));
    EXPECT_EQ(signer_->name, "First");
    EXPECT_EQ(envelope_->updateRecipientsWithRecipientDefaults({byId}), NVM_errorInvalidRecipientId());
}

TEST_F(EnvelopeDefaults, TabLabelsMatchAsConfigured) {
    const std::vector<std::string> labels = {"Name", "First Name", "NÁME", "NameX"};
    const std::vector<std::vector<std::string>> filled = {
        {"Name"}, {"Name", "NÁME"}, {"Name", "First Name", "NameX"}, {}};
    for (std::size_t mode = 0; mode < filled.size(); ++mode) {
        ASSERT_EQ(nvm_setDefaults(Value(static_cast<std::int64_t>(mode)), NVM_SETUP_TAB_DEFAULTS_COMPARISION),
                  std::nullopt);
        signer_->tabs = std::make_shared<NVMTabs>();
        for (const auto& label : labels)
            signer_->tabs->addTab(tab<NVMTitle>(label, *signer_));
        signer_->tabs->addTab(tab<NVMCheckbox>("Name", *signer_));
        envelope_->applyTabValueDefaults(TabValueDefaults{{"Name", "Ann"}});
        std::vector<std::string> found;
        for (const auto& tab : signer_->tabs->allTabs())
            if (tab->value == "Ann") found.push_back(*tab->tabLabel);
        EXPECT_EQ(found, filled[mode]) << mode;

        NVESEnvelopeDefinition wire;
        wire.templateRoles.emplace().push_back(std::make_shared<NVESTemplateRole>());
        auto wireTabs = wire.templateRoles->front()->tabs = std::make_shared<NVESTabs>();
        wireTabs->companyTabs.emplace();
        for (const auto& label : labels) {
            wireTabs->companyTabs->push_back(std::make_shared<NVESCompany>());
            wireTabs->companyTabs->back()->tabLabel = label;
        }
        applyTabValueDefaults(wire, TabValueDefaults{{"Name", "Ann"}});
        found.clear();
        for (const auto& tab : *wireTabs->companyTabs)
            if (tab->value == "Ann") found.push_back(*tab->tabLabel);
        EXPECT_EQ(found, filled[mode]) << mode;
    }
}

TEST_F(EnvelopeDefaults, TheLastMatchingKeyWins) {
    ASSERT_EQ(nvm_setDefaults(Value(2), NVM_SETUP_TAB_DEFAULTS_COMPARISION), std::nullopt);
    const auto text = tab<NVMText>("First Name", *signer_);
    signer_->tabs->addTab(text);
    envelope_->applyTabValueDefaults(
        TabValueDefaults{{"Name", "1"}, {"First", "2"}, {"First Name", std::nullopt}});
    EXPECT_EQ(text->value, "2") << "an absent value leaves the tab alone";
    envelope_->applyTabValueDefaults(std::nullopt);
    EXPECT_EQ(text->value, "2");
    envelope_->applyTabValueDefaults(TabValueDefaults{{"name", "3"}});
    EXPECT_EQ(text->value, "2") << "a piece counts as it is written";
    envelope_->applyTabValueDefaults(TabValueDefaults{{"", "4"}});
    EXPECT_EQ(text->value, "4") << "every label contains the empty text";
}

TEST_F(EnvelopeDefaults, CustomFieldsMergeByName) {
    const auto given = std::make_shared<NVMCustomFields>();
    auto text = given->textCustomFields.emplace().emplace_back(std::make_shared<NVMTextCustomField>());
    text->name = "ref";
    text->value = "new";
    auto list = given->listCustomFields.emplace().emplace_back(std::make_shared<NVMListCustomField>());
    list->name = "colour";
    list->listItems = {"red", "blue"};
    NVMEnvelopeDefinition empty;
    empty.applyCustomFields(given);
    EXPECT_EQ(empty.customFields, given);

    envelope_->customFields = std::make_shared<NVMCustomFields>();
    auto own = envelope_->customFields->textCustomFields.emplace().emplace_back(
        std::make_shared<NVMTextCustomField>());
    own->name = "ref";
    own->value = "old";
    own->fieldId = "7";
    own->required = true;
    own->configurationType = "kept";
    envelope_->applyCustomFields(given);
    ASSERT_EQ(envelope_->customFields->textCustomFields->size(), 1u);
    EXPECT_EQ(own->value, "new");
    EXPECT_EQ(own->fieldId, "7");
    EXPECT_FALSE(own->required);
    EXPECT_EQ(own->configurationType, "kept");
    EXPECT_EQ(envelope_->customFields->listCustomFields->front()->listItems, list->listItems);

    NVESEnvelopeDefinition wire;
    applyCustomFields(wire, given.get());
    EXPECT_EQ(wire.customFields->textCustomFields->front()->required, "false");
    list->required = true;
    const auto alone = createNVESListCustomFieldFromUserDefinedCustomField(*list);
    EXPECT_EQ(alone->required, "true");
    EXPECT_EQ(alone->listItems, list->listItems);
    EXPECT_EQ(createNVESTextCustomFieldFromUserDefinedCustomField(*text)->value, "new");
}

} // namespace
} // namespace norvane
