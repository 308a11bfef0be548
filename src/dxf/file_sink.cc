#include "dxf/file_sink.h"

#include <system_error>
#include <utility>

#if defined(__linux__)
#include <fcntl.h>
#endif

namespace lmt::dxf {
namespace {

// Replacing an existing file by renaming makes ext4 write the new file's
// dirty pages out first, on the thread that renames: some 17 ms for a 25 MB
// drawing here, after all the work is done. Asking for that writeback every
// few megabytes moves it to whichever thread writes, while the save goes on.
class WritebackStarter {
 public:
  static constexpr size_t kStep = size_t{4} << 20;

  explicit WritebackStarter(std::FILE* file) : file_(file) {}
  void Wrote(size_t n) {
#if defined(__linux__) && defined(SYNC_FILE_RANGE_WRITE)
    pending_ += n;
    if (pending_ < kStep || std::fflush(file_) != 0) return;
    // Only a hint: a failure changes nothing of what is written.
    ::sync_file_range(::fileno(file_), static_cast<off_t>(started_),
                      static_cast<off_t>(pending_), SYNC_FILE_RANGE_WRITE);
    started_ += pending_;
    pending_ = 0;
#else
    (void)n;
#endif
  }

 private:
  std::FILE* file_;
  size_t started_ = 0;
  size_t pending_ = 0;
};

}  // namespace

FileSink::FileSink(std::FILE* file)
    : FileSink([file, writeback = WritebackStarter(file)](const char* data,
                                                          size_t n) mutable {
        if (std::fwrite(data, 1, n, file) != n) return false;
        writeback.Wrote(n);
        return true;
      }) {}

FileSink::FileSink(WriteFn write, size_t thread_after)
    : write_(std::move(write)), thread_after_(thread_after) {
  // The thread returns buffers here: it must not need to allocate.
  spare_.reserve(kMaxQueued + 1);
}

bool FileSink::UseThread(size_t bytes) {
  if (finished_) return false;
  if (started_) return true;
  handed_ += bytes;
  if (handed_ <= thread_after_) return false;
  // Without a thread (the system refuses one) the writes stay here.
  try {
    thread_ = std::thread(&FileSink::Run, this);
  } catch (const std::system_error&) {
    finished_ = true;
    return false;
  }
  started_ = true;
  return true;
}

// Only while no thread runs: before it starts or after it was joined.
bool FileSink::WriteHere(std::string_view bytes) {
  if (!failed_ && !write_(bytes.data(), bytes.size())) failed_ = true;
  return !failed_;
}

bool FileSink::Ok() {
  if (!started_ || finished_) return !failed_;
  std::lock_guard<std::mutex> lock(mu_);
  return !failed_;
}

bool FileSink::Put(std::string* buffer) {
  if (buffer->empty()) return Ok();
  if (!UseThread(buffer->size())) {
    bool ok = WriteHere(*buffer);
    buffer->clear();
    return ok;
  }
  std::unique_lock<std::mutex> lock(mu_);
  room_.wait(lock, [this] { return buffers_out_ < kMaxQueued; });
  std::string next;
  if (!spare_.empty()) {
    next = std::move(spare_.back());
    spare_.pop_back();
  }
  Piece& p = queue_.emplace_back();
  p.owned = std::move(*buffer);
  p.is_buffer = true;
  ++buffers_out_;
  const size_t capacity = p.owned.capacity();
  const bool ok = !failed_;
  const bool wake = idle_;
  lock.unlock();
  if (wake) work_.notify_one();
  if (next.capacity() < capacity) next.reserve(capacity);
  *buffer = std::move(next);
  return ok;
}

bool FileSink::PutSpan(std::string_view bytes) {
  if (bytes.empty()) return Ok();
  if (!UseThread(bytes.size())) return WriteHere(bytes);
  std::unique_lock<std::mutex> lock(mu_);
  queue_.push_back(Piece{{}, bytes, false});
  const bool ok = !failed_;
  const bool wake = idle_;
  lock.unlock();
  if (wake) work_.notify_one();
  return ok;
}

bool FileSink::Finish(std::string* last) {
  if (started_ && !finished_) {
    {
      std::lock_guard<std::mutex> lock(mu_);
      closing_ = true;
    }
    work_.notify_one();
    thread_.join();
  }
  finished_ = true;
  if (last != nullptr && !last->empty()) {
    WriteHere(*last);
    last->clear();
  }
  return !failed_;
}

void FileSink::Run() {
  std::unique_lock<std::mutex> lock(mu_);
  for (;;) {
    if (queue_.empty()) {
      if (closing_) return;
      idle_ = true;
      work_.wait(lock, [this] { return !queue_.empty() || closing_; });
      idle_ = false;
      continue;
    }
    Piece p = std::move(queue_.front());
    queue_.pop_front();
    const bool skip = failed_;  // the file is lost anyway
    lock.unlock();
    // A short string's bytes live inside it and moved along with it.
    const std::string_view bytes = p.is_buffer ? p.owned : p.span;
    const bool ok = skip || write_(bytes.data(), bytes.size());
    lock.lock();
    if (!ok) failed_ = true;
    if (p.is_buffer) {
      p.owned.clear();
      spare_.push_back(std::move(p.owned));
      --buffers_out_;
      room_.notify_one();
    }
  }
}

}  // namespace lmt::dxf
