// Utility and the tiled viewport of the embedded host.
//
// Picks go to host::User (the embedded host has no screen). Coordinate
// systems of TranslateCoordinates, all for plan views (the only views the
// add-in makes):
//   0 world: model coordinates, or paper coordinates while paper space is
//     current without an entered viewport;
//   1 UCS: world turned by the session UCS angle about the origin;
//   2 display: the current view's DCS, d = R(twist)·(p - target), in tiled
//     model space or inside the entered viewport; in paper space the paper
//     view is centred on the paper origin, so display = paper coordinates;
//   3 paper-space display: paper coordinates; inside a viewport it maps to
//     that viewport's display by d = viewcentre + (q - centre) / scale
//     (dxf-notes 4.5).
// A displacement drops every translation and keeps rotation and scale.
#include <cmath>
#include <numbers>

#include "dxf/viewport.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

using host::CoordinateSystem;
using host::Point;

class DxfUtility : public host::Utility {
 public:
  explicit DxfUtility(std::shared_ptr<Drawing> d)
      : host::Utility(d->gate), d_(std::move(d)) {}

 protected:
  Result<Point> DoGetPoint(const std::optional<Point>& base,
                           std::string_view prompt) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->user == nullptr) return Status::Cancelled("no user to ask");
    return d_->user->PickPoint(prompt, base);
  }
  Result<double> DoGetDistance(const std::optional<Point>& base,
                               std::string_view prompt) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->user == nullptr) return Status::Cancelled("no user to ask");
    return d_->user->PickDistance(prompt, base);
  }
  Status DoPrompt(std::string_view) override {
    // There is no command line to show it on.
    return d_->Live();
  }
  Result<Point> DoTranslateCoordinates(const Point& p, CoordinateSystem from,
                                       CoordinateSystem to,
                                       bool displacement) const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    Result<Point> world = ToWorld(p, from, displacement);
    if (!world.ok()) return world;
    return FromWorld(*world, to, displacement);
  }

 private:
  bool ModelView() const {
    return d_->IsModel(d_->active_block) || d_->InViewport();
  }
  ViewFrame View() const {
    return d_->InViewport() ? ViewportView(*d_, d_->active_pviewport)
                            : TiledView(*d_);
  }
  // Display -> world of the current view.
  Point DisplayToWorld(const Point& p, bool disp) const {
    if (!ModelView()) return p;
    ViewFrame v = View();
    Point r = Rotate(p, -v.twist);
    if (disp) return r;
    return Point{r.x + v.target.x, r.y + v.target.y, r.z + v.target.z};
  }
  Point WorldToDisplay(const Point& p, bool disp) const {
    if (!ModelView()) return p;
    ViewFrame v = View();
    Point q =
        disp ? p : Point{p.x - v.target.x, p.y - v.target.y, p.z - v.target.z};
    return Rotate(q, v.twist);
  }
  // Paper -> display of the entered viewport.
  Result<Point> PaperToDisplay(const Point& q, bool disp) const {
    dxf::Viewport vp(d_->entity(d_->active_pviewport));
    if (vp.view_height() <= 0 || vp.height() <= 0) {
      return Status::Refused("the viewport has no scale");
    }
    double s = vp.height() / vp.view_height();
    dxf::Vec3 c = vp.center(), vc = vp.view_center();
    if (disp) return Point{q.x / s, q.y / s, q.z / s};
    return Point{vc.x + (q.x - c.x) / s, vc.y + (q.y - c.y) / s, q.z / s};
  }
  Result<Point> DisplayToPaper(const Point& d, bool disp) const {
    dxf::Viewport vp(d_->entity(d_->active_pviewport));
    if (vp.view_height() <= 0)
      return Status::Refused("the viewport has no scale");
    double s = vp.height() / vp.view_height();
    dxf::Vec3 c = vp.center(), vc = vp.view_center();
    if (disp) return Point{d.x * s, d.y * s, d.z * s};
    return Point{c.x + s * (d.x - vc.x), c.y + s * (d.y - vc.y), d.z * s};
  }

  Result<Point> ToWorld(const Point& p, CoordinateSystem from,
                        bool disp) const {
    switch (from) {
      case CoordinateSystem::kWorld:
        return p;
      case CoordinateSystem::kUcs:
        return ModelView() ? Rotate(p, d_->ucs_angle) : p;
      case CoordinateSystem::kDisplay:
        return DisplayToWorld(p, disp);
      case CoordinateSystem::kPaperSpaceDisplay: {
        if (!d_->InViewport()) return p;
        Result<Point> dcs = PaperToDisplay(p, disp);
        if (!dcs.ok()) return dcs;
        return DisplayToWorld(*dcs, disp);
      }
    }
    return Status::InvalidArgument("unknown coordinate system");
  }
  Result<Point> FromWorld(const Point& p, CoordinateSystem to,
                          bool disp) const {
    switch (to) {
      case CoordinateSystem::kWorld:
        return p;
      case CoordinateSystem::kUcs:
        return ModelView() ? Rotate(p, -d_->ucs_angle) : p;
      case CoordinateSystem::kDisplay:
        return WorldToDisplay(p, disp);
      case CoordinateSystem::kPaperSpaceDisplay:
        if (!d_->InViewport()) return p;
        return DisplayToPaper(WorldToDisplay(p, disp), disp);
    }
    return Status::InvalidArgument("unknown coordinate system");
  }

  std::shared_ptr<Drawing> d_;
};

