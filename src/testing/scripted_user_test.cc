#include "testing/scripted_user.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace lmt::testing {
namespace {

using host::Answer;
using host::MessageButtons;
using host::MessageIcon;

TEST(ScriptedUserTest, AnswersQuestionsInOrderAndOkBoxesByItself) {
  ScriptedUser user;
  user.QueueAnswer(Answer::kYes);
  user.QueueAnswer(Answer::kNo);

  EXPECT_EQ(user.ShowMessage("info", MessageIcon::kInformation), Answer::kOk);
  EXPECT_EQ(
      user.ShowMessage("q1", MessageIcon::kQuestion, MessageButtons::kYesNo),
      Answer::kYes);
  EXPECT_EQ(user.ShowMessage("q2", MessageIcon::kQuestion,
                             MessageButtons::kYesNo, "Title"),
            Answer::kNo);

  EXPECT_EQ(user.message_texts(),
            (std::vector<std::string>{"info", "q1", "q2"}));
  EXPECT_EQ(user.messages()[2].title, "Title");
}

TEST(ScriptedUserTest, UnexpectedPromptsFailTheTest) {
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedUser user;
        EXPECT_EQ(user.ShowMessage("Open?", MessageIcon::kQuestion,
                                   MessageButtons::kYesNo),
                  Answer::kNo);
      },
      "unexpected Yes/No question: Open?");
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedUser user;
        EXPECT_EQ(
            user.PickPoint("Enter Start point: ", std::nullopt).status().code(),
            StatusCode::kCancelled);
      },
      "unexpected point prompt");
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedUser user;
        EXPECT_FALSE(user.InputBox("Scale", "T", "1").has_value());
      },
      "unexpected input box");
}

TEST(ScriptedUserTest, UnusedAnswersFailTheTest) {
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedUser user;
        user.QueueDistance(42000);
      },
      "distances unused");
}

TEST(ScriptedUserTest, PicksPointsDistancesAndCancels) {
  ScriptedUser user;
  user.QueuePick({"2A", "2B"});
  user.QueuePickCancel();
  user.QueuePoint({1, 2, 0});
  user.QueueDistanceCancel();
  user.QueueInput(std::string("100"));
  user.QueueInput(std::nullopt);

  host::SelectionFilter filter;
  filter.Add(0, std::string("VIEWPORT"));
  EXPECT_EQ(user.PickEntities(filter).value(),
            (std::vector<std::string>{"2A", "2B"}));
  EXPECT_EQ(user.PickEntities(filter).status().code(), StatusCode::kCancelled);
  EXPECT_EQ(user.PickPoint("p", std::nullopt).value(), (host::Point{1, 2, 0}));
  EXPECT_FALSE(user.PickDistance("d", std::nullopt).ok());
  EXPECT_EQ(user.InputBox("Scale", "T", "1"), "100");
  EXPECT_EQ(user.InputBox("Scale", "T", "1"), std::nullopt);
  EXPECT_EQ(user.pick_filters().size(), 2u);
  EXPECT_EQ(user.pick_filters()[0], filter);
}

TEST(ScriptedUserTest, RecordsWindowAndProgressEventsInOrder) {
  ScriptedUser user;
  user.ActivateCadWindow("CAD");
  user.SetProgressRange(3);
  user.SetProgressValue(1);
  user.SetStatusText("working");
  user.Wait(std::chrono::milliseconds(1000));
  user.BringToFront();

  EXPECT_EQ(user.events(), (std::vector<std::string>{
                               "activate CAD", "progress-range 3", "progress 1",
                               "status working", "wait 1000", "front"}));
  EXPECT_EQ(user.total_wait(), std::chrono::milliseconds(1000));
}

}  // namespace
}  // namespace lmt::testing
