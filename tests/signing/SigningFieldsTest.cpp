#include "sandbox/TemplateIds.h"
#include "tests/signing/SigningFlowFixture.h"

#include <norvane/model/NVMCheckbox.h>
#include <norvane/model/NVMRadioGroup.h>
#include <norvane/signing/SignedPreview.h>

namespace norvane {
namespace {

using Names = std::vector<std::string>;

class SigningFieldsTest : public SigningFlowFixture {
  protected:
    /// Taps the middle of the tab where the page shows it.
    void tap(const NVMNativeSigningViewController& controller, const NVMTab& tab) const {
        constexpr double kLetterHeight = 792;
        const auto page = static_cast<std::size_t>(*tab.pageNumber) + (tab.documentId == "1" ? 0 : 1);
        const NVMTabFrame& frame = *tab.frame;
        controller.toolManager().handleTap(
            page,
            {static_cast<double>(frame.originX + 8), kLetterHeight - static_cast<double>(frame.originY + 8)},
            {});
    }
};

TEST_F(SigningFieldsTest, OneRadioOfAGroupIsChosen) {
    hideAlerts();
    use(sandbox::kRentalTemplateId, {"Ann Smith"});
    begin();
    consent();
    waitForTurn();
    const auto group = signers()[0]->tabs->radioGroupTabs->front();
    const auto& radios = *group->radios;
    ASSERT_GE(radios.size(), 2u);
    const std::size_t missing = controller_->remainingRequiredTags().size();
    const auto chosen = [&] {
        Names values;
        for (const auto& radio : radios)
            values.push_back(radio->value.value_or("none") + (radio->selected ? "!" : ""));
        return values;
    };
    for (const std::size_t choice : {std::size_t{1}, std::size_t{0}}) {
        onMain([&](auto& controller) { tap(controller, *radios[choice]); });
        Names expected(radios.size(), "");
        expected[choice] = "X!";
        EXPECT_EQ(chosen(), expected);
    }
    EXPECT_EQ(controller_->remainingRequiredTags().size(), missing - radios.size());

    const auto preview = signedPreviewOf(*envelope_);
    for (const auto& radio : radios)
        radio->required = false;
    EXPECT_EQ(*preview, *signedPreviewOf(*envelope_)) << "nothing is shown as wanting";
}

TEST_F(SigningFieldsTest, TextAndChecksFollowTheTaps) {
    hideAlerts();
    use(sandbox::kLeaseTemplateId, {"Ann Smith", "Bo Lund"});
    begin();
    consent();
    waitForTurn();
    const auto tabs = *envelope_->tagsForSigner(signers()[0]);
    for (const auto& tab : tabs) {
        const std::string id = *tab->tabId;
        if (const auto* checkbox = dynamic_cast<const NVMCheckbox*>(tab.get())) {
            onMain([&](auto& controller) { controller.didTapOnAnnotation(id); });
            EXPECT_TRUE(checkbox->selected && checkbox->value == "X");
            onMain([&](auto& controller) { controller.didTapOnAnnotation(id); });
            EXPECT_TRUE(!checkbox->selected && checkbox->value == "");
        } else if (tab->tabType == NVMTabTypeText) {
            tab->value.reset();
            onMain([&](auto& controller) { controller.didTapOnAnnotation(id); });
            EXPECT_EQ(view_->editors.back(), "") << "not the placeholder";
        } else if (tab->tabType == NVMTabTypeFullName) {
            const std::size_t editors = view_->editors.size();
            onMain([&](auto& controller) {
                controller.didTapOnAnnotation(id);
                controller.textViewDidChange(id, "somebody else");
            });
            EXPECT_EQ(tab->value, "Ann Smith");
            EXPECT_EQ(view_->editors.size(), editors);
        }
    }
    EXPECT_FALSE(view_->editors.empty());
}

} // namespace
} // namespace norvane
