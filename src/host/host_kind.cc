#include "host/host_kind.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <system_error>

#include "core/check.h"

namespace lmt::host {
namespace {

constexpr std::array<AutoCadRelease, 14> kReleases = {{
    {"09", "AutoCAD.Application.17.2"},
    {"10", "AutoCAD.Application.18"},
    {"11", "AutoCAD.Application.18.1"},
    {"12", "AutoCAD.Application.18.2"},
    {"13", "AutoCAD.Application.19"},
    {"14", "AutoCAD.Application.19.1"},
    {"15", "AutoCAD.Application.20"},
    {"16", "AutoCAD.Application.20.1"},
    {"17", "AutoCAD.Application.21"},
    {"18", "AutoCAD.Application.22"},
    {"19", "AutoCAD.Application.23"},
    {"20", "AutoCAD.Application.24"},
    {"21", "AutoCAD.Application.25"},
    {"22", "AutoCAD.Application.26"},
}};

struct YearEntry {
  std::string_view prefix;
  double year;
};

constexpr std::array<YearEntry, 14> kYears = {{
    {"17.2", 2009},
    {"18.0", 2010},
    {"18.1", 2011},
    {"18.2", 2012},
    {"19.0", 2013},
    {"19.1", 2014},
    {"20.0", 2015},
    {"20.1", 2016},
    {"21.0", 2017},
    {"22.0", 2018},
    {"23.0", 2019},
    {"24.0", 2020},
    {"25.0", 2021},
    {"26.0", 2022},
}};

// The longest prefix of `text` that reads as a decimal number with at most
// one point ("23.0.6360" reads as 23.0), as a late-bound Val() does.
std::optional<double> LeadingNumber(std::string_view text) {
  size_t end = 0;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  if (end == 0) return std::nullopt;
  if (end < text.size() && text[end] == '.') {
    size_t frac = end + 1;
    while (frac < text.size() && text[frac] >= '0' && text[frac] <= '9') {
      ++frac;
    }
    if (frac > end + 1) end = frac;
  }
  double value = 0;
  std::from_chars(text.data(), text.data() + end, value);
  return value;
}

// A number as text in the shortest form that reads back the same ("23",
// "5.1"), as the number's text is tested.
std::string NumberText(double value) {
  char buffer[64];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  LMT_CHECK(ec == std::errc());
  return std::string(buffer, end);
}

bool SameLetter(char a, char b) {
  auto lower = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  };
  return lower(a) == lower(b);
}

}  // namespace

bool HostNameIs(std::string_view host_name, std::string_view name) {
  return std::ranges::equal(host_name, name, SameLetter);
}

bool HostNameContains(std::string_view host_name, std::string_view part) {
  return !std::ranges::search(host_name, part, SameLetter).empty() ||
         part.empty();
}

std::optional<HostKind> HostKindFromIndex(int index) {
  if (index < 0 || index >= kHostKindCount) return std::nullopt;
  return static_cast<HostKind>(index);
}

std::string_view HostKindName(HostKind kind) {
  switch (kind) {
    case HostKind::kAutoCad:
      return kAutoCadName;
    case HostKind::kNanoCad:
      return kNanoCadName;
    case HostKind::kZwCad:
      return kZwCadName;
    case HostKind::kBricsCad:
      return kBricsCadName;
    case HostKind::kGstarCad:
      return kGstarCadName;
    case HostKind::kProgeCad:
      return kProgeCadName;
    case HostKind::kIntelliCad:
      return kIntelliCadName;
  }
  LMT_CHECK(false);
}

std::string_view HostProgramId(HostKind kind) {
  switch (kind) {
    case HostKind::kAutoCad:
      return kAutoCadProgramId;
    case HostKind::kNanoCad:
      return "nanoCAD.Application";
    case HostKind::kZwCad:
      return "ZWCAD.Application";
    case HostKind::kBricsCad:
      return "BricscadApp.AcadApplication";
    case HostKind::kGstarCad:
      return "GCAD.Application";
    case HostKind::kProgeCad:
    case HostKind::kIntelliCad:
      return "Icad.Application";
  }
  LMT_CHECK(false);
}

std::span<const AutoCadRelease> AutoCadReleases() { return kReleases; }

std::optional<std::string_view> AutoCadReleaseProgramId(
    std::string_view list_text) {
  if (list_text.empty() || list_text == "Auto") return kAutoCadProgramId;
  for (const AutoCadRelease& release : kReleases) {
    if (release.list_text == list_text) return release.program_id;
  }
  return std::nullopt;
}

double AutoCadYear(std::string_view version) {
  std::string_view prefix = version.substr(0, 4);
  for (const YearEntry& entry : kYears) {
    if (entry.prefix == prefix) return entry.year;
  }
  return kNewestYear;
}

double NanoCadYear(std::string_view version) {
  std::optional<double> number = LeadingNumber(version);
  if (!number) return kNewestYear;
  if (NumberText(*number).find("5.1") != std::string::npos) return 5.1;
  // The leading number stops at the second point: it is major.minor already.
  return *number;
}

}  // namespace lmt::host
