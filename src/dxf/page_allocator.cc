#include "dxf/page_allocator.h"

#include "dxf/file_map.h"

#ifndef _WIN32
#include <sys/mman.h>
#endif

namespace lmt::dxf {

void* MapPages(size_t bytes) {
#ifdef _WIN32
  return ::operator new(bytes, std::nothrow);
#else
  void* p = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                   MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return p == MAP_FAILED ? nullptr : p;
#endif
}

void* MapLargePages(size_t bytes) {
  void* p = MapPages(bytes);
  if (p != nullptr) AdviseLargePages(p, bytes);
  return p;
}

void UnmapPages(void* p, size_t bytes) {
#ifdef _WIN32
  (void)bytes;
  ::operator delete(p);
#else
  ::munmap(p, bytes);
#endif
}

}  // namespace lmt::dxf
