#pragma once

#include <sodium/utils.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace norvane {

/// Overwrites what it gives back.
template <class T>
struct CleansingAllocator {
    using value_type = T;
    CleansingAllocator() = default;
    template <class U>
    CleansingAllocator(const CleansingAllocator<U>&) {}
    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* bytes, std::size_t count) {
        sodium_memzero(bytes, count * sizeof(T));
        std::allocator<T>().deallocate(bytes, count);
    }
    friend bool operator==(const CleansingAllocator&, const CleansingAllocator&) { return true; }
};

/// Bytes that leave no trace in freed memory.
using SecretBytes = std::vector<unsigned char, CleansingAllocator<unsigned char>>;

} // namespace norvane
