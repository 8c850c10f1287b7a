#include "tests/model/ModelFixture.h"

#include <algorithm>

namespace norvane {
namespace {

class Tabs : public ModelFixture {
  protected:
    std::shared_ptr<NVMSigner> signer_ = signer("1");
    std::shared_ptr<NVMEnvelopeDefinition> envelope_ = envelopeOf({signer_});

    template <class T>
    std::shared_ptr<T> add(const std::string& label) {
        auto made = tab<T>(label, *signer_);
        signer_->tabs->addTab(made);
        return made;
    }
    std::shared_ptr<NVMRadio> addRadioGroup() {
        auto group = std::make_shared<NVMRadioGroup>();
        group->radios.emplace();
        for (int i = 0; i < 2; ++i)
            group->radios->push_back(tab<NVMRadio>("choice", *signer_));
        group->adoptRadios();
        if (!signer_->tabs->radioGroupTabs) signer_->tabs->radioGroupTabs.emplace();
        signer_->tabs->radioGroupTabs->push_back(group);
        return group->radios->front();
    }
};

TEST_F(Tabs, KindsHaveNamesAndSizes) {
    EXPECT_EQ(nameForTagType(NVMTabTypeFormula), "Formula");
    EXPECT_EQ(nameForTagType(11), std::nullopt);
    EXPECT_EQ(defaultSizeForTagType(11), (Size{53, 45}));
    EXPECT_EQ(defaultSizeForTagType(NVMTabTypeInitialHere), (Size{36, 50}));
    EXPECT_EQ(defaultSizeForTagType(NVMTabTypeUnsupported), (Size{0, 0}));
    const NVMCheckbox placed(NVMDocument(), 3, *signer_);
    EXPECT_EQ(placed.frameAsCGRect(), (Rect{0, 0, 17, 17}));
    EXPECT_EQ(placed.pageNumber, 3);
    EXPECT_EQ(placed.createTabLabel(), " ");
}

TEST_F(Tabs, OnlyEntryAndImageTabsCanBeOptional) {
    EXPECT_FALSE(NVMText().nvm_required());
    EXPECT_TRUE(NVMSignHere().nvm_required());
    EXPECT_TRUE(NVMFullName().nvm_required());
    NVMFormula formula;
    EXPECT_TRUE(formula.nvm_required()) << "whatever its own field says";
    formula.nvm_setLocked(true);
    EXPECT_FALSE(formula.nvm_locked());
    NVMRadio radio;
    radio.nvm_setLocked(true);
    EXPECT_TRUE(radio.nvm_locked());
}

TEST_F(Tabs, UnsupportedKindsAreThoseWithATabOfTypeZero) {
    add<NVMCompany>("a")->tabType = NVMTabTypeUnsupported;
    add<NVMFormula>("b")->tabType = NVMTabTypeUnsupported;
    add<NVMText>("c");
    addRadioGroup()->tabType = NVMTabTypeUnsupported;
    EXPECT_EQ(NVMTabs::unsupportedTabTypes(signer_->tabs.get()), std::vector<std::string>{"Company"});
    EXPECT_TRUE(NVMTabs::unsupportedTabTypes(nullptr).empty());
}

TEST_F(Tabs, TabsAreAddedByClassAndRemovedByIdentity) {
    const auto company = add<NVMCompany>("a");
    const auto radio = addRadioGroup();
    EXPECT_EQ(signer_->tabs->allTabs().size(), 3u);
    company->documentId = "7";
    EXPECT_EQ(envelope_->tagsForDocumentId("7"), TabList{company});
    EXPECT_TRUE(envelope_->tagsForDocument(NVMDocument()).empty()) << "an absent id matches nothing";
    EXPECT_FALSE(signer_->tabs->addTab(std::make_shared<NVMTab>()));
    EXPECT_FALSE(signer_->tabs->removeTab(std::make_shared<NVMCompany>(*company)));
    EXPECT_TRUE(signer_->tabs->removeTab(company));
    EXPECT_TRUE(signer_->tabs->removeTab(radio));
    EXPECT_TRUE(signer_->tabs->removeTab(signer_->tabs->radioGroupTabs->front()->radios->front()));
    EXPECT_TRUE(signer_->tabs->radioGroupTabs->empty());
}

TEST_F(Tabs, RemainingTabsLackAValueOrASelection) {
    const auto text = add<NVMText>("text");
    text->required = true;
    add<NVMTitle>("optional title");
    const auto sign = add<NVMSignHere>("sign");
    const auto box = add<NVMCheckbox>("box");
    box->required = true;
    box->selected = true;
    add<NVMFormula>("formula");
    const auto radio = addRadioGroup();
    radio->required = true;

    EXPECT_EQ(envelope_->remainingTagsIncludingOptionalForRecipient(signer_)->size(), 5u);
    EXPECT_EQ(box->value, "X") << "asking rewrites the value";
    EXPECT_EQ(envelope_->remainingRequiredTagsForRecipient(signer_)->size(), 3u);
    EXPECT_EQ(envelope_->radioGroupWith(*radio, signer_), radio->radioGroup.lock());
    EXPECT_TRUE(envelope_->radioGroupWith(NVMRadio(*radio), signer_)) << "a copy shares its id";
    NVMRadio renamed(*radio);
    renamed.tabId = "another";
    EXPECT_FALSE(envelope_->radioGroupWith(renamed, signer_));
    NVMRadio equal;
    equal.tabId = radio->tabId;
    EXPECT_FALSE(envelope_->radioGroupWith(equal, signer_)) << "an equal id is not that id";
    const auto copy = NVMTabs::withTabs(*signer_->tabs);
    const auto& copied = copy->radioGroupTabs->front()->radios->front();
    EXPECT_EQ(envelope_->radioGroupWith(*copied, signer_), radio->radioGroup.lock());
    EXPECT_EQ(copied->radioGroup.lock(), copy->radioGroupTabs->front());

    text->value = "x";
    sign->imageData = std::make_shared<NVMTabImageData>(Data("png"));
    radio->radioGroup.lock()->radios->back()->selected = true;
    EXPECT_EQ(envelope_->remainingTagsIncludingOptionalForRecipient(signer_)->size(), 1u);
    EXPECT_EQ(envelope_->remainingRequiredTagsForRecipient(signer_), std::nullopt);
    EXPECT_EQ(envelope_->remainingTagsIncludingOptionalForRecipient(std::make_shared<NVMAgent>()),
              std::nullopt);
}

TEST_F(Tabs, NavigationPassesOverTabsThatFillThemselves) {
    add<NVMFullName>("name");
    add<NVMDateSigned>("date");
    add<NVMText>("optional");
    add<NVMFormula>("formula");
    add<NVMInitialHere>("initials");
    const auto tags = envelope_->requiredNavigableTagsForRecipient(signer_);
    ASSERT_EQ(tags->size(), 2u);
    EXPECT_EQ(tags->at(0)->tabLabel, "initials");
    EXPECT_EQ(tags->at(1)->tabLabel, "formula");
    EXPECT_EQ(envelope_->requiredNavigableTagsForRecipient(std::make_shared<NVMAgent>()), std::nullopt);
}

TEST_F(Tabs, UnsupportedTabsAreRequiredAndNeverRemaining) {
    add<NVMText>("text")->tabType = NVMTabTypeUnsupported;
    add<NVMDateSigned>("date")->tabType = NVMTabTypeUnsupported;
    addRadioGroup()->tabType = NVMTabTypeUnsupported;
    const auto remaining = envelope_->remainingTagsIncludingOptionalForRecipient(signer_);
    ASSERT_EQ(remaining->size(), 1u) << "the other radio";
    EXPECT_EQ(envelope_->remainingRequiredTagsForRecipient(signer_), std::nullopt);
    EXPECT_EQ(envelope_->requiredNavigableTagsForRecipient(signer_)->size(), 3u);
}

TEST_F(Tabs, LabelsAndIdsAreNumberedThroughAllSigners) {
    const auto second = signer("2", "B", "b@example.com", 2);
    envelope_ = envelopeOf({second, signer_});
    const auto kept = add<NVMText>("Kept");
    kept->tabId = "own";
    const auto blank = add<NVMText>("");
    const auto unnamed = std::make_shared<NVMText>();
    signer_->tabs->addTab(unnamed);
    const auto last = std::make_shared<NVMSignHere>();
    second->tabs->addTab(last);
    envelope_->assignLabelsAndIDsToTabs();
    EXPECT_EQ(kept->tabLabel, "Kept");
    EXPECT_EQ(kept->tabId, "own");
    EXPECT_EQ(blank->tabLabel, "") << "an empty label is one";
    EXPECT_EQ(blank->tabId, "2");
    EXPECT_EQ(unnamed->tabLabel, "Text tab 3");
    EXPECT_EQ(unnamed->tabId, "3");
    EXPECT_EQ(last->tabLabel, "Sign Here tab 4");
    EXPECT_EQ(last->tabId, "4");
    envelope_->assignLabelsAndIDsToTabsWithForceAssign(true);
    EXPECT_EQ(kept->tabId, "own");
}

} // namespace
} // namespace norvane
