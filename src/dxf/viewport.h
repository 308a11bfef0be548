// Viewport: typed view of a VIEWPORT entity (paper-space window onto model
// space).
//
// On/off is bit 131072 of code 90, not the 68 status: CAD programs write
// 68 = 0 for every viewport of a layout that was never displayed. Angles are
// degrees. 12/22 is the view centre in display coordinates, not WCS.
#ifndef LMT_DXF_VIEWPORT_H_
#define LMT_DXF_VIEWPORT_H_

#include <string_view>
#include <vector>

#include "dxf/entity.h"

namespace lmt::dxf {

class Viewport : public Entity {
 public:
  static constexpr int kFlagLocked = 16384;
  static constexpr int kFlagOff = 131072;

  // REQUIRES: type VIEWPORT.
  explicit Viewport(Entity e) : Entity(e) {}

  Vec3 center() const { return GetPoint(10); }  // paper coordinates
  double width() const { return GetDouble(40, 0); }
  double height() const { return GetDouble(41, 0); }
  int status() const { return static_cast<int>(GetInt(68, 0)); }
  int id() const { return static_cast<int>(GetInt(69, 0)); }
  Vec3 view_center() const { return GetPoint(12); }  // DCS, z unused
  Vec3 view_direction() const { return GetPoint(16, Vec3{0, 0, 1}); }
  Vec3 view_target() const { return GetPoint(17); }
  double view_height() const { return GetDouble(45, 0); }
  double twist() const { return GetDouble(51, 0); }
  int flags() const { return static_cast<int>(GetInt(90, 0)); }
  bool is_on() const { return (flags() & kFlagOff) == 0; }
  bool is_locked() const { return (flags() & kFlagLocked) != 0; }
  std::vector<std::string_view> frozen_layers() const { return GetAll(331); }

  void SetCenter(Vec3 c) { SetPoint(10, c); }
  void SetSize(double width, double height);
  void SetViewCenter(double x, double y);
  void SetViewHeight(double h) { SetDouble(45, h); }
  void SetTwist(double degrees) { SetDouble(51, degrees); }
  void SetFlags(int flags) { SetInt(90, flags); }
  // Off: sets the flag and 68 = 0. On: clears it and sets 68 to `status`,
  // which must be unique and positive within the layout.
  void SetOn(bool on, int status = 1);
  void SetLocked(bool locked);
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_VIEWPORT_H_
