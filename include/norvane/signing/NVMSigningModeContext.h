#pragma once

#include <norvane/signing/NVMSigningMode.h>

namespace norvane {

/// The signing mode that the host chose for the envelope in hand. One instance for the process; it keeps the
/// last mode set. Main queue only: the mode is not locked.
class NVMSigningModeContext {
  public:
    static NVMSigningModeContext& sharedInstance() {
        static NVMSigningModeContext context;
        return context;
    }
    NVMSigningModeContext(const NVMSigningModeContext&) = delete;
    NVMSigningModeContext& operator=(const NVMSigningModeContext&) = delete;

    NVMSigningMode signingMode() const { return signingMode_; }
    void setSigningMode(NVMSigningMode mode) { signingMode_ = mode; }

  private:
    NVMSigningModeContext() = default;
    NVMSigningMode signingMode_ = NVMSigningModeOnline;
};

} // namespace norvane
