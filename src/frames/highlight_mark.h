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

// Only outlines (polylines) and numbers (texts) are drawn, so only they can
// carry the mark. Over COM each extended-data question is a round trip and
// the search and the removal walk every object: other kinds are not asked.
// An entity whose kind cannot be read may carry it.
inline bool MayCarryMark(const host::Entity& entity) {
  Result<std::string> kind = entity.ObjectName();
  return !kind.ok() || *kind == "AcDbPolyline" || *kind == "AcDbText";
}

// True when `entity` carries the mark. A host that cannot read extended data
// has no marks either, so a refusal counts as unmarked.
inline bool IsHighlightMark(const host::Entity& entity) {
  if (!MayCarryMark(entity)) return false;
  Result<std::vector<std::string>> mark = entity.GetXData(kMarkApplication);
  return mark.ok() && !mark->empty();
}

}  // namespace lmt::frames

#endif  // LMT_FRAMES_HIGHLIGHT_MARK_H_
