#include "tests/support/KitFixture.h"

#include <norvane/formula/NVM_NVValidator.h>
#include <norvane/formula/TextInput.h>

namespace norvane {
namespace {

struct FixedInput : TextInput {
    explicit FixedInput(std::string typed)
        : typed_(std::move(typed)) {}
    std::string text() const override { return typed_; }
    std::string typed_;
};

using Validator = KitFixture;

TEST_F(Validator, NameMustBeThereShortAndWithoutMarkup) {
    const auto names = NVM_NVValidator::nvm_nameValidator();
    const std::string longest(100, 'x');
    EXPECT_TRUE(names->isValidText("Ann O'Neill"));
    EXPECT_TRUE(names->isValidText(longest));
    EXPECT_FALSE(names->isValidText(longest + "x"));
    EXPECT_FALSE(names->isValidText("\u00a0 \t\u2028"));
    EXPECT_FALSE(names->isValidText("a<b"));
    std::string letters;
    for (int i = 0; i < 100; ++i)
        letters += "é";
    EXPECT_TRUE(names->isValidText(letters)) << "the length is in characters, not bytes";
}

TEST_F(Validator, HintsChooseTheRules) {
    const auto names = NVM_NVValidator::nvm_nameValidator();
    EXPECT_FALSE(names->isValidText(std::string(101, 'x'), kCheckKeystroke));
    EXPECT_TRUE(names->isValidText("", kCheckKeystroke));
    const auto passwords = NVM_NVValidator::nvm_createPasswordValidator();
    EXPECT_TRUE(passwords->isValidText("12345", kCheckWhileEditing | kCheckKeystroke));
    EXPECT_FALSE(passwords->isValidText("12345"));
}

TEST_F(Validator, DescriptionNamesTheOffendingCharacters) {
    const auto names = NVM_NVValidator::nvm_nameValidator();
    EXPECT_EQ(names->descriptionOfFirstConditionViolatedByText("a&#b"), "Must not contain &#");
    EXPECT_EQ(names->descriptionOfFirstConditionViolatedByText(std::string(101, 'x')),
              "Must be less than 100 characters");
    EXPECT_EQ(names->descriptionOfFirstConditionViolatedByText("Ann"), std::nullopt);
}

TEST_F(Validator, ConfirmationFollowsThePasswordWhileTyping) {
    const auto confirmation =
        NVM_NVValidator::nvm_confirmPasswordAgainstTextFieldValidator(std::make_shared<FixedInput>("abcdef"));
    EXPECT_TRUE(confirmation->isValidText("abc", kCheckWhileEditing));
    EXPECT_FALSE(confirmation->isValidText("abd", kCheckWhileEditing));
    EXPECT_FALSE(confirmation->isValidText("abc"));
    EXPECT_TRUE(confirmation->isValidText("abcdef"));
}

TEST_F(Validator, EmailIgnoresCaseAndSpaceAround) {
    EXPECT_TRUE(NVM_NVValidator::nvm_emailValidator()->isValidText(" Ann@Example.COM "));
    EXPECT_TRUE(nvm_stringIsValidEmail("a.b@[10.0.0.1]"));
    EXPECT_TRUE(nvm_stringIsValidEmail("\"ann lee\"@example.org"));
    for (const char* wrong :
         {"", "ann", "ann@", "ann@example", "ann@example.c", "a b@example.com", "ann@x.com "})
        EXPECT_FALSE(nvm_stringIsValidEmail(wrong)) << wrong;
}

TEST_F(Validator, LongEmailsEndInTime) {
    std::string hostile = "a";
    for (int i = 0; i < 20000; ++i)
        hostile += ".a";
    EXPECT_FALSE(nvm_stringIsValidEmail(hostile));
    EXPECT_FALSE(nvm_stringIsValidEmail("a@" + hostile + "!"));
}

} // namespace
} // namespace norvane