// The tiled model viewport (VPORT *Active); new values wait for
// Document::SetActiveViewport, as in the object model. The centre is kept in
// world coordinates and turned into the entry's display centre (12/22) only
// when applied, so setting the twist after the centre keeps the centre.
class DxfTiledViewport : public host::Viewport {
 public:
  explicit DxfTiledViewport(std::shared_ptr<Drawing> d)
      : host::Viewport(d->gate), d_(std::move(d)) {
    const ViewFrame view = TiledView(*d_);
    direction_ = view.direction;
    target_ = view.target;
    twist_ = view.twist;
    const Point shown = Rotate(view.view_center, -view.twist);
    center_ = Point{view.target.x + shown.x, view.target.y + shown.y, 0};
    dxf::Entity vport = d_->doc->FindTableEntry("VPORT", "*Active");
    if (vport.valid()) {
      height_ = vport.GetDouble(40, height_);
      aspect_ = vport.GetDouble(41, aspect_);
    }
  }
  const Drawing* drawing() const { return d_.get(); }

  void WriteTo(dxf::Entity& vport) const {
    vport.SetPoint(16, dxf::Vec3{direction_.x, direction_.y, direction_.z});
    const Point offset{center_.x - target_.x, center_.y - target_.y, 0};
    const Point display = Rotate(offset, twist_);
    vport.SetPoint(12, dxf::Vec3{display.x, display.y, 0});
    vport.SetDouble(40, height_);
    vport.SetDouble(51, twist_ * 180.0 / std::numbers::pi);
  }

 protected:
  Result<Point> DoDirection() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return direction_;
  }
  Status DoSetDirection(const Point& direction) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (direction.x == 0 && direction.y == 0 && direction.z == 0) {
      return Status::InvalidArgument("a view direction cannot be zero");
    }
    direction_ = direction;
    return Status();
  }
  Result<Point> DoCenter() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return center_;
  }
  Status DoSetCenter(const Point& center) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    center_ = Point{center.x, center.y, 0};
    return Status();
  }
  Result<double> DoHeight() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return height_;
  }
  Status DoSetHeight(double height) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (!(height > 0) || !std::isfinite(height)) {
      return Status::InvalidArgument("a view height must be positive");
    }
    height_ = height;
    return Status();
  }
  Result<double> DoWidth() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return height_ * aspect_;
  }
  Result<double> DoTwist() const override {
    if (Status s = d_->Live(); !s.ok()) return s;
    return twist_;
  }
  Status DoSetTwist(double twist) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (!std::isfinite(twist)) {
      return Status::InvalidArgument("a view twist must be a number");
    }
    const double turn = 2 * std::numbers::pi;
    twist_ = std::fmod(std::fmod(twist, turn) + turn, turn);
    return Status();
  }

 private:
  std::shared_ptr<Drawing> d_;
  Point direction_;
  Point target_;
  Point center_;
  double height_ = 1;
  double aspect_ = 1;
  double twist_ = 0;
};

}  // namespace

host::UtilityPtr MakeUtility(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfUtility>(d);
}

host::ViewportPtr MakeTiledViewport(const std::shared_ptr<Drawing>& d) {
  return std::make_shared<DxfTiledViewport>(d);
}

Status ApplyTiledViewport(const host::Viewport& viewport, Drawing& d) {
  const auto* tiled = dynamic_cast<const DxfTiledViewport*>(&viewport);
  if (tiled == nullptr || tiled->drawing() != &d) {
    return Status::InvalidArgument("the viewport is not from this drawing");
  }
  dxf::Entity vport = d.doc->FindTableEntry("VPORT", "*Active");
  if (!vport.valid()) {
    return Status::NotSupported("the drawing has no active model view");
  }
  tiled->WriteTo(vport);
  return Status();
}

}  // namespace lmt::dxfhost
