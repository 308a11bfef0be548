// Typed views of block references and their attributes: INSERT, ATTRIB and
// ATTDEF.
//
// An INSERT's ATTRIBs and SEQEND are its children in the EntityDb (written
// right after it). Attribute values are raw DXF strings. A 2018 multi-line
// attribute keeps its text in the embedded MTEXT (`101 Embedded Object`,
// codes 3/1) while the AcDbText `1` stays empty; value() and SetValue()
// handle both forms.
#ifndef LMT_DXF_INSERT_H_
#define LMT_DXF_INSERT_H_

#include <string>
#include <string_view>
#include <vector>

#include "dxf/entity.h"

namespace lmt::dxf {

class Document;

// ATTRIB or ATTDEF.
class Attrib : public Entity {
 public:
  explicit Attrib(Entity e) : Entity(e) {}

  // The tag (code 2 of AcDbAttribute / AcDbAttributeDefinition).
  std::string_view tag() const;
  std::string value() const;
  // Writes the value where CAD programs read it: the embedded MTEXT of a
  // multi-line attribute, else the AcDbText `1`.
  void SetValue(std::string_view text);
  int flags() const;  // 1 invisible, 2 constant, 4 verify, 8 preset
  bool is_multiline() const { return EmbeddedBegin() >= 0; }
  std::string_view prompt() const { return GetString(3); }  // ATTDEF only
  Vec3 insert_point() const { return GetPoint(10); }
  double height() const { return GetDouble(40, 0); }

 private:
  std::string_view SubclassName() const;
  int EmbeddedBegin() const;  // index after `101 Embedded Object`, or -1
};

class Insert : public Entity {
 public:
  // REQUIRES: type INSERT.
  explicit Insert(Entity e) : Entity(e) {}

  std::string_view block_name() const { return GetString(2); }
  void SetBlockName(std::string_view name) { Set(2, name); }
  Vec3 insert_point() const { return GetPoint(10); }
  Vec3 scale() const;                                   // 41/42/43, default 1
  double rotation() const { return GetDouble(50, 0); }  // degrees
  Vec3 extrusion() const { return GetPoint(210, Vec3{0, 0, 1}); }
  // MINSERT grid; 1 x 1 for a plain INSERT.
  int columns() const { return static_cast<int>(GetInt(70, 1)); }
  int rows() const { return static_cast<int>(GetInt(71, 1)); }

  std::vector<Attrib> attribs() const;
  // First ATTRIB whose tag equals `tag` (case-insensitive); invalid if none.
  Attrib FindAttrib(std::string_view tag) const;
};

// The name a user sees for a block reference. A changed dynamic block
// reference points at an anonymous *U block; the original is found through
// the INSERT's extension dictionary (AcDbBlockRepresentation ->
// AcDbRepData -> 340), then the *U record's XDATA AcDbBlockRepBTag 1005,
// else the INSERT's own name.
std::string EffectiveBlockName(Document& doc, const Insert& insert);

}  // namespace lmt::dxf

#endif  // LMT_DXF_INSERT_H_
