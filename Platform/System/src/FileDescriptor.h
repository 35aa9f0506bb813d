#pragma once

#include <unistd.h>

#include <utility>

namespace platform {

/// Owns a file descriptor.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    ~FileDescriptor() { reset(); }

    int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    void reset() {
        if (number_ >= 0) close(number_);
        number_ = -1;
    }

  private:
    int number_ = -1;
};

}  // namespace platform
