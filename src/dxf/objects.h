// Views of OBJECTS-section records used by layouts and annotation scales:
// DICTIONARY, LAYOUT, SCALE, DICTIONARYVAR, and extension dictionaries.
//
// All are views over raw tags like Entity; the Document keeps the list of
// objects. LAYOUT repeats codes 1 and 70 in its two subclasses, so its
// accessors read the AcDbLayout part explicitly.
#ifndef LMT_DXF_OBJECTS_H_
#define LMT_DXF_OBJECTS_H_

#include <string_view>
#include <utility>
#include <vector>

#include "dxf/document.h"
#include "dxf/entity.h"

namespace lmt::dxf {

// (key, handle) pairs of a DICTIONARY in file order.
std::vector<std::pair<std::string_view, uint64_t>> DictionaryEntries(
    const Entity& dict);
// Removes `key` (its 3 and 350/360 tags). Returns the handle it held, 0 when
// absent. The object itself is left alone.
uint64_t RemoveFromDictionary(Entity dict, std::string_view key);

class Layout : public Entity {
 public:
  // REQUIRES: type LAYOUT.
  explicit Layout(Entity e) : Entity(e) {}
  std::string_view name() const;   // AcDbLayout 1
  int tab_order() const;           // AcDbLayout 71 (Model 0)
  uint64_t block_record() const;   // AcDbLayout 330
  uint64_t last_viewport() const;  // AcDbLayout 331
  bool is_model() const { return EqualsNoCase(name(), "Model"); }
};

// The layouts listed in ACAD_LAYOUT, by tab order (empty for R12).
std::vector<Layout> Layouts(Document& doc);
// The block holding a layout's entities, or nullptr.
Block* LayoutBlock(Document& doc, const Layout& layout);

class Scale : public Entity {
 public:
  explicit Scale(Entity e) : Entity(e) {}
  std::string_view name() const { return GetString(300); }  // "1:50"
  double paper_units() const { return GetDouble(140, 1); }
  double drawing_units() const { return GetDouble(141, 1); }
};

// The value of a DICTIONARYVAR in AcDbVariableDictionary ("CANNOSCALE"),
// empty when absent.
std::string_view DictionaryVar(Document& doc, std::string_view name);

// The entity's extension dictionary, created (hard owner, owned by the
// entity) when it has none. Invalid for R12.
Entity GetOrCreateExtensionDictionary(Document& doc, Entity owner);

// Sets an attribute value as a CAD program would: besides the value, a
// multi-line attribute of a pre-2018 file keeps its MTEXT in the
// ACAD_MLATT XRECORD of its extension dictionary, which newer programs
// restore over the value; that XRECORD is removed.
void SetAttribValue(Document& doc, Entity attrib, std::string_view text);

}  // namespace lmt::dxf

#endif  // LMT_DXF_OBJECTS_H_
