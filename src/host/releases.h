// The drawing releases the hosts know, with their $ACADVER word and the
// save-as type numbers a host's SaveAs and Preferences.SaveAsType take (the
// even number writes DWG, the odd one DXF). The one table behind the
// command line's output, the embedded host's save and the batch windows'
// save-as choices, so they cannot drift apart.
#ifndef LMT_HOST_RELEASES_H_
#define LMT_HOST_RELEASES_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace lmt::host {

struct Release {
  std::string_view name;                 // "2000", as the save-as lists show it
  std::string_view acadver;              // "AC1015"
  std::optional<int32_t> dwg_save_type;  // none for R12
  int32_t dxf_save_type;
};

// Oldest first. Several releases may share one $ACADVER (2021 writes the
// 2018 format); the first of them is the one that release is saved as.
std::span<const Release> Releases();

// The release whose $ACADVER is `acadver` (the first, see above); nullptr
// for a word no host writes.
const Release* FindReleaseByAcadver(std::string_view acadver);

struct SaveTypeMatch {
  const Release* release;
  bool dxf;  // the DXF type of the release, else its DWG type
};

// The release and family of save-as type `save_type`; nullopt for a number
// no host knows.
std::optional<SaveTypeMatch> FindSaveType(int32_t save_type);

}  // namespace lmt::host

#endif  // LMT_HOST_RELEASES_H_
