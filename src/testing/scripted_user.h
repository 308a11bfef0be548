// A user that answers from queues, for tests. Every Yes/No message box, input
// box, pick, point and distance takes the next queued answer of its kind; a
// prompt with nothing queued is a test failure (ADD_FAILURE), never a silent
// default, and is then answered as cancelled (No for a Yes/No box). OK boxes
// need no answer. Everything the add-in shows or asks is recorded, in one
// ordered event log and per kind, for the test to check; answers left unused
// when the user is destroyed fail the test too (unless allowed).
#ifndef LMT_TESTING_SCRIPTED_USER_H_
#define LMT_TESTING_SCRIPTED_USER_H_

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/point.h"
#include "host/selection_filter.h"
#include "host/user.h"

namespace lmt::testing {

class ScriptedUser : public host::User {
 public:
  ScriptedUser() = default;
  ~ScriptedUser() override;

  // --- Answers, consumed in order per kind.
  void QueueAnswer(host::Answer answer);             // for Yes/No boxes
  void QueueInput(std::optional<std::string> text);  // nullopt: cancel
  // Handles of the objects picked by the next SelectOnScreen; empty: Enter.
  void QueuePick(std::vector<std::string> handles);
  void QueuePickCancel();
  void QueuePoint(host::Point point);
  void QueuePointCancel();
  void QueueDistance(double distance);
  void QueueDistanceCancel();
  // Do not fail the test for answers left in the queues.
  void AllowUnusedAnswers() { allow_unused_ = true; }

  // --- What happened.
  // One entry per call, in order: "message <text>", "input <prompt>",
  // "pick", "point <prompt>", "distance <prompt>", "activate <caption>",
  // "front", "pump", "wait <ms>", "progress-range <n>", "progress <n>",
  // "status <text>", "progress-shown <0|1>".
  const std::vector<std::string>& events() const { return events_; }
  const std::vector<host::Message>& messages() const { return messages_; }
  std::vector<std::string> message_texts() const;
  const std::vector<host::SelectionFilter>& pick_filters() const {
    return pick_filters_;
  }
  const std::vector<std::string>& activated_captions() const {
    return activated_captions_;
  }
  int bring_to_front_count() const { return bring_to_front_count_; }
  int pump_count() const { return pump_count_; }
  std::chrono::milliseconds total_wait() const { return total_wait_; }
  const std::vector<std::string>& status_texts() const { return status_texts_; }
  int32_t progress_maximum() const { return progress_maximum_; }
  int32_t progress_value() const { return progress_value_; }
  bool progress_visible() const { return progress_visible_; }

  // host::User
  void ActivateCadWindow(std::string_view caption) override;
  void BringToFront() override;
  void PumpEvents() override;
  void Wait(std::chrono::milliseconds duration) override;
  void SetProgressRange(int32_t maximum) override;
  void SetProgressValue(int32_t value) override;
  void SetStatusText(std::string_view text) override;
  void ShowProgress(bool visible) override;

 protected:
  host::Answer DoShowMessage(const host::Message& message) override;
  std::optional<std::string> DoInputBox(std::string_view prompt,
                                        std::string_view title,
                                        std::string_view default_text) override;
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter& filter) override;
  Result<host::Point> DoPickPoint(
      std::string_view prompt, const std::optional<host::Point>& base) override;
  Result<double> DoPickDistance(
      std::string_view prompt, const std::optional<host::Point>& base) override;

 private:
  std::deque<host::Answer> answers_;
  std::deque<std::optional<std::string>> inputs_;
  std::deque<Result<std::vector<std::string>>> picks_;
  std::deque<Result<host::Point>> points_;
  std::deque<Result<double>> distances_;
  bool allow_unused_ = false;

  std::vector<std::string> events_;
  std::vector<host::Message> messages_;
  std::vector<host::SelectionFilter> pick_filters_;
  std::vector<std::string> activated_captions_;
  std::vector<std::string> status_texts_;
  int bring_to_front_count_ = 0;
  int pump_count_ = 0;
  std::chrono::milliseconds total_wait_{0};
  int32_t progress_maximum_ = 0;
  int32_t progress_value_ = 0;
  bool progress_visible_ = false;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_SCRIPTED_USER_H_
