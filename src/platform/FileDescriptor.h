#pragma once

#include <unistd.h>

#include <utility>

namespace norvane {

/// Owns an open file.
class FileDescriptor {
  public:
    explicit FileDescriptor(int number = -1)
        : number_(number) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    void close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }

  private:
    int number_;
};

} // namespace norvane
