// The walks of Replace attributes and Replace text over one drawing: the
// layouts in scope, the entities of each layout's block in order, and the
// block definitions reached through references, each definition at most
// once per drawing (however many references use it), so that a change made
// in a definition shows in every insertion of it.
//
// Every object-model call may be refused; a refused call skips that object
// (recorded in WalkStats::skips, never shown) and the walk goes on. The
// walk stops between objects when the interrupt flag is set.
#ifndef LMT_BATCH_DRAWING_WALK_H_
#define LMT_BATCH_DRAWING_WALK_H_

#include <vector>

#include "batch/attribute_rules.h"
#include "batch/text_rules.h"
#include "core/batch_windows.h"
#include "core/status.h"
#include "host/object_model.h"
#include "host/user.h"

namespace lmt::batch {

// What Replace attributes applies to each drawing.
struct AttributeRun {
  ScopeOptions scope;
  AttributeGroups groups;
};

// The window's controls as a run. The value modes come from the option
// groups as they stand (the settings file never restores them).
AttributeRun AttributeRunOf(const core::OknoFunctionReplaceAtribut& w);

// What Replace text applies to each drawing. `scope.nested_blocks` is not
// used: `text.in_blocks` decides the walk into definitions.
struct TextRun {
  ScopeOptions scope;
  TextOptions text;
};

TextRun TextRunOf(const core::OknoFunctionReplaceText& w);

struct WalkStats {
  int layouts = 0;            // layouts walked
  int definitions = 0;        // block definitions walked
  int written = 0;            // attributes or texts written
  std::vector<Status> skips;  // refused calls, in order
};

WalkStats ReplaceAttributesIn(host::Database& drawing, const AttributeRun& run,
                              const host::User& user);

WalkStats ReplaceTextIn(host::Database& drawing, const TextRun& run,
                        const host::User& user);

}  // namespace lmt::batch

#endif  // LMT_BATCH_DRAWING_WALK_H_
