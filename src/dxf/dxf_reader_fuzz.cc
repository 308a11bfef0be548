// libFuzzer target: any bytes must give a Document or a Status, never a
// crash, and a parsed document must serialize and parse again.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dxf/document.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/tag_reader.h"
#include "dxf/text.h"

namespace {

lmt::dxf::Status ReadWith(size_t two_thread_bytes, std::string_view data,
                          lmt::dxf::Arena* arena, lmt::dxf::TagFile* out) {
  lmt::dxf::SetTwoThreadBytes(two_thread_bytes);
  return lmt::dxf::ReadTags(data, "fuzz.dxf", arena, out);
}

// The two-thread tokenizer, forced onto every input, must give what one
// thread gives: the same message, or the same tags over the same bytes.
bool SameOnTwoThreads(std::string_view data) {
  lmt::dxf::Arena arena;
  lmt::dxf::TagFile one, two;
  lmt::dxf::Status a = ReadWith(SIZE_MAX, data, &arena, &one);
  lmt::dxf::Status b = ReadWith(0, data, &arena, &two);
  lmt::dxf::SetTwoThreadBytes(lmt::dxf::kDefaultTwoThreadBytes);
  if (a.ToString() != b.ToString() || one.starts != two.starts ||
      one.tags.size() != two.tags.size() || one.crlf != two.crlf) {
    return false;
  }
  if (one.binary) return true;  // always one thread
  for (size_t i = 0; i < one.tags.size(); ++i) {
    if (one.tags[i].code != two.tags[i].code ||
        one.tags[i].data() != two.tags[i].data() ||
        one.tags[i].size() != two.tags[i].size()) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (!SameOnTwoThreads({reinterpret_cast<const char*>(data), size}))
    __builtin_trap();
  std::unique_ptr<lmt::dxf::Document> doc;
  lmt::dxf::Status s = lmt::dxf::Document::Parse(
      std::string(reinterpret_cast<const char*>(data), size), "fuzz.dxf", &doc);
  if (!s.ok()) return 0;
  // Exercise the typed views on whatever was read.
  for (auto& b : doc->blocks()) {
    for (lmt::dxf::RecordId id : b->entities) {
      lmt::dxf::Entity e = doc->entity(id);
      if (e.type() == "LWPOLYLINE") (void)lmt::dxf::LwPolyline(e).vertices();
      if (e.type() == "MTEXT") (void)lmt::dxf::MText(e).text();
      if (e.type() == "INSERT") {
        (void)lmt::dxf::EffectiveBlockName(*doc, lmt::dxf::Insert(e));
      }
    }
  }
  std::string out = doc->ToString();
  std::unique_ptr<lmt::dxf::Document> again;
  if (!lmt::dxf::Document::Parse(out, "again.dxf", &again).ok())
    __builtin_trap();
  // Binary input is saved binary, its untouched records copied as read.
  if (doc->was_binary() &&
      (!doc->ToString(lmt::dxf::DxfFormat::kBinary, &out).ok() ||
       !lmt::dxf::Document::Parse(out, "again.dxf", &again).ok())) {
    __builtin_trap();
  }
  return 0;
}
