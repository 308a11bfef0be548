#include "layouts/register_values.h"

#include "core/file_util.h"
#include "host/block.h"
#include "host/entity.h"
#include "host/layout.h"
#include "layouts/sheet_texts.h"

namespace lmt::layouts {
namespace {

int SetValues(host::BlockReference& reference, const FrameAttributes& values) {
  Result<std::vector<host::AttributePtr>> attributes =
      reference.GetAttributes();
  if (!attributes.ok()) return 0;
  int set = 0;
  for (const host::AttributePtr& attribute : *attributes) {
    Result<std::string> tag = attribute->TagString();
    if (!tag.ok() || tag->empty()) continue;
    for (const auto& [wanted, value] : values) {
      if (!NamesEqualNoCase(*tag, wanted)) continue;
      Result<std::string> now = attribute->TextString();
      if ((!now.ok() || *now != value) &&
          attribute->SetTextString(value).ok()) {
        ++set;
      }
      break;
    }
  }
  return set;
}

}  // namespace

Result<Register> ReadRegister(const std::string& path) {
  Result<std::string> text = core::ReadFileBytes(core::PathFromUtf8(path));
  if (!text.ok()) {
    return Status::IOError(path + ": cannot read the register (" +
                           text.status().message() + ")");
  }
  return ParseRegister(*text, path);
}

int WriteFrameValues(host::Document& document, const RegisteredFrame& frame) {
  if (frame.values.empty() || frame.id.empty()) return 0;
  uint64_t object_id = 0;
  for (char c : frame.id) {
    if (c < '0' || c > '9') return 0;  // a frame without an object
    object_id = object_id * 10 + static_cast<uint64_t>(c - '0');
  }
  Result<host::ObjectPtr> object = document.ObjectIdToObject(object_id);
  if (!object.ok()) return 0;
  host::BlockReferencePtr reference = host::As<host::BlockReference>(*object);
  return reference == nullptr ? 0 : SetValues(*reference, frame.values);
}

int WriteLayoutValues(host::Document& document, const RegisteredFrame& frame) {
  if (frame.values.empty()) return 0;
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return 0;
  Result<host::LayoutPtr> layout = (*layouts)->Item(frame.layout);
  if (!layout.ok()) return 0;
  Result<host::BlockPtr> block = (*layout)->Block();
  if (!block.ok()) return 0;
  Result<std::vector<host::EntityPtr>> items = (*block)->Items();
  if (!items.ok()) return 0;
  int set = 0;
  for (const host::EntityPtr& entity : *items) {
    if (host::BlockReferencePtr reference =
            host::As<host::BlockReference>(entity)) {
      set += SetValues(*reference, frame.values);
    }
  }
  return set;
}

}  // namespace lmt::layouts
