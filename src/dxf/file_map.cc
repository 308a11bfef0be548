#include "dxf/file_map.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lmt::dxf {
namespace {

// Maps an open regular file; false when it cannot (the caller then reads).
bool Map(const std::string& path, size_t max_size, const char** data,
         size_t* size, Status* status) {
#ifdef _WIN32
  (void)path, (void)max_size, (void)data, (void)size, (void)status;
  return false;
#else
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;  // the read path reports why
  struct stat st;
  bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
  if (ok && static_cast<uintmax_t>(st.st_size) >= max_size) {
    ::close(fd);
    *status = Status::Corruption(path + ": file too large (2 GiB or more)");
    return true;
  }
  if (ok && st.st_size == 0) {  // nothing to map
    ::close(fd);
    *data = "";
    *size = 0;
    return true;
  }
  void* p = MAP_FAILED;
  if (ok) {
    int flags = MAP_PRIVATE;
#ifdef MAP_POPULATE
    // The whole file is read once, front to back: map every page now
    // rather than fault them in one by one.
    flags |= MAP_POPULATE;
#endif
    p = ::mmap(nullptr, static_cast<size_t>(st.st_size), PROT_READ, flags, fd,
               0);
  }
  ::close(fd);  // the mapping keeps the file
  if (p == MAP_FAILED) return false;
  *data = static_cast<const char*>(p);
  *size = static_cast<size_t>(st.st_size);
  return true;
#endif
}

}  // namespace

void FileMap::Reset() {
#ifndef _WIN32
  if (mapped_) ::munmap(const_cast<char*>(data_), size_);
#endif
  owned_.reset();
  data_ = "";
  size_ = 0;
  mapped_ = false;
}

Status FileMap::Open(const std::string& path, size_t max_size) {
  Reset();
  Status status;
  const char* data = nullptr;
  size_t size = 0;
  if (Map(path, max_size, &data, &size, &status)) {
    if (!status.ok()) return status;
    data_ = data;
    size_ = size;
    mapped_ = size > 0;
    return Status::Ok();
  }
  std::error_code ec;
  uintmax_t expected = std::filesystem::file_size(path, ec);
  if (ec) return Status::IOError(path + ": " + ec.message());
  if (expected >= max_size) {
    return Status::Corruption(path + ": file too large (2 GiB or more)");
  }
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return Status::IOError(path + ": cannot open for reading");
  // Not a std::string: zero-filling a large buffer first costs a tenth of
  // the load.
  owned_.reset(new char[static_cast<size_t>(expected) + 1]);
  size_t got =
      expected ? std::fread(owned_.get(), 1, static_cast<size_t>(expected), f)
               : 0;
  bool bad = std::ferror(f) != 0;
  std::fclose(f);
  if (bad) {
    owned_.reset();
    return Status::IOError(path + ": read error");
  }
  data_ = owned_.get();
  size_ = got;
  return Status::Ok();
}

void AdviseLargePages(void* p, size_t bytes) {
#if !defined(_WIN32) && defined(MADV_HUGEPAGE)
  constexpr uintptr_t kLarge = uintptr_t{2} << 20;
  uintptr_t b = (reinterpret_cast<uintptr_t>(p) + kLarge - 1) & ~(kLarge - 1);
  uintptr_t e = (reinterpret_cast<uintptr_t>(p) + bytes) & ~(kLarge - 1);
  if (e > b) ::madvise(reinterpret_cast<void*>(b), e - b, MADV_HUGEPAGE);
#else
  (void)p, (void)bytes;
#endif
}

void ReleasePages(void* p, size_t bytes) {
#if !defined(_WIN32) && defined(MADV_DONTNEED)
  constexpr uintptr_t kPage = 4096;
  uintptr_t b = (reinterpret_cast<uintptr_t>(p) + kPage - 1) & ~(kPage - 1);
  uintptr_t e = (reinterpret_cast<uintptr_t>(p) + bytes) & ~(kPage - 1);
  if (e > b) ::madvise(reinterpret_cast<void*>(b), e - b, MADV_DONTNEED);
#else
  (void)p, (void)bytes;
#endif
}

}  // namespace lmt::dxf
