#include "testing/scripted_user.h"

#include <gtest/gtest.h>

#include <utility>

namespace lmt::testing {
namespace {

Status Cancel() { return Status::Cancelled("cancelled by the scripted user"); }

}  // namespace

ScriptedUser::~ScriptedUser() {
  if (allow_unused_) return;
  EXPECT_TRUE(answers_.empty()) << answers_.size() << " Yes/No answers unused";
  EXPECT_TRUE(inputs_.empty()) << inputs_.size() << " input answers unused";
  EXPECT_TRUE(picks_.empty()) << picks_.size() << " picks unused";
  EXPECT_TRUE(points_.empty()) << points_.size() << " points unused";
  EXPECT_TRUE(distances_.empty()) << distances_.size() << " distances unused";
}

void ScriptedUser::QueueAnswer(host::Answer answer) {
  answers_.push_back(answer);
}
void ScriptedUser::QueueInput(std::optional<std::string> text) {
  inputs_.push_back(std::move(text));
}
void ScriptedUser::QueuePick(std::vector<std::string> handles) {
  picks_.emplace_back(std::move(handles));
}
void ScriptedUser::QueuePickCancel() { picks_.emplace_back(Cancel()); }
void ScriptedUser::QueuePoint(host::Point point) {
  points_.emplace_back(point);
}
void ScriptedUser::QueuePointCancel() { points_.emplace_back(Cancel()); }
void ScriptedUser::QueueDistance(double distance) {
  distances_.emplace_back(distance);
}
void ScriptedUser::QueueDistanceCancel() { distances_.emplace_back(Cancel()); }

std::vector<std::string> ScriptedUser::message_texts() const {
  std::vector<std::string> texts;
  for (const host::Message& m : messages_) texts.push_back(m.text);
  return texts;
}

void ScriptedUser::ActivateCadWindow(std::string_view caption) {
  events_.push_back("activate " + std::string(caption));
  activated_captions_.emplace_back(caption);
}

void ScriptedUser::BringToFront() {
  events_.push_back("front");
  ++bring_to_front_count_;
}

void ScriptedUser::PumpEvents() {
  events_.push_back("pump");
  ++pump_count_;
}

void ScriptedUser::Wait(std::chrono::milliseconds duration) {
  events_.push_back("wait " + std::to_string(duration.count()));
  total_wait_ += duration;
}

void ScriptedUser::SetProgressRange(int32_t maximum) {
  events_.push_back("progress-range " + std::to_string(maximum));
  progress_maximum_ = maximum;
}

void ScriptedUser::SetProgressValue(int32_t value) {
  events_.push_back("progress " + std::to_string(value));
  progress_value_ = value;
}

void ScriptedUser::SetStatusText(std::string_view text) {
  events_.push_back("status " + std::string(text));
  status_texts_.emplace_back(text);
}

void ScriptedUser::ShowProgress(bool visible) {
  events_.push_back(std::string("progress-shown ") + (visible ? "1" : "0"));
  progress_visible_ = visible;
}

host::Answer ScriptedUser::DoShowMessage(const host::Message& message) {
  events_.push_back("message " + message.text);
  messages_.push_back(message);
  if (message.buttons == host::MessageButtons::kOk) return host::Answer::kOk;
  if (answers_.empty()) {
    ADD_FAILURE() << "unexpected Yes/No question: " << message.text;
    return host::Answer::kNo;
  }
  host::Answer answer = answers_.front();
  answers_.pop_front();
  return answer;
}

std::optional<std::string> ScriptedUser::DoInputBox(
    std::string_view prompt, std::string_view /*title*/,
    std::string_view /*default_text*/) {
  events_.push_back("input " + std::string(prompt));
  if (inputs_.empty()) {
    ADD_FAILURE() << "unexpected input box: " << prompt;
    return std::nullopt;
  }
  std::optional<std::string> text = std::move(inputs_.front());
  inputs_.pop_front();
  return text;
}

Result<std::vector<std::string>> ScriptedUser::DoPickEntities(
    const host::SelectionFilter& filter) {
  events_.push_back("pick");
  pick_filters_.push_back(filter);
  if (picks_.empty()) {
    ADD_FAILURE() << "unexpected pick on screen";
    return Cancel();
  }
  Result<std::vector<std::string>> pick = std::move(picks_.front());
  picks_.pop_front();
  return pick;
}

Result<host::Point> ScriptedUser::DoPickPoint(
    std::string_view prompt, const std::optional<host::Point>& /*base*/) {
  events_.push_back("point " + std::string(prompt));
  if (points_.empty()) {
    ADD_FAILURE() << "unexpected point prompt: " << prompt;
    return Cancel();
  }
  Result<host::Point> point = points_.front();
  points_.pop_front();
  return point;
}

Result<double> ScriptedUser::DoPickDistance(
    std::string_view prompt, const std::optional<host::Point>& /*base*/) {
  events_.push_back("distance " + std::string(prompt));
  if (distances_.empty()) {
    ADD_FAILURE() << "unexpected distance prompt: " << prompt;
    return Cancel();
  }
  Result<double> distance = distances_.front();
  distances_.pop_front();
  return distance;
}

}  // namespace lmt::testing
