// FileSink: the bytes of one output file, written in the order given.
//
// The system's copy of written bytes into the page cache costs a good part
// of a save, so once an output proves large (more than `thread_after` bytes
// handed over) the writes move to a thread of their own: the caller formats
// the next buffer while the last one is written. Small outputs never start
// the thread, nor does the last piece of any: it would cost more than it
// saves.
//
// Memory stays bounded: at most kMaxQueued buffers wait for the thread (the
// caller blocks for room), and spans of bytes that outlive the sink (an
// input file's map) are queued without a copy. A failed write is kept, the
// bytes after it are dropped, and Put, PutSpan and Finish report it.
#ifndef LMT_DXF_FILE_SINK_H_
#define LMT_DXF_FILE_SINK_H_

#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace lmt::dxf {

class FileSink {
 public:
  // One write of all `n` bytes at `data`; false when it failed.
  using WriteFn = std::function<bool(const char* data, size_t n)>;

  // A thread costs some 20 us to start and join on an idle machine, and a
  // wait for a core on a busy one; writing 512 KiB costs about 0.15 ms.
  static constexpr size_t kThreadAfter = size_t{512} << 10;
  static constexpr size_t kMaxQueued = 2;

  // Writes with fwrite to `file`, which the caller opens and closes (after
  // Finish).
  explicit FileSink(std::FILE* file);
  explicit FileSink(WriteFn write, size_t thread_after = kThreadAfter);
  FileSink(const FileSink&) = delete;
  FileSink& operator=(const FileSink&) = delete;
  ~FileSink() { Finish(); }

  // Takes *buffer's bytes and leaves it empty, with room reserved (a buffer
  // the thread is done with, when there is one). False once a write failed.
  bool Put(std::string* buffer);
  // Bytes that stay alive and unchanged until Finish returns.
  bool PutSpan(std::string_view bytes);
  // Waits until everything handed over is written, then writes *last (if
  // given; left empty) here: the thread would only add a hand-off. False if
  // a write failed. Pieces handed over later are written at once, here.
  bool Finish(std::string* last = nullptr);

  // Whether the writes went to the thread (for tests and benchmarks).
  bool threaded() const { return started_; }

 private:
  struct Piece {
    std::string owned;      // a buffer handed over (is_buffer)
    std::string_view span;  // else the bytes to write
    bool is_buffer = false;
  };

  // True when `bytes` more should go to the thread (started if need be).
  bool UseThread(size_t bytes);
  bool WriteHere(std::string_view bytes);
  // No write failed so far.
  bool Ok();
  void Run();

  WriteFn write_;
  size_t thread_after_;
  size_t handed_ = 0;
  bool started_ = false;
  bool finished_ = false;
  std::thread thread_;

  std::mutex mu_;
  std::condition_variable work_;  // the thread waits for pieces
  std::condition_variable room_;  // Put waits for a buffer to come back
  std::deque<Piece> queue_;
  std::vector<std::string> spare_;
  size_t buffers_out_ = 0;  // queued or being written
  bool idle_ = false;       // the thread waits on work_
  bool closing_ = false;
  bool failed_ = false;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_FILE_SINK_H_
