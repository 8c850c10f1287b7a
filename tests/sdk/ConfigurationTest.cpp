#include "tests/support/KitFixture.h"

#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/NVMAppearance.h>

namespace norvane {
namespace {

using ConfigurationTest = KitFixture;

TEST_F(ConfigurationTest, FallsBackToTheBuiltInDefaults) {
    EXPECT_TRUE(configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_HIDE_SWITCH_RECIPIENT_UI_KEY));
    EXPECT_FALSE(configuredValueForSetupKey(NVM_SETUP_OFFLINE_SIGNING_HIDE_ALERTS_KEY));
    EXPECT_FALSE(configuredValueForSetupKey("nvm.setup.unknown"));
    EXPECT_EQ(configuredValueForSetupKeyTabDefaultsComparison(), 0u);
    EXPECT_EQ(setupConfigurationKeys().size(), 15u);
}

TEST_F(ConfigurationTest, ReadsNumbersAndTextsAlikeAndSurvivesARestart) {
    EXPECT_EQ(nvm_setDefaults(1, NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY), std::nullopt);
    EXPECT_EQ(nvm_setDefaults("false", NVM_SETUP_POWERED_BY_NORVANE_ENABLED), std::nullopt);
    EXPECT_EQ(nvm_setDefaults("2", NVM_SETUP_TAB_DEFAULTS_COMPARISION), std::nullopt);
    restart();
    EXPECT_TRUE(configuredValueForSetupKey(NVM_SETUP_DISABLE_CONTACTS_USAGE_KEY));
    EXPECT_FALSE(configuredValueForSetupKey(NVM_SETUP_POWERED_BY_NORVANE_ENABLED));
    EXPECT_EQ(configuredValueForSetupKeyTabDefaultsComparison(), 2u);

    EXPECT_EQ(nvm_setDefaults({}, NVM_SETUP_POWERED_BY_NORVANE_ENABLED), std::nullopt);
    EXPECT_TRUE(configuredValueForSetupKey(NVM_SETUP_POWERED_BY_NORVANE_ENABLED))
        << "removed: the default again";
}

TEST(Colors, AreReadFromHexText) {
    EXPECT_EQ(colorFromHexText("#FF0080"), (Color{1, 0, 128 / 255.0, 1}));
    EXPECT_EQ(colorFromHexText("0x00ff0000"), (Color{0, 1, 0, 0}));
    EXPECT_EQ(colorFromHexText("#12345"), std::nullopt);
    EXPECT_EQ(colorFromHexText("#12345g"), std::nullopt);
}

} // namespace
} // namespace norvane
