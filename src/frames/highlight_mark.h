// The mark the add-in puts on the objects it draws to highlight found frames
// (utilities/frame_marks.h): extended data of its own registered application.
// The search passes marked objects over, so the outlines of one search are
// never found as frames by the next.
#ifndef LMT_FRAMES_HIGHLIGHT_MARK_H_
#define LMT_FRAMES_HIGHLIGHT_MARK_H_

#include <string>
#include <string_view>
#include <vector>

#include "host/entity.h"

namespace lmt::frames {

inline constexpr std::string_view kMarkApplication = "LAYOMAT_MARK";

// True when `entity` carries the mark. A host that cannot read extended data
// has no marks either, so a refusal counts as unmarked.
inline bool IsHighlightMark(const host::Entity& entity) {
  Result<std::vector<std::string>> mark = entity.GetXData(kMarkApplication);
  return mark.ok() && !mark->empty();
}

}  // namespace lmt::frames

#endif  // LMT_FRAMES_HIGHLIGHT_MARK_H_
