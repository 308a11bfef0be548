#include "dxf/file_sink.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace lmt::dxf {
namespace {

// Buffers and spans of assorted sizes, some empty; `expected` gets what a
// sink must write for them, in order.
struct Feed {
  std::vector<std::string> spans;  // alive until the sink finished
  std::string expected;

  // Hands the pieces to `sink` through one reused buffer, as TagWriter does.
  // False as soon as the sink reports a failure.
  bool Into(FileSink& sink) {
    // A short string keeps its bytes inside: moved, they move too.
    std::string tiny = "ab";
    expected += tiny;
    if (!sink.Put(&tiny)) return false;
    std::string buffer;
    for (int i = 0; i < 60; ++i) {
      const size_t n = static_cast<size_t>(i * 7919 % 70000);
      buffer.assign(n, static_cast<char>('a' + i % 26));
      if (!buffer.empty()) buffer.back() = '\n';  // catches split pieces
      expected += buffer;
      if (!sink.Put(&buffer)) return false;
      EXPECT_TRUE(buffer.empty());
      if (i % 3 == 0) {
        spans.push_back(std::string(n / 2, static_cast<char>('A' + i % 26)));
        expected += spans.back();
        if (!sink.PutSpan(spans.back())) return false;
      }
    }
    return true;
  }
};

TEST(FileSinkTest, WritesEveryPieceInOrderWithOrWithoutTheThread) {
  for (size_t thread_after : {size_t{0}, size_t{100000}, size_t{1} << 30}) {
    std::string written;
    int calls_off_thread = 0;
    const auto caller = std::this_thread::get_id();
    FileSink sink(
        [&](const char* data, size_t n) {
          written.append(data, n);
          if (std::this_thread::get_id() != caller) ++calls_off_thread;
          return true;
        },
        thread_after);
    Feed feed;
    ASSERT_TRUE(feed.Into(sink));
    std::string last = "last";
    EXPECT_TRUE(sink.Finish(&last));
    EXPECT_TRUE(last.empty());
    EXPECT_EQ(written, feed.expected + "last")
        << "thread after " << thread_after;
    const bool threaded = thread_after < feed.expected.size();
    EXPECT_EQ(sink.threaded(), threaded);
    EXPECT_EQ(calls_off_thread > 0, threaded);
    // After Finish, pieces are written at once, here.
    std::string tail = "tail";
    EXPECT_TRUE(sink.Put(&tail));
    EXPECT_EQ(written.substr(written.size() - 4), "tail");
  }
}

TEST(FileSinkTest, AnOutputHandedOverOnlyAtTheEndStartsNoThread) {
  std::string written;
  FileSink sink(
      [&](const char* data, size_t n) {
        written.append(data, n);
        return true;
      },
      0);
  std::string all(size_t{3} << 20, 'x');
  EXPECT_TRUE(sink.Finish(&all));
  EXPECT_FALSE(sink.threaded());
  EXPECT_EQ(written.size(), size_t{3} << 20);
}

TEST(FileSinkTest, AFailedWriteReachesTheCallerAndStopsTheWrites) {
  for (size_t thread_after : {size_t{0}, size_t{1} << 30}) {
    int calls = 0;
    int calls_after_failure = 0;
    FileSink sink(
        [&](const char*, size_t) {
          ++calls;
          if (calls > 3) ++calls_after_failure;
          return calls != 3;
        },
        thread_after);
    // The caller goes on handing pieces over (no deadlock once the writes
    // stop) and hears of the failure by the end.
    Feed feed;
    feed.Into(sink);
    EXPECT_FALSE(sink.Finish()) << "thread after " << thread_after;
    EXPECT_FALSE(sink.Finish());
    EXPECT_EQ(calls_after_failure, 0);
    std::string more = "more";
    EXPECT_FALSE(sink.Put(&more));
    EXPECT_FALSE(sink.PutSpan("more"));
  }
}

TEST(FileSinkTest, DestroyingAnUnfinishedSinkWritesWhatWasQueued) {
  std::string written;
  Feed feed;  // declared first: its spans outlive the sink's thread
  {
    FileSink sink(
        [&](const char* data, size_t n) {
          written.append(data, n);
          return true;
        },
        0);
    ASSERT_TRUE(feed.Into(sink));
  }
  EXPECT_EQ(written, feed.expected);
}

TEST(FileSinkTest, ASlowWriterHoldsBackTheCallerInsteadOfBuffering) {
  std::set<const char*> buffers;
  FileSink sink(
      [&](const char* data, size_t) {
        buffers.insert(data);
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        return true;
      },
      0);
  std::string buffer;
  buffer.reserve(4096);
  for (int i = 0; i < 200; ++i) {
    buffer.assign(4000, 'x');
    ASSERT_TRUE(sink.Put(&buffer));
    EXPECT_GE(buffer.capacity(), 4000u);
  }
  ASSERT_TRUE(sink.Finish());
  // The one being filled and those queued, reused over and over.
  EXPECT_LE(buffers.size(), FileSink::kMaxQueued + 1);
}

}  // namespace
}  // namespace lmt::dxf
