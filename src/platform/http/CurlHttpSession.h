#pragma once

#include <norvane/platform/Clock.h>
#include <norvane/platform/Files.h>
#include <norvane/platform/HttpSession.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace norvane {

/// The session over libcurl: one thread moves the bytes, another runs the completions. Downloads go to
/// `Files::temporaryFolder`, cached responses below `Files::cachesFolder`. The session may be destroyed from
/// inside one of its completions.
class CurlHttpSession final : public HttpSession {
  public:
    /// `trustAnchorFile` is a PEM file of the only certificate authorities to trust; without one, the
    /// system's are. The clock is what the age of cached responses is reckoned by.
    CurlHttpSession(std::shared_ptr<Files> files, std::optional<std::filesystem::path> trustAnchorFile,
                    std::shared_ptr<Clock> clock);
    ~CurlHttpSession() override;

    void send(HttpRequest request, Completion completion) override;
    void download(HttpRequest request, Completion completion) override;
    void clearCache() override;
    void setCacheCapacity(std::uint64_t memoryBytes, std::uint64_t diskBytes) override;

  private:
    class Core;
    const std::shared_ptr<Core> core_;
};

} // namespace norvane
