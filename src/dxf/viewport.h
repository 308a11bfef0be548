// Viewport: typed view of a VIEWPORT entity (paper-space window onto model
// space).
//
// On/off is bit 131072 of code 90, not the 68 status: CAD programs write
// 68 = 0 for every viewport of a layout that was never displayed. Angles are
// degrees. 12/22 is the view centre in display coordinates, not WCS.
//
// Before DXF 2000 (R12 to R14) the entity holds only its place on paper,
// 68 and 69; the view is in the ACAD application's "MVIEW" extended data,
// and 68 = 0 is the only way to say off. The getters read that form too,
// and SetOn keeps to it, so an edit does not give an old file codes its
// release does not know.
#ifndef LMT_DXF_VIEWPORT_H_
#define LMT_DXF_VIEWPORT_H_

#include <optional>
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
  Vec3 view_center() const;  // DCS, z unused
  Vec3 view_direction() const;
  Vec3 view_target() const;
  double view_height() const;
  double twist() const;
  int flags() const { return static_cast<int>(GetInt(90, 0)); }
  bool is_on() const;
  bool is_locked() const { return (flags() & kFlagLocked) != 0; }
  std::vector<std::string_view> frozen_layers() const;
  // True for the pre-2000 form described above.
  bool is_legacy() const;

  void SetCenter(Vec3 c) { SetPoint(10, c); }
  void SetSize(double width, double height);
  void SetViewCenter(double x, double y);
  void SetViewHeight(double h) { SetDouble(45, h); }
  void SetTwist(double degrees) { SetDouble(51, degrees); }
  void SetFlags(int flags) { SetInt(90, flags); }
  // Off: sets the flag and 68 = 0. On: clears it and sets 68 to `status`,
  // which must be unique and positive within the layout. The legacy form
  // gets 68 only.
  void SetOn(bool on, int status = 1);
  // Nothing for the legacy form, which cannot be locked.
  void SetLocked(bool locked);

 private:
  // The view of the legacy form, read from its extended data.
  struct LegacyView {
    Vec3 target;
    Vec3 direction{0, 0, 1};
    double twist = 0;
    double height = 0;
    Vec3 center;
    std::vector<std::string_view> frozen_layers;
  };
  std::optional<LegacyView> legacy_view() const;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_VIEWPORT_H_
