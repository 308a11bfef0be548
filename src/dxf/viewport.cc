#include "dxf/viewport.h"

#include <span>

#include "dxf/tag.h"

namespace lmt::dxf {
namespace {

// MVIEW's items after its version number (1070 16), in their fixed order.
enum LegacyItem { kTarget, kDirection, kTwist, kHeight, kCenterX, kCenterY };

double Number(const Tag& tag) { return ParseDouble(tag.value()).value_or(0); }

}  // namespace

bool Viewport::is_legacy() const {
  return Find(90) < 0 && Find(45) < 0 && legacy_view().has_value();
}

std::optional<Viewport::LegacyView> Viewport::legacy_view() const {
  std::span<const Tag> x = XData("ACAD");
  size_t i = 0;
  while (i < x.size() && !(x[i].code == 1000 && x[i].value() == "MVIEW")) ++i;
  // 1000 MVIEW, 1002 {, 1070 version: the items start after those.
  if (i + 3 >= x.size() || x[i + 1].code != 1002) return std::nullopt;
  LegacyView view;
  int item = 0;
  int depth = 0;
  for (size_t j = i + 3; j < x.size(); ++j) {
    const Tag& t = x[j];
    if (t.code == 1002) {
      depth += t.value() == "{" ? 1 : -1;
      if (depth < 0) break;
      continue;
    }
    if (depth > 0) {
      if (t.code == 1003) view.frozen_layers.push_back(t.value());
      continue;
    }
    if (t.code == 1010 || t.code == 1040) {
      const bool point = t.code == 1010;
      double v = Number(t);
      Vec3 p{v, 0, 0};
      if (point && j + 2 < x.size() && x[j + 1].code == 1020 &&
          x[j + 2].code == 1030) {
        p.y = Number(x[j + 1]);
        p.z = Number(x[j + 2]);
        j += 2;
      }
      switch (item++) {
        case kTarget:
          view.target = p;
          break;
        case kDirection:
          view.direction = p;
          break;
        case kTwist:
          view.twist = v;
          break;
        case kHeight:
          view.height = v;
          break;
        case kCenterX:
          view.center.x = v;
          break;
        case kCenterY:
          view.center.y = v;
          break;
        default:
          break;
      }
    }
  }
  if (item <= kCenterY) return std::nullopt;
  return view;
}

// Each getter prefers the entity's own codes and falls back on the legacy
// form only when they are absent.
Vec3 Viewport::view_center() const {
  if (Find(12) >= 0) return GetPoint(12);
  std::optional<LegacyView> legacy = legacy_view();
  return legacy ? legacy->center : Vec3{};
}

Vec3 Viewport::view_direction() const {
  if (Find(16) >= 0) return GetPoint(16);
  std::optional<LegacyView> legacy = legacy_view();
  return legacy ? legacy->direction : Vec3{0, 0, 1};
}

Vec3 Viewport::view_target() const {
  if (Find(17) >= 0) return GetPoint(17);
  std::optional<LegacyView> legacy = legacy_view();
  return legacy ? legacy->target : Vec3{};
}

double Viewport::view_height() const {
  if (Find(45) >= 0) return GetDouble(45, 0);
  std::optional<LegacyView> legacy = legacy_view();
  return legacy ? legacy->height : 0;
}

double Viewport::twist() const {
  if (Find(51) >= 0) return GetDouble(51, 0);
  std::optional<LegacyView> legacy = legacy_view();
  return legacy ? legacy->twist : 0;
}

bool Viewport::is_on() const {
  if (is_legacy()) return status() != 0;
  return (flags() & kFlagOff) == 0;
}

std::vector<std::string_view> Viewport::frozen_layers() const {
  std::vector<std::string_view> names = GetAll(331);
  if (!names.empty() || !is_legacy()) return names;
  return legacy_view()->frozen_layers;
}

void Viewport::SetSize(double width, double height) {
  SetDouble(40, width);
  SetDouble(41, height);
}

void Viewport::SetViewCenter(double x, double y) {
  int i = SetDouble(12, x);
  if (i + 1 < static_cast<int>(tags().size()) && tags()[i + 1].code == 22) {
    SetValueAt(i + 1, FormatDouble(y));
  } else {
    InsertTag(i + 1, 22, FormatDouble(y));
  }
}

void Viewport::SetOn(bool on, int status) {
  if (!is_legacy()) {
    int f = flags();
    SetFlags(on ? (f & ~kFlagOff) : (f | kFlagOff));
  }
  SetInt(68, on ? status : 0);
}

void Viewport::SetLocked(bool locked) {
  if (is_legacy()) return;  // display locking came with DXF 2000
  int f = flags();
  SetFlags(locked ? (f | kFlagLocked) : (f & ~kFlagLocked));
}

}  // namespace lmt::dxf
