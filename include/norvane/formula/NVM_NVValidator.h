#pragma once

#include <norvane/formula/NVM_NVCondition.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// An ordered list of rules. One thread at a time.
class NVM_NVValidator {
  public:
    using Conditions = std::vector<std::shared_ptr<NVM_NVCondition>>;

    explicit NVM_NVValidator(Conditions conditions);

    const Conditions& conditions() const { return conditions_; }

    /// The rules that the text breaks, in order, of those whose hint shares a bit with the given hints; of
    /// all when the hints are 0: a full check.
    Conditions conditionsViolatedByText(const std::string& text, EvaluationHints evaluationHints = 0) const;
    bool isValidText(const std::string& text, EvaluationHints evaluationHints = 0) const;
    /// Nothing when the text breaks no rule.
    std::optional<std::string>
    descriptionOfFirstConditionViolatedByText(const std::string& text,
                                              EvaluationHints evaluationHints = 0) const;

    /// No spaces; valid characters; at least 6 characters.
    static std::shared_ptr<NVM_NVValidator> nvm_createPasswordValidator();
    /// While typing the field's text must begin with the confirmation typed so far; the full check demands
    /// that they are equal.
    static std::shared_ptr<NVM_NVValidator>
    nvm_confirmPasswordAgainstTextFieldValidator(std::shared_ptr<const TextInput> field);
    /// Not blank; valid characters; at most 100 characters.
    static std::shared_ptr<NVM_NVValidator> nvm_nameValidator();
    /// Valid characters; a valid e-mail address; at most 100 characters.
    static std::shared_ptr<NVM_NVValidator> nvm_emailValidator();
    /// Not blank; valid characters; at most 100 characters.
    static std::shared_ptr<NVM_NVValidator> nvm_emailSubjectValidator();

  private:
    Conditions conditions_;
};

} // namespace norvane
