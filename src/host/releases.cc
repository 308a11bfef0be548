#include "host/releases.h"

#include <array>

namespace lmt::host {
namespace {

constexpr std::array<Release, 10> kReleases = {{
    {"R12", "AC1009", std::nullopt, 1},
    {"R13", "AC1012", 4, 5},
    {"R14", "AC1014", 8, 9},
    {"2000", "AC1015", 12, 13},
    {"2004", "AC1018", 24, 25},
    {"2007", "AC1021", 36, 37},
    {"2010", "AC1024", 48, 49},
    {"2013", "AC1027", 60, 61},
    {"2018", "AC1032", 64, 65},
    {"2021", "AC1032", 70, 71},
}};

}  // namespace

std::span<const Release> Releases() { return kReleases; }

const Release* FindReleaseByAcadver(std::string_view acadver) {
  for (const Release& release : kReleases) {
    if (release.acadver == acadver) return &release;
  }
  return nullptr;
}

std::optional<SaveTypeMatch> FindSaveType(int32_t save_type) {
  for (const Release& release : kReleases) {
    if (release.dxf_save_type == save_type)
      return SaveTypeMatch{&release, true};
    if (release.dwg_save_type == save_type) {
      return SaveTypeMatch{&release, false};
    }
  }
  return std::nullopt;
}

}  // namespace lmt::host
