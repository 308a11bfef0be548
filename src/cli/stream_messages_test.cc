#include "cli/stream_messages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace lmt::cli {
namespace {

TEST(StreamMessageSinkTest, OneLinePerMessage) {
  std::ostringstream out;
  StreamMessageSink sink(out);
  sink.Show("Лайомат", "CAD программа не открыта !\r\n\r\nОткрыть ?",
            core::MessageIcon::kQuestion);
  sink.Show("Layomat", "a\nb", core::MessageIcon::kInformation);
  EXPECT_EQ(out.str(),
            "Лайомат: CAD программа не открыта !  Открыть ?\n"
            "Layomat: a b\n");
}

}  // namespace
}  // namespace lmt::cli
