// PageAllocator: a std::allocator stand-in that takes large arrays straight
// from the system's pages rather than from malloc.
//
// For short-lived arrays of many megabytes: glibc's malloc, once such a
// block is freed, raises its mapping threshold to that size and keeps the
// following large allocations in its heap, which raises the peak memory of
// the rest of the run. Pages taken and returned here leave malloc as it
// was. Elsewhere (Windows) it is the plain allocator.
#ifndef LMT_DXF_PAGE_ALLOCATOR_H_
#define LMT_DXF_PAGE_ALLOCATOR_H_

#include <cstddef>
#include <new>

namespace lmt::dxf {

// Fresh zeroed pages for `bytes`, or null when the system has none.
void* MapPages(size_t bytes);
// REQUIRES: p and bytes from one MapPages call.
void UnmapPages(void* p, size_t bytes);
// MapPages, and the system asked to back them with large pages.
void* MapLargePages(size_t bytes);

template <typename T>
struct PageAllocator {
  using value_type = T;

  PageAllocator() = default;
  template <typename U>
  PageAllocator(const PageAllocator<U>&) {}

  T* allocate(size_t n) {
    if (void* p = MapPages(n * sizeof(T))) return static_cast<T*>(p);
    throw std::bad_alloc();  // what std::allocator does
  }
  void deallocate(T* p, size_t n) { UnmapPages(p, n * sizeof(T)); }

  template <typename U>
  bool operator==(const PageAllocator<U>&) const {
    return true;
  }
};

// For the arrays that grow with the drawing (one entry a record): from
// kFrom bytes on they take pages of their own, backed by large pages where
// the system has them, so that filling them costs one fault per 2 MiB
// rather than per 4 KiB (the faults of a large drawing's arrays cost a
// good part of its load otherwise). Smaller ones come from operator new.
template <typename T>
struct LargePageAllocator {
  using value_type = T;
  static constexpr size_t kFrom = size_t{2} << 20;

  LargePageAllocator() = default;
  template <typename U>
  LargePageAllocator(const LargePageAllocator<U>&) {}

  T* allocate(size_t n) {
    const size_t bytes = n * sizeof(T);
    if (bytes < kFrom) return static_cast<T*>(::operator new(bytes));
    if (void* p = MapLargePages(bytes)) return static_cast<T*>(p);
    throw std::bad_alloc();  // what std::allocator does
  }
  void deallocate(T* p, size_t n) {
    const size_t bytes = n * sizeof(T);
    if (bytes < kFrom) {
      ::operator delete(p);
    } else {
      UnmapPages(p, bytes);
    }
  }

  template <typename U>
  bool operator==(const LargePageAllocator<U>&) const {
    return true;
  }
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_PAGE_ALLOCATOR_H_
