// FileMap: a whole file's bytes, read-only, for as long as the object lives.
//
// On POSIX systems the file is mapped (private, read-only) rather than read:
// a drawing's pages then come straight from the page cache, with no copy
// and no zero-filled buffer to fault in. Elsewhere, and when mapping fails
// (pipes, special files), the file is read into memory instead. Either way
// the bytes never change through this object and the file is never written.
//
// A mapped file that another program truncates while it is mapped cannot be
// read safely; our own saves never do that (they write a temporary file and
// rename it into place), so the input of a run keeps its old bytes.
#ifndef LMT_DXF_FILE_MAP_H_
#define LMT_DXF_FILE_MAP_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "dxf/status.h"

namespace lmt::dxf {

class FileMap {
 public:
  FileMap() = default;
  FileMap(const FileMap&) = delete;
  FileMap& operator=(const FileMap&) = delete;
  ~FileMap() { Reset(); }

  // Opens `path`, dropping whatever this object held. Files of `max_size`
  // bytes and more are refused with Corruption; missing or unreadable
  // files give IOError.
  Status Open(const std::string& path, size_t max_size);

  std::string_view data() const { return {data_, size_}; }
  bool mapped() const { return mapped_; }

 private:
  void Reset();

  const char* data_ = "";
  size_t size_ = 0;
  bool mapped_ = false;
  std::unique_ptr<char[]> owned_;  // the read fallback
};

// Asks the system to back [p, p + bytes) with large pages where it can (a
// hint only): a large array filled once then faults a few times instead of
// once per small page. A no-op where there is no such hint.
void AdviseLargePages(void* p, size_t bytes);

// Gives the memory of the whole pages in [p, p + bytes) back to the system
// now (a hint only): they read as zeros afterwards. For a large array whose
// contents were copied elsewhere, so that both copies never count whole.
// A no-op where there is no such hint.
void ReleasePages(void* p, size_t bytes);

}  // namespace lmt::dxf

#endif  // LMT_DXF_FILE_MAP_H_
