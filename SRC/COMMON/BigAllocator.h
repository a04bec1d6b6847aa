// Memory of big vectors that are filled at once: huge pages where the system has them, and no zeroing of
// elements that are written right afterwards.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

template <class T>
class BigAllocator_cls {
public:
    using value_type = T;

    BigAllocator_cls() = default;
    template <class U>
    BigAllocator_cls(const BigAllocator_cls<U>&) {}

    T* allocate(size_t count) {
        const size_t bytes = count * sizeof(T);
        const bool bBig = bytes >= kHugePage;
        const size_t align = bBig ? kHugePage : kCacheLine;
        void* p = std::aligned_alloc(align, (bytes + align - 1) / align * align);
        if (!p) throw std::bad_alloc();
        if (bBig) madvise(p, bytes, MADV_HUGEPAGE);
        return static_cast<T*>(p);
    }
    void deallocate(T* p, size_t) { std::free(p); }

    /// A vector that grows leaves plain new elements as they are.
    template <class U>
    void construct(U* p) {
        ::new (static_cast<void*>(p)) U;
    }
    template <class U, class... ARGS>
    void construct(U* p, ARGS&&... args) {
        ::new (static_cast<void*>(p)) U(std::forward<ARGS>(args)...);
    }

    bool operator==(const BigAllocator_cls&) const { return true; }
    bool operator!=(const BigAllocator_cls&) const { return false; }

private:
    static constexpr size_t kHugePage = size_t(2) << 20;
    static constexpr size_t kCacheLine = 64;
};
