#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace norvane {

/// Something on the screen that a tip can point at or lie in. The kit only hands it along.
class ViewAnchor {
  public:
    virtual ~ViewAnchor() = default;
};

/// How a tip looks; colours are 0xRRGGBB. The defaults are those of a violated rule: red on white.
struct PopTipLook {
    std::uint32_t backgroundColor = 0xFFFFFF;
    std::uint32_t borderColor = 0xFF0000;
    std::uint32_t textColor = 0xFF0000;
    int animation = 1; ///< 0 slides, 1 pops
};

/// A tip that points at a view, given by the screens. Main queue.
class PopTipView {
  public:
    virtual ~PopTipView() = default;
    virtual std::string message() const = 0;
    /// Replaces the text of a tip that is shown.
    virtual void setMessage(const std::string& message) = 0;
    virtual void presentPointingAtView(const std::shared_ptr<ViewAnchor>& target,
                                       const std::shared_ptr<ViewAnchor>& superView, bool animated) = 0;
    virtual void dismissAnimated(bool animated) = 0;
    /// To be called when the user dismisses the tip, and only then; the kit lets go of the tip meanwhile.
    virtual void onDismissedByUser(std::function<void()> handler) = 0;
};

/// Makes a tip that is not shown yet.
using PopTipMaker =
    std::function<std::shared_ptr<PopTipView>(const std::string& message, const PopTipLook& look)>;

} // namespace norvane
