// Command_GetMashtabRamka against the embedded host and a scripted user.
#include "layouts/frame_length_pick.h"

#include <gtest/gtest.h>

#include "layouts/creation_test_support.h"

namespace lmt::layouts {
namespace {

struct PickCase {
  const char* name;
  host::HostKind kind;
  double distance;
  std::optional<std::string> answer;  // nullopt: the box is cancelled
  const char* expected;               // the field afterwards
};

class FrameLengthPickTest : public ::testing::TestWithParam<PickCase> {};

TEST_P(FrameLengthPickTest, WritesDistanceOverScale) {
  const PickCase& c = GetParam();
  test::HostRun run(test::TestdataPath("layouts/frames.dxf"), c.kind);
  auto& field = run.windows.okno_sozdat_layout.text_auto_mashtab_ramka;
  field.set_text("999");
  if (c.kind == host::HostKind::kNanoCad) run.user.QueuePoint({0, 0, 0});
  run.user.QueueDistance(c.distance);
  if (c.distance != 0) run.user.QueueInput(c.answer);
  const bool written = GetFrameLengthFromDrawing(run.session);
  EXPECT_EQ(field.text(), c.expected);
  EXPECT_EQ(written, std::string(c.expected) != "999");
  std::vector<std::string> texts = run.user.message_texts();
  ASSERT_FALSE(texts.empty());
  EXPECT_EQ(texts.front(), run.globals.messages.Get(16));
  EXPECT_EQ(texts.back() == "Ok", written);
}

INSTANTIATE_TEST_SUITE_P(
    Picks, FrameLengthPickTest,
    ::testing::Values(
        PickCase{"Scale100", host::HostKind::kAutoCad, 42000, "100", "420"},
        PickCase{"EmptyIsOne", host::HostKind::kAutoCad, 420, "", "420"},
        PickCase{"CancelIsOne", host::HostKind::kZwCad, 297, std::nullopt,
                 "297"},
        PickCase{"NanoCadBasePoint", host::HostKind::kNanoCad, 84000, "200",
                 "420"},
        PickCase{"ZeroDistanceKeeps", host::HostKind::kAutoCad, 0, "1", "999"},
        PickCase{"ZeroScaleKeeps", host::HostKind::kAutoCad, 100, "0", "999"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lmt::layouts
