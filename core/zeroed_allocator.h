// Memory that starts zeroed without being written (calloc): a large table or plane that nobody
// touches costs no memory pages. Elements made without a value keep calloc's zero, so it suits
// types whose zero bytes are their default (numbers, pixels).
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace tessaly::core {

template <typename T>
struct ZeroedAllocator {
    using value_type = T;
    ZeroedAllocator() = default;
    template <typename U>
    ZeroedAllocator(const ZeroedAllocator<U>&) // NOLINT(google-explicit-constructor)
    {
    }
    T* allocate(size_t count)
    {
        void* memory = std::calloc(count, sizeof(T));
        if (memory == nullptr)
            throw std::bad_alloc();
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, size_t) { std::free(memory); }
    // A new element is the zero calloc gave it.
    template <typename U>
    void construct(U*)
    {
    }
    template <typename U, typename... Args>
    void construct(U* at, Args&&... args)
    {
        ::new (static_cast<void*>(at)) U(std::forward<Args>(args)...);
    }
    bool operator==(const ZeroedAllocator&) const { return true; }
};


} // namespace tessaly::core
