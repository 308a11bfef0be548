#include "automation/server.h"

#include "core/text_case.h"
#include "dxfhost/application.h"

namespace lmt::automation {

host::Answer ServerUser::DoShowMessage(const host::Message& message) {
  messages_.push_back(message.text);
  return message.buttons == host::MessageButtons::kYesNo ? host::Answer::kYes
                                                         : host::Answer::kOk;
}

Result<std::vector<std::string>> ServerUser::DoPickEntities(
    const host::SelectionFilter&) {
  if (picks_.empty()) return std::vector<std::string>();
  Result<std::vector<std::string>> pick = std::move(picks_.front());
  picks_.pop_front();
  return pick;
}

Result<host::Point> ServerUser::DoPickPoint(std::string_view,
                                            const std::optional<host::Point>&) {
  if (points_.empty()) return Status::Cancelled("no point given");
  host::Point p = points_.front();
  points_.pop_front();
  return p;
}

Result<double> ServerUser::DoPickDistance(std::string_view,
                                          const std::optional<host::Point>&) {
  if (distances_.empty()) return Status::Cancelled("no distance given");
  double d = distances_.front();
  distances_.pop_front();
  return d;
}

Server::Server(host::HostKind kind, DWORD thread_id)
    : kind_(kind), thread_id_(thread_id) {
  std::shared_ptr<dxfhost::DxfApplication> app =
      dxfhost::DxfApplication::Create(kind, &user_);
  // Plots are recorded, not drawn: a test checks what the add-in asked for.
  app->set_plotter([this](dxf::Document&, std::string_view layout,
                          const std::string& path, std::string_view device) {
    RecordPlot({std::string(layout), path, std::string(device)});
    return Status();
  });
  application_ = std::move(app);
}

void Server::Quit() { PostThreadMessageW(thread_id_, WM_QUIT, 0, 0); }

void Server::RegisterApplication(std::string_view name) {
  applications_.insert(core::FoldText(name));
}

bool Server::IsRegistered(std::string_view name) const {
  return applications_.contains(core::FoldText(name));
}

void Server::SimulateBusy(int32_t every, int32_t tries) {
  busy_every_ = every > 0 ? every : 0;
  busy_tries_ = tries > 0 ? tries : 1;
  busy_left_ = 0;
  busy_counted_ = 0;
}

void Server::QueueCommand(std::function<Status()> command) {
  if (queued_commands_.empty()) calls_since_queued_ = 0;
  queued_commands_.push_back(std::move(command));
}

bool Server::RunQueuedCommands(bool waiting) {
  // An idle program gets to its command line soon, if not at once.
  constexpr int kCallsUntilIdle = 10;
  if (queued_commands_.empty()) return false;
  if (!waiting && ++calls_since_queued_ < kCallsUntilIdle) return false;
  std::vector<std::function<Status()>> due;
  due.swap(queued_commands_);
  // A command that fails does so in the program, where nobody waits for it.
  for (auto& command : due) command().IgnoreError();
  return true;
}

bool Server::RejectAsBusy() {
  if (busy_every_ == 0) return false;
  if (busy_left_ > 0) {
    --busy_left_;
    return true;
  }
  if (++busy_counted_ % busy_every_ != 0) return false;
  busy_left_ = busy_tries_ - 1;
  return true;
}

}  // namespace lmt::automation
