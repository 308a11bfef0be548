// libFuzzer target: any bytes must give a Document or a Status, never a
// crash, and a parsed document must serialize and parse again.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "dxf/document.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
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
