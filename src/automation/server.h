// The state of one layomat-automation.exe process: the embedded CAD program
// it plays (one DxfApplication of a chosen host kind), the user who answers
// its picks and prompts from lists a test fills through the application's
// Lmt* members, and the count of automation calls served.
//
// Single-threaded: the server's apartment thread owns all of it.
#ifndef LMT_AUTOMATION_SERVER_H_
#define LMT_AUTOMATION_SERVER_H_

#include <windows.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/program_commands.h"
#include "core/status.h"
#include "host/host_kind.h"
#include "host/object.h"
#include "host/user.h"

namespace lmt::automation {

// Answers from queues; with nothing queued a pick is empty (Enter), a point
// or distance cancelled, a Yes/No box answered Yes and an input box with its
// default text. Messages are kept, never shown: the server has no screen.
class ServerUser : public host::User {
 public:
  void QueuePick(std::vector<std::string> handles) {
    picks_.push_back(std::move(handles));
  }
  void QueuePickCancel() { picks_.push_back(Status::Cancelled("pick")); }
  void QueuePoint(host::Point point) { points_.push_back(point); }
  void QueueDistance(double distance) { distances_.push_back(distance); }
  const std::vector<std::string>& messages() const { return messages_; }

  void ActivateCadWindow(std::string_view) override {}
  void BringToFront() override {}
  void PumpEvents() override {}
  void Wait(std::chrono::milliseconds) override {}
  void SetProgressRange(int32_t) override {}
  void SetProgressValue(int32_t) override {}
  void SetStatusText(std::string_view) override {}
  void ShowProgress(bool) override {}

 protected:
  host::Answer DoShowMessage(const host::Message& message) override;
  std::optional<std::string> DoInputBox(
      std::string_view, std::string_view,
      std::string_view default_text) override {
    return std::string(default_text);
  }
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter&) override;
  Result<host::Point> DoPickPoint(std::string_view,
                                  const std::optional<host::Point>&) override;
  Result<double> DoPickDistance(std::string_view,
                                const std::optional<host::Point>&) override;

 private:
  std::deque<Result<std::vector<std::string>>> picks_;
  std::deque<host::Point> points_;
  std::deque<double> distances_;
  std::vector<std::string> messages_;
};

class Server {
 public:
  // The server thread's id receives WM_QUIT on Quit.
  Server(host::HostKind kind, DWORD thread_id);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  const host::ApplicationPtr& application() const { return application_; }
  ServerUser& user() { return user_; }
  host::HostKind kind() const { return kind_; }

  void CountCall() { ++calls_; }
  int64_t calls() const { return calls_; }
  // Plays a program that is busy now and then: from now on every `every`-th
  // call, and the `tries` - 1 calls after it, are rejected, as a program
  // rejects calls while it runs a command. `every` 0 ends it.
  void SimulateBusy(int32_t every, int32_t tries);
  // Whether this call is to be rejected as busy; counts it.
  bool RejectAsBusy();
  // Plays a program that runs SendCommand strings when it is idle: queued,
  // they run when the caller waits for quiescence (GetAcadState's
  // IsQuiescent) or a few calls later, whichever comes first; not before
  // SendCommand returns.
  void DeferCommands(bool defer) { defer_commands_ = defer; }
  bool defers_commands() const { return defer_commands_; }
  void QueueCommand(std::function<Status()> command);
  // Runs the queued commands when due (always when `waiting`); returns
  // whether any ran.
  bool RunQueuedCommands(bool waiting);

  // Plot.PlotToFile as the program received it; the server draws nothing.
  struct PlotCall {
    std::string layout;  // the active layout, which the programs plot
    std::string file;
    std::string device;
  };
  void RecordPlot(PlotCall call) { plot_calls_.push_back(std::move(call)); }
  const std::vector<PlotCall>& plot_calls() const { return plot_calls_; }
  // Ends the message loop (the object model's Application.Quit).
  void Quit();

  // Application names the client registered (RegisteredApplications.Add),
  // without regard to case: extended data of any other name is refused.
  void RegisterApplication(std::string_view name);
  bool IsRegistered(std::string_view name) const;

  // The commands the Lisp files loaded so far defined.
  LispCommands& lisp_commands() { return lisp_commands_; }

 private:
  host::HostKind kind_;
  DWORD thread_id_;
  ServerUser user_;  // declared before the application, which keeps a pointer
  host::ApplicationPtr application_;
  int64_t calls_ = 0;
  int32_t busy_every_ = 0;
  int32_t busy_tries_ = 0;
  int32_t busy_left_ = 0;
  int64_t busy_counted_ = 0;
  bool defer_commands_ = false;
  std::vector<std::function<Status()>> queued_commands_;
  int calls_since_queued_ = 0;
  std::vector<PlotCall> plot_calls_;
  std::set<std::string> applications_;  // case folded
  LispCommands lisp_commands_;
};

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_SERVER_H_
