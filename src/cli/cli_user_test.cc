#include "cli/cli_user.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/frame_output.h"

namespace lmt::cli {
namespace {

TEST(CliUserTest, AnswersFromTheOptions) {
  CliOptions options;
  options.template_handle = "94";
  options.pick_given = true;
  options.pick_handles = {"A", "B"};
  options.start = Point2{1.5, -2};
  std::ostringstream err;
  CliUser user(options, err, "Layomat", /*progress=*/false);
  user.QueueWindowPick();
  user.QueueTemplatePick();
  user.QueueSortPolylinePick();  // not given: queues nothing
  EXPECT_EQ(*user.PickEntities({}), (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(*user.PickEntities({}), std::vector<std::string>{"94"});
  EXPECT_TRUE(user.PickEntities({})->empty());  // Enter
  EXPECT_EQ(*user.PickPoint("p", std::nullopt), (host::Point{1.5, -2, 0}));
  EXPECT_FALSE(user.PickDistance("d", std::nullopt).ok());

  EXPECT_EQ(user.ShowMessage("Start?", host::MessageIcon::kQuestion,
                             host::MessageButtons::kYesNo),
            host::Answer::kNo);
  options.yes = true;
  EXPECT_EQ(user.ShowMessage("Two\r\nlines", host::MessageIcon::kCritical,
                             host::MessageButtons::kYesNo, "Other"),
            host::Answer::kYes);
  EXPECT_EQ(err.str(), "Layomat: Start?\nOther: Two lines\n");
}

TEST(CliUserTest, NoStartPointIsACancel) {
  CliOptions options;
  std::ostringstream err;
  CliUser user(options, err, "Layomat", false);
  EXPECT_EQ(user.PickPoint("p", std::nullopt).status().code(),
            StatusCode::kCancelled);
}

TEST(CliUserTest, HeldSuccessWaitsForReleaseAndGoesWithDrop) {
  CliOptions options;
  for (bool release : {true, false}) {
    SCOPED_TRACE(release);
    std::ostringstream err;
    CliUser user(options, err, "Layomat", false);
    user.HoldSuccessMessages();
    user.ShowMessage("Done", host::MessageIcon::kInformation);
    user.ShowMessage("Bad", host::MessageIcon::kCritical);
    user.ShowMessage("Go on?", host::MessageIcon::kInformation,
                     host::MessageButtons::kYesNo);
    // Only the success waits; refusals and questions are written at once.
    EXPECT_EQ(err.str(), "Layomat: Bad\nLayomat: Go on?\n");
    EXPECT_EQ(user.messages().size(), 3u);
    if (release) {
      user.ReleaseHeldMessages();
      EXPECT_EQ(err.str(), "Layomat: Bad\nLayomat: Go on?\nLayomat: Done\n");
    } else {
      user.DropHeldMessages();
      EXPECT_EQ(err.str(), "Layomat: Bad\nLayomat: Go on?\n");
    }
    // Holding has ended either way.
    user.ShowMessage("Later", host::MessageIcon::kInformation);
    EXPECT_NE(err.str().find("Layomat: Later\n"), std::string::npos);
  }
}

TEST(FrameOutputTest, JsonStringEscapes) {
  EXPECT_EQ(JsonString("a\"b\\c\n\x01№"), "\"a\\\"b\\\\c\\n\\u0001№\"");
}

}  // namespace
}  // namespace lmt::cli
