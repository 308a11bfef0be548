// Typed views of text entities: TEXT, MTEXT, and the text of a MULTILEADER.
//
// Values are the raw DXF strings (format codes, %%-codes and \U+XXXX
// escapes included), in the file's encoding (see encoding.h). Long MTEXT is
// stored as 250-byte `3` chunks followed by a final `1`; text() joins them
// and SetText() splits again, never inside a UTF-8 sequence or a \U+XXXX
// escape.
#ifndef LMT_DXF_TEXT_H_
#define LMT_DXF_TEXT_H_

#include <string>
#include <string_view>

#include "dxf/entity.h"

namespace lmt::dxf {

// Joined `3`* `1` text in tags [begin, end) of `e`.
std::string ReadChunkedText(const Entity& e, int begin, int end);
// Replaces the `3`/`1` tags in [begin, end) with `text` split into chunks,
// at the place of the first old one (or at `end`).
void WriteChunkedText(Entity& e, int begin, int end, std::string_view text);
// Splits at most 250 bytes per chunk, respecting UTF-8 and \U+XXXX.
std::vector<std::string_view> SplitTextChunks(std::string_view text);

class Text : public Entity {
 public:
  // REQUIRES: type TEXT (ATTRIB and ATTDEF use Attrib).
  explicit Text(Entity e) : Entity(e) {}
  std::string_view text() const;
  void SetText(std::string_view text);
  Vec3 insert_point() const { return GetPoint(10); }
  double height() const { return GetDouble(40, 0); }
  double rotation() const { return GetDouble(50, 0); }  // degrees
  std::string_view style() const { return GetString(7, "Standard"); }
};

class MText : public Entity {
 public:
  // REQUIRES: type MTEXT.
  explicit MText(Entity e) : Entity(e) {}
  std::string text() const;
  void SetText(std::string_view text);
  Vec3 insert_point() const { return GetPoint(10); }
  double height() const { return GetDouble(40, 0); }
  double width() const { return GetDouble(41, 0); }
  int attachment() const { return static_cast<int>(GetInt(71, 1)); }
  std::string_view style() const { return GetString(7, "Standard"); }
};

// The MTEXT content of a MULTILEADER: the first 304 of CONTEXT_DATA{ before
// the first `302 LEADER{`. Code 304 is reused as the LEADER_LINE{ marker,
// so only that one is touched.
class MLeader : public Entity {
 public:
  // REQUIRES: type MULTILEADER (or MLEADER).
  explicit MLeader(Entity e) : Entity(e) {}
  bool has_text() const { return TextIndex() >= 0; }
  std::string_view text() const;
  // Sets the text and drops the proxy graphics (92/160 + 310), which would
  // otherwise still show the old text in viewers. False when there is no
  // text to replace.
  bool SetText(std::string_view text);

 private:
  int TextIndex() const;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_TEXT_H_
