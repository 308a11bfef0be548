#include "cli/run_report.h"

#include <charconv>
#include <cmath>

#include "cli/frame_output.h"

namespace lmt::cli {

void RunReport::SetTotal(std::string_view name, int64_t value) {
  for (auto& [total, count] : totals_) {
    if (total == name) {
      count = value;
      return;
    }
  }
  totals_.emplace_back(std::string(name), value);
}

int64_t RunReport::Total(std::string_view name) const {
  for (const auto& [total, count] : totals_) {
    if (total == name) return count;
  }
  return 0;
}

void RunReport::WriteJson(std::ostream& out, int status) const {
  out << "{\"command\": " << JsonString(command_) << ", \"status\": " << status
      << ",\n \"items\": [";
  for (size_t i = 0; i < items_.size(); ++i) {
    const ReportItem& item = items_[i];
    out << (i ? ",\n  {" : "\n  {") << "\"kind\": " << JsonString(item.kind)
        << ", \"name\": " << JsonString(item.name)
        << ", \"result\": " << JsonString(item.result);
    if (!item.reason.empty()) {
      out << ", \"reason\": " << JsonString(item.reason);
    }
    for (const auto& [name, value] : item.fields) {
      out << ", " << JsonString(name) << ": " << value;
    }
    out << "}";
  }
  out << (items_.empty() ? "]" : "\n ]") << ",\n \"totals\": {";
  for (size_t i = 0; i < totals_.size(); ++i) {
    out << (i ? ", " : "") << JsonString(totals_[i].first) << ": "
        << totals_[i].second;
  }
  out << "},\n \"outputs\": [";
  for (size_t i = 0; i < outputs_.size(); ++i) {
    out << (i ? ", " : "") << JsonString(outputs_[i]);
  }
  out << "],\n \"warnings\": [";
  for (size_t i = 0; i < warnings_.size(); ++i) {
    out << (i ? ",\n  " : "\n  ") << JsonString(warnings_[i]);
  }
  out << (warnings_.empty() ? "]}\n" : "\n ]}\n");
}

std::string JsonNumber(double value) {
  if (!std::isfinite(value)) return "null";
  if (value == 0) return "0";  // also -0, which JSON readers keep as -0.0
  char buf[32];
  const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
  return ec == std::errc() ? std::string(buf, end) : "null";
}

void AddSkips(RunReport& report, std::string_view kind,
              const host::SkipLog& skips) {
  for (const host::Skip& skip : skips.skips()) {
    report.Add({std::string(kind),
                skip.object,
                std::string(kSkipped),
                skip.step + ": " + skip.status.message(),
                {},
                ""});
  }
}

void WriteSkip(const host::Skip& skip, std::ostream& err) {
  err << "layomat: ";
  if (!skip.object.empty()) err << skip.object << ": ";
  err << skip.step << ": " << skip.status.message() << "\n";
}

void WriteSkips(const host::SkipLog& skips, std::ostream& err) {
  for (const host::Skip& skip : skips.skips()) WriteSkip(skip, err);
}

void WriteItemsText(const RunReport& report, std::ostream& out) {
  for (const ReportItem& item : report.items()) {
    out << item.result << "\t" << item.kind << "\t" << item.name;
    if (!item.reason.empty()) out << "\t" << item.reason;
    if (!item.detail.empty()) out << "\t" << item.detail;
    out << "\n";
  }
}

int FinishReport(CommandContext& context, const RunReport& report, int status) {
  if (context.options.json) report.WriteJson(context.out, status);
  return status;
}

}  // namespace lmt::cli
