#include "cli/cli_user.h"

#include <unistd.h>

#include <utility>

namespace lmt::cli {

CliUser::CliUser(const CliOptions& options, std::ostream& err,
                 std::string title, bool progress)
    : options_(options),
      err_(err),
      title_(std::move(title)),
      sink_(err),
      progress_(progress && !options.quiet) {}

void CliUser::QueuePick(std::vector<std::string> handles) {
  picks_.push_back(std::move(handles));
}

void CliUser::QueueTemplatePick() {
  if (options_.template_handle) QueuePick({*options_.template_handle});
}

void CliUser::QueueWindowPick() {
  if (options_.pick_given) QueuePick(options_.pick_handles);
}

void CliUser::QueueSortPolylinePick() {
  if (options_.sort_polyline) QueuePick({*options_.sort_polyline});
}

void CliUser::QueueViewportPick() {
  if (options_.viewport) QueuePick({*options_.viewport});
}

void CliUser::QueuePoint(host::Point point) { points_.push_back(point); }

host::Answer CliUser::DoShowMessage(const host::Message& message) {
  messages_.push_back(message);
  if (holding_ && message.icon == host::MessageIcon::kInformation &&
      message.buttons == host::MessageButtons::kOk) {
    held_.push_back(message);
    return host::Answer::kOk;
  }
  Write(message);
  if (message.buttons == host::MessageButtons::kYesNo) {
    return options_.yes ? host::Answer::kYes : host::Answer::kNo;
  }
  return host::Answer::kOk;
}

void CliUser::Write(const host::Message& message) {
  // --quiet keeps the errors only; a question still gets its answer.
  if (options_.quiet && message.icon != host::MessageIcon::kCritical) return;
  if (progress_visible_) err_ << '\n';  // keep the message off the bar
  sink_.Show(message.title.empty() ? title_ : message.title, message.text,
             core::MessageIcon::kInformation);
}

void CliUser::ReleaseHeldMessages() {
  holding_ = false;
  for (const host::Message& message : held_) Write(message);
  held_.clear();
}

void CliUser::DropHeldMessages() {
  holding_ = false;
  held_.clear();
}

std::optional<std::string> CliUser::DoInputBox(std::string_view,
                                               std::string_view,
                                               std::string_view default_text) {
  return std::string(default_text);
}

Result<std::vector<std::string>> CliUser::DoPickEntities(
    const host::SelectionFilter&) {
  if (picks_.empty()) return std::vector<std::string>{};
  std::vector<std::string> handles = std::move(picks_.front());
  picks_.pop_front();
  return handles;
}

Result<host::Point> CliUser::DoPickPoint(std::string_view,
                                         const std::optional<host::Point>&) {
  if (!points_.empty()) {
    host::Point p = points_.front();
    points_.pop_front();
    return p;
  }
  if (options_.start) return host::Point{options_.start->x, options_.start->y};
  return Status::Cancelled("no point given on the command line");
}

Result<double> CliUser::DoPickDistance(std::string_view,
                                       const std::optional<host::Point>&) {
  return Status::Cancelled("no distance given on the command line");
}

void CliUser::SetProgressRange(int32_t maximum) {
  progress_max_ = maximum;
  progress_drawn_ = -1;
}

void CliUser::SetProgressValue(int32_t value) {
  progress_value_ = value;
  DrawProgress();
}

void CliUser::SetStatusText(std::string_view) {}

void CliUser::ShowProgress(bool visible) {
  if (!progress_) return;
  if (progress_visible_ && !visible) err_ << "\r\033[K" << std::flush;
  progress_visible_ = visible;
  progress_drawn_ = -1;
  DrawProgress();
}

void CliUser::DrawProgress() {
  if (!progress_ || !progress_visible_ || progress_max_ <= 0) return;
  // Redrawn only when the per-mille changes: a search may run over
  // thousands of objects.
  const int32_t per_mille =
      static_cast<int32_t>(1000LL * progress_value_ / progress_max_);
  if (per_mille == progress_drawn_) return;
  progress_drawn_ = per_mille;
  err_ << "\r" << progress_value_ << " / " << progress_max_ << std::flush;
}

bool StderrIsTerminal() { return isatty(STDERR_FILENO) == 1; }

}  // namespace lmt::cli
