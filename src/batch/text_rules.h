// The decisions of Replace text, free of the object model: which text
// objects a run rewrites and what their new content is. The window offers
// three groups shaped like the attribute groups, or a list of (find,
// replace) pairs, often pasted from a spreadsheet.
//
// The rules chosen here:
// - TEXT and MTEXT are rewritten when `Check_TEXT` is set, MLEADER texts
//   when `Check_Leader` is set; `Check_Block` adds the block definitions to
//   the walk, inside which the same switches hold. Layout and block scope
//   are those of Replace attributes (attribute_rules.h).
// - A group applies to a text whose visible content contains the group's
//   find text (case-insensitive); a group with an empty find text applies to
//   nothing, so an unfilled group cannot rewrite every text of a drawing.
//   Mode 0 replaces the whole content with the group's text (an MTEXT loses
//   its formatting then), mode 1 replaces each occurrence of the find text
//   and keeps the formatting, mode 2 keeps the content; prefix and suffix
//   follow. The groups apply in turn, each testing and rewriting what the
//   one before left.
// - The list, in its occurrence mode, replaces every occurrence of each
//   find text in one left-to-right pass (first pair in table order wins at a
//   position; replaced text is not searched again). In its whole-text mode
//   the first pair whose find text equals the whole visible content
//   replaces the content; in its keep mode no content changes. The list's
//   prefix and suffix go round every content a pair matched.
// - An object is written only when its content changes.
#ifndef LMT_BATCH_TEXT_RULES_H_
#define LMT_BATCH_TEXT_RULES_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/text_runs.h"
#include "batch/value_rule.h"
#include "core/status.h"

namespace lmt::batch {

enum class TextObject { kText, kMText, kMLeader };

// "AcDbText", "AcDbMText", "AcDbMLeader"; nullopt for any other object name.
std::optional<TextObject> TextObjectFromName(std::string_view object_name);

inline constexpr std::string_view kBlockReferenceName = "AcDbBlockReference";

// How the object's content is spelled: MTEXT codes for MTEXT and MLEADER.
TextFormat FormatOf(TextObject object);

// One text group of the window (k = 1, 2, 3).
struct TextGroup {
  bool enabled = false;                   // `Check_TEXT`k
  std::string find;                       // `UniText_NameTEXT`k
  ValueMode mode = ValueMode::kNewValue;  // `Option_ValueTEXT`k0..k2
  std::string replacement;  // `UniText_ZamNaTEXT`k: new text or replacement
  bool use_prefix = false;
  std::string prefix;
  bool use_suffix = false;
  std::string suffix;
};

// `Option_ValueList`: "New value" replaces a content equal to a find text,
// "Replace part" each occurrence, "Keep value" changes no content but
// still lets the list's prefix and suffix mark the texts a pair matches.
enum class ListMatch : int {
  kWholeText = 0,
  kOccurrences = 1,
  kKeep = 2,
};

// The window's option index as a list mode; outside 0..2 keeps.
ListMatch ListMatchFromIndex(int index);

struct TextOptions {
  bool texts = true;       // `Check_TEXT`: TEXT and MTEXT
  bool leaders = false;    // `Check_Leader`: MLEADER
  bool in_blocks = false;  // `Check_Block`: walk block definitions too
  bool use_list = false;   // `Option_TextOrList`: the list, not the groups
  std::array<TextGroup, 3> groups;
  std::vector<ReplacementPair> list;
  ListMatch list_match = ListMatch::kOccurrences;
  // `Check_PrefixList` / `Check_SuffixList`: added to every content a
  // pair of the list matches (equals under kWholeText, contains else).
  bool list_use_prefix = false;
  std::string list_prefix;
  bool list_use_suffix = false;
  std::string list_suffix;
};

// Whether the run rewrites this kind of object.
bool TextObjectInScope(TextObject object, const TextOptions& options);

// The new content of an object whose content is `content`; nullopt when
// nothing applies or the content would stay the same.
std::optional<std::string> RewriteText(const TextOptions& options,
                                       TextObject object,
                                       std::string_view content);

// The list pasted from the clipboard: one pair a line (CR LF, LF or CR),
// the first cell the find text and the second the replacement (empty when
// missing), cells separated by tabs; further cells are ignored, as are lines
// with an empty first cell. A cell in double quotes, as spreadsheets write a
// cell holding a tab, a line break or a quote, may contain those, with ""
// standing for one quote. An empty clipboard text fails with the message
// "Буфер обмена пуст!".
Result<std::vector<ReplacementPair>> ParsePastedTable(std::string_view text);

}  // namespace lmt::batch

#endif  // LMT_BATCH_TEXT_RULES_H_
