#include "tests/support/KitFixture.h"

#include <norvane/api/NVESTabs.h>
#include <norvane/api/RecordJson.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/templates/TabConversion.h>

namespace norvane {
namespace {

class TabConversionTest : public KitFixture {
  protected:
    static void switchOn(std::string_view key) {
        ASSERT_EQ(nvm_setDefaults(NVM_SETUP_TRUE_VALUE, key), std::nullopt);
    }
    static NVESTabs tabs(const std::string& json) { return **readRecord<NVESTabs>(json); }
    static std::vector<std::string> labels(const NVESTabs& tabs) {
        std::vector<std::string> found;
        for (const auto& tab : *tabs.textTabs)
            found.push_back(tab->tabLabel.value_or(""));
        return found;
    }
};

TEST_F(TabConversionTest, PutsConvertedTabsAheadAndLeavesTheirSources) {
    switchOn(NVM_SETUP_OFFLINE_SIGNING_CONVERT_ZIPTABS_TO_TEXTTABS);
    switchOn(NVM_SETUP_OFFLINE_SIGNING_CONVERT_DATETABS_TO_TEXTTABS);
    NVESTabs made = tabs(R"({"textTabs":[{"tabLabel":"t1"},{"tabLabel":"t2"}],
        "zipTabs":[{"tabLabel":"z1","useDash4":"true"},{"tabLabel":"z2"}],
        "dateTabs":[{"tabLabel":"d1"}],"numberTabs":[{"tabLabel":"n1"}]})");
    convertOfflineUnsupportedTextBasedTabsToTextTabs(made);
    EXPECT_EQ(labels(made), (std::vector<std::string>{"z1", "z2", "d1", "t1", "t2"}));
    EXPECT_EQ(made.zipTabs->size(), 2u);
    EXPECT_EQ(made.dateTabs->asArray()->size(), 1u);
    EXPECT_EQ(unsupportedOfflineTabTypes(made), std::vector<std::string>{"numberTabs"});
}

TEST_F(TabConversionTest, CarriesAllFieldsOfANumberTab) {
    switchOn(NVM_SETUP_OFFLINE_SIGNING_CONVERT_NUMBERTABS_TO_TEXTTABS);
    const std::string number =
        R"({"tabLabel":"Rent","value":"12.50","width":84,"maxLength":10,"required":"true",
        "formula":"[a]*2","xPosition":"100","tabId":"n-1","tabOrder":7,"mergeField":{"path":"Lease.Rent"},
        "validationPattern":"^[0-9.]+$"})";
    NVESTabs made = tabs(R"({"numberTabs":[)" + number + "]}");
    convertOfflineUnsupportedTextBasedTabsToTextTabs(made);
    const NVESText& text = *made.textTabs->front();
    EXPECT_EQ(text.value, "12.50");
    EXPECT_EQ(text.width, 84);
    EXPECT_EQ(text.formula, "[a]*2");
    EXPECT_EQ(text.xPosition, "100");
    EXPECT_EQ(text.tabId, "n-1");
    EXPECT_EQ(text.tabOrder, std::nullopt) << "not among the fields that are carried over";
    ASSERT_NE(text.mergeField, nullptr);
    EXPECT_EQ(text.mergeField->path, "Lease.Rent");

    switchOn(NVM_SETUP_OFFLINE_SIGNING_SET_MERGEFIELD_AS_NIL_FOR_TABS_CONVERSION);
    NVESTabs again = tabs(R"({"numberTabs":[)" + number + "]}");
    convertOfflineUnsupportedTextBasedTabsToTextTabs(again);
    EXPECT_EQ(again.textTabs->front()->mergeField, nullptr);
}

TEST_F(TabConversionTest, ListsWhatCannotBeShownInAFixedOrder) {
    const NVESTabs made = tabs(R"({"emailTabs":[{}],"zipTabs":[{}],"listTabs":[{}],"approveTabs":[{}],
        "signerAttachmentTabs":[{}],"noteTabs":[],"textTabs":[{}]})");
    EXPECT_EQ(
        unsupportedOfflineTabTypes(made),
        (std::vector<std::string>{"AttachmentTabs", "ApproveTabs", "listTabs", "emailTabs", "zipTabs"}));
}

} // namespace
} // namespace norvane
