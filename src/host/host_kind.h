// The host kinds the add-in serves, as the main window's host list
// (Combo_VersiaCAD) numbers them, with the host names other code compares
// against (without regard to case) and the program identifiers under which
// each program registers for automation; the AutoCAD release list
// (Combo_NomerAutoCAD) with its release-specific identifiers; and the release
// years recorded in the connection state.
#ifndef LMT_HOST_HOST_KIND_H_
#define LMT_HOST_HOST_KIND_H_

#include <optional>
#include <span>
#include <string_view>

namespace lmt::host {

// The index of the host list is the value.
enum class HostKind : int {
  kAutoCad = 0,
  kNanoCad = 1,
  kZwCad = 2,
  kBricsCad = 3,
  kGstarCad = 4,
  kProgeCad = 5,
  kIntelliCad = 6,
};
inline constexpr int kHostKindCount = 7;

// Host names as the connection records them.
inline constexpr std::string_view kAutoCadName = "AutoCAD";
inline constexpr std::string_view kNanoCadName = "NanoCAD";
inline constexpr std::string_view kZwCadName = "ZWCAD";
inline constexpr std::string_view kZwCadPlusName = "ZWCAD+";
inline constexpr std::string_view kBricsCadName = "BricsCAD";
inline constexpr std::string_view kGstarCadName = "GstarCAD";
inline constexpr std::string_view kProgeCadName = "ProgeCAD";
inline constexpr std::string_view kIntelliCadName = "IntelliCAD";

// Host names compare without regard to case everywhere: HostNameIs for the
// exact name ("ZWCAD" is not "ZWCAD+"), HostNameContains for a part
// ("AutoCAD" tests).
bool HostNameIs(std::string_view host_name, std::string_view name);
bool HostNameContains(std::string_view host_name, std::string_view part);

// The generic AutoCAD identifier (whichever release registered last) and the
// one tried for ZWCAD when "ZWCAD.Application" yields nothing.
inline constexpr std::string_view kAutoCadProgramId = "AutoCAD.Application";
inline constexpr std::string_view kZwCadPlusProgramId = "ZWcad+.Application";

// The kind of host-list index `index`, or nullopt outside 0..6.
std::optional<HostKind> HostKindFromIndex(int index);

// "AutoCAD", "NanoCAD", "ZWCAD", "BricsCAD", "GstarCAD", "ProgeCAD",
// "IntelliCAD" ("ZWCAD+" is only ever the result of the ZWCAD fall-back).
std::string_view HostKindName(HostKind kind);

// The identifier a kind is found and started by. progeCAD and IntelliCAD
// share "Icad.Application" deliberately: only the host name differs.
std::string_view HostProgramId(HostKind kind);

// One entry of the AutoCAD release list.
struct AutoCadRelease {
  std::string_view list_text;   // "09" .. "22"
  std::string_view program_id;  // "AutoCAD.Application.17.2" ..
};

// The release-specific entries "09" .. "22", in list order ("Auto" and the
// empty text stand for kAutoCadProgramId and are not in this table).
std::span<const AutoCadRelease> AutoCadReleases();

// The identifier of release list text `list_text`: kAutoCadProgramId for
// "Auto" or empty, a release-specific one for "09" .. "22", nullopt for any
// other text.
std::optional<std::string_view> AutoCadReleaseProgramId(
    std::string_view list_text);

// The year recorded for every host that has no year of its own, and for an
// AutoCAD newer than the table (treated as the newest).
inline constexpr double kNewestYear = 2050;

// The AutoCAD release year from the first four characters of Version:
// "17.2" 2009 ... "26.0" 2022, anything else kNewestYear.
double AutoCadYear(std::string_view version);

// nanoCAD's "year" is its version number: the Version text read as a number
// (as far as it is one); when the text of that number contains "5.1" the
// result is exactly 5.1, otherwise major.minor from the first two
// dot-separated parts of Version ("23.0.6360.6019" gives 23.0). The "5.1"
// test is a text test, so it matches any number whose text holds "5.1".
// kNewestYear when Version does not begin with a number.
double NanoCadYear(std::string_view version);

}  // namespace lmt::host

#endif  // LMT_HOST_HOST_KIND_H_
