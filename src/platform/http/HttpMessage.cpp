#include "src/platform/AsciiText.h"

#include <norvane/platform/HttpSession.h>

namespace norvane {
namespace {

class DataBody final : public HttpBody {
  public:
    explicit DataBody(Data bytes)
        : bytes_(std::move(bytes)) {}

    std::uint64_t size() const override { return bytes_.size(); }

    Result<std::size_t> read(char* buffer, std::size_t capacity) override {
        const std::size_t count = bytes_.view().copy(buffer, capacity, position_);
        position_ += count;
        return count;
    }

  private:
    Data bytes_;
    std::size_t position_ = 0;
};

} // namespace

std::shared_ptr<HttpBody> HttpBody::fromData(Data bytes) {
    return std::make_shared<DataBody>(std::move(bytes));
}

std::optional<std::string> HttpResponse::header(std::string_view name) const {
    for (const auto& [key, value] : headers)
        if (asciiEqualsIgnoringCase(key, name)) return value;
    return std::nullopt;
}

} // namespace norvane
