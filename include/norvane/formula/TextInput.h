#pragma once

#include <optional>
#include <string>

namespace norvane {

/// What a text field offers to rules that compare with it and to forms. Main queue.
class TextInput {
  public:
    virtual ~TextInput() = default;
    virtual std::string text() const = 0;
};

} // namespace norvane
