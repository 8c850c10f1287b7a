#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace norvane {

class TextInput;

/// When a rule is checked: a bit mask. A rule of hint 0 is checked only when no hints are given, in a full
/// check.
using EvaluationHints = std::uint64_t;
inline constexpr EvaluationHints kCheckWhileEditing = 1; ///< when a field starts editing, and during it
inline constexpr EvaluationHints kCheckKeystroke = 2;    ///< a keystroke that breaks the rule is refused

/// A named rule over a text. Lengths count characters as code points. One thread at a time.
class NVM_NVCondition {
  public:
    /// Whether the text satisfies the rule; it may replace the condition's description.
    using EvaluationBlock = std::function<bool(NVM_NVCondition& condition, const std::string& text)>;

    NVM_NVCondition() = default;
    explicit NVM_NVCondition(std::string description, EvaluationHints hint = kCheckWhileEditing,
                             EvaluationBlock block = {});
    virtual ~NVM_NVCondition() = default;

    /// What the user reads when the rule is broken.
    std::string localizedDescription;
    EvaluationHints evaluationHint = kCheckWhileEditing;
    EvaluationBlock evaluationBlock; ///< without one every text is accepted

    virtual bool isSatisfiedBy(const std::string& text);

    /// Something is left when white space and line breaks at the ends are gone.
    static std::shared_ptr<NVM_NVCondition> notBlankCondition();
    static std::shared_ptr<NVM_NVCondition> conditionWithMinLength(std::size_t length);
    static std::shared_ptr<NVM_NVCondition> conditionWithMaxLength(std::size_t length);
    static std::shared_ptr<NVM_NVCondition> noSpacesCondition();
    static std::shared_ptr<NVM_NVCondition> validURLCondition();
    /// Nothing but Unicode's letters, marks and digits.
    static std::shared_ptr<NVM_NVCondition> alphanumericCondition();
    /// None of "<", ">" and "&#"; the description names the first of them that was found.
    static std::shared_ptr<NVM_NVCondition> nvm_validCharactersCondition();
    static std::shared_ptr<NVM_NVCondition> nvm_validEmailCondition();
};

/// A rule that compares with the text of another field; without one no text is valid.
class NVM_NVFieldTextCondition : public NVM_NVCondition {
  public:
    NVM_NVFieldTextCondition(std::string description, std::shared_ptr<const TextInput> referenceField);

    std::shared_ptr<const TextInput> referenceField;
};

/// The text is exactly the other field's.
class NVM_NVMatchesFieldTextCondition : public NVM_NVFieldTextCondition {
  public:
    using NVM_NVFieldTextCondition::NVM_NVFieldTextCondition;
    bool isSatisfiedBy(const std::string& text) override;
};

/// The other field's text begins with the text.
class NVM_NVStartsWithFieldTextCondition : public NVM_NVFieldTextCondition {
  public:
    using NVM_NVFieldTextCondition::NVM_NVFieldTextCondition;
    bool isSatisfiedBy(const std::string& text) override;
};

/// Whether the whole text, case aside, is an e-mail address. Any thread.
bool nvm_stringIsValidEmail(std::string_view text);

} // namespace norvane
