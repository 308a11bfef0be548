// The user as the add-in's logic sees it: message boxes, the input box, the
// answers to picks, window focus, event pumping, waits, the progress display
// and the interrupt flag. The Win32 interface implements it with real
// windows; tests use a scripted user (testing/scripted_user.h); the command
// line answers from its options.
//
// Picks belong to the object model (SelectionSet::SelectOnScreen,
// Utility::GetPoint, Utility::GetDistance). A COM host lets the CAD program
// ask; an embedded host (the DXF engine) has no screen and asks this
// interface through the Pick* members instead.
//
// None of these members fails in a way the caller must handle beyond what
// the return value says; nothing throws.
#ifndef LMT_HOST_USER_H_
#define LMT_HOST_USER_H_

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/point.h"
#include "host/selection_filter.h"

namespace lmt::host {

enum class MessageIcon { kQuestion, kCritical, kInformation };
enum class MessageButtons { kOk, kYesNo };
enum class Answer { kOk, kYes, kNo };

// One message box as shown.
struct Message {
  std::string text;
  MessageIcon icon = MessageIcon::kInformation;
  MessageButtons buttons = MessageButtons::kOk;
  // Empty: the product name (the usual title). Some commands title their
  // boxes with the add-in window's title instead and pass it here.
  std::string title;

  bool operator==(const Message&) const = default;
};

class User {
 public:
  User() = default;
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  virtual ~User() = default;

  // A system-modal message box; the add-in's window is made topmost and
  // activated first. Returns kOk for an OK box, kYes or kNo for a Yes/No box.
  Answer ShowMessage(std::string_view text, MessageIcon icon,
                     MessageButtons buttons = MessageButtons::kOk,
                     std::string_view title = {}) {
    return DoShowMessage(
        Message{std::string(text), icon, buttons, std::string(title)});
  }

  // The input box: `prompt`, titled `title`, pre-filled with `default_text`.
  // The text typed (possibly empty), or nullopt when the user cancelled.
  std::optional<std::string> InputBox(std::string_view prompt,
                                      std::string_view title,
                                      std::string_view default_text) {
    return DoInputBox(prompt, title, default_text);
  }

  // Answers of an embedded host's picks. PickEntities gives the handles of
  // the objects picked for SelectOnScreen (the host applies `filter` to
  // them, so picking something the filter refuses selects nothing); an empty
  // vector is an empty pick (Enter); kCancelled when the user cancels.
  Result<std::vector<std::string>> PickEntities(const SelectionFilter& filter) {
    return DoPickEntities(filter);
  }
  // A point (kCancelled on cancel); `base` is the rubber-band origin.
  Result<Point> PickPoint(std::string_view prompt,
                          const std::optional<Point>& base) {
    return DoPickPoint(prompt, base);
  }
  // A distance (kCancelled on cancel), measured from `base` when given.
  Result<double> PickDistance(std::string_view prompt,
                              const std::optional<Point>& base) {
    return DoPickDistance(prompt, base);
  }

  // Activates the CAD program's main window, found by its caption.
  virtual void ActivateCadWindow(std::string_view caption) = 0;
  // Brings the add-in's window back in front of the CAD program without
  // leaving it topmost.
  virtual void BringToFront() = 0;
  // Lets pending window events run once (the stop button among them).
  virtual void PumpEvents() = 0;
  // The fixed pauses after asynchronous host commands.
  virtual void Wait(std::chrono::milliseconds duration) = 0;

  // The progress display: range 0..maximum, current value, status text.
  virtual void SetProgressRange(int32_t maximum) = 0;
  virtual void SetProgressValue(int32_t value) = 0;
  virtual void SetStatusText(std::string_view text) = 0;
  virtual void ShowProgress(bool visible) = 0;

  // The interrupt flag: set by the stop command (while events are pumped),
  // polled by loops between items, cleared when a command starts.
  bool interrupted() const { return interrupted_; }
  void RequestInterrupt() { interrupted_ = true; }
  void ClearInterrupt() { interrupted_ = false; }

 protected:
  virtual Answer DoShowMessage(const Message& message) = 0;
  virtual std::optional<std::string> DoInputBox(
      std::string_view prompt, std::string_view title,
      std::string_view default_text) = 0;
  virtual Result<std::vector<std::string>> DoPickEntities(
      const SelectionFilter& filter) = 0;
  virtual Result<Point> DoPickPoint(std::string_view prompt,
                                    const std::optional<Point>& base) = 0;
  virtual Result<double> DoPickDistance(std::string_view prompt,
                                        const std::optional<Point>& base) = 0;

 private:
  bool interrupted_ = false;
};

}  // namespace lmt::host

#endif  // LMT_HOST_USER_H_
