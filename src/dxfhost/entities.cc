#include "dxfhost/entities.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "dxf/entity_copy.h"
#include "dxf/insert.h"
#include "dxf/lwpolyline.h"
#include "dxf/objects.h"
#include "dxf/text.h"
#include "dxf/viewport.h"
#include "dxfhost/geometry.h"

namespace lmt::dxfhost {

// XDATA names an application of the APPID table; a CAD program refuses a
// drawing whose XDATA names one that is not there.
Status RegisterApplication(Drawing& d, const std::string& app) {
  dxf::Document& doc = *d.doc;
  if (doc.FindTableEntry("APPID", app).valid()) return Status();
  if (doc.table("APPID") == nullptr) {
    return Status::NotSupported("the drawing has no APPID table");
  }
  std::vector<dxf::Tag> tags;
  tags.push_back(doc.MakeTag(0, "APPID"));
  if (!doc.IsR12()) {
    tags.push_back(doc.MakeTag(100, "AcDbSymbolTableRecord"));
    tags.push_back(doc.MakeTag(100, "AcDbRegAppTableRecord"));
  }
  tags.push_back(doc.MakeTag(2, app));
  tags.push_back(doc.MakeTag(70, "0"));
  if (!doc.AddTableEntry("APPID", std::move(tags)).valid()) {
    return Status::Refused("the application name could not be registered");
  }
  return Status();
}

namespace {

constexpr double kDeg = std::numbers::pi / 180.0;

// What every wrapper of this host carries, reachable from a host::Entity.
class RecordHolder {
 public:
  virtual ~RecordHolder() = default;
  virtual dxf::RecordId record() const = 0;
  virtual const Drawing* drawing() const = 0;
};

Status Erased() { return Status::NotFound("the object was erased"); }

// The Entity members shared by every kind, over one record.
template <typename Base>
class EntityImpl : public Base, public RecordHolder {
 public:
  EntityImpl(std::shared_ptr<Drawing> d, dxf::RecordId id)
      : Base(d->gate), d_(std::move(d)), id_(id) {}

  dxf::RecordId record() const override { return id_; }
  const Drawing* drawing() const override { return d_.get(); }

 protected:
  Status Live() const {
    if (Status s = d_->Live(); !s.ok()) return s;
    if (d_->entity(id_).erased()) return Erased();
    return Status();
  }
  dxf::Entity E() const { return d_->entity(id_); }
  Drawing& D() const { return *d_; }

  Result<std::string> DoObjectName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return ObjectNameOfType(E().type());
  }
  Result<uint64_t> DoObjectID() const override {
    if (Status s = Live(); !s.ok()) return s;
    return E().handle();
  }
  Result<std::string> DoHandle() const override {
    if (Status s = Live(); !s.ok()) return s;
    return dxf::FormatHandle(E().handle());
  }
  Result<uint64_t> DoOwnerID() const override {
    if (Status s = Live(); !s.ok()) return s;
    uint64_t owner = E().owner();
    if (owner == 0) {
      // R12 has no owners: answer the block record's stand-in, the BLOCK.
      dxf::Block* b = D().BlockOfEntity(id_);
      if (b != nullptr && b->begin != dxf::kNoRecord) {
        owner = D().entity(b->begin).handle();
        if (owner == 0) owner = StandInBlockId(b->begin);
      }
    }
    return owner;
  }
  Result<std::string> DoLayer() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(E().layer());
  }
  Status DoSetLayer(std::string_view layer) override {
    if (Status s = Live(); !s.ok()) return s;
    std::string raw = D().Encode(layer);
    if (!D().doc->FindTableEntry("LAYER", raw).valid()) {
      return Status::NotFound("layer \"" + std::string(layer) +
                              "\" does not exist");
    }
    E().SetLayer(raw);
    return Status();
  }
  Result<int32_t> DoColor() const override {
    if (Status s = Live(); !s.ok()) return s;
    return static_cast<int32_t>(E().color());
  }
  Status DoSetColor(int32_t color) override {
    if (Status s = Live(); !s.ok()) return s;
    if (color < 0 || color > 256) {
      return Status::InvalidArgument("colour index out of 0..256");
    }
    E().SetColor(color);
    return Status();
  }
  Result<std::string> DoLinetype() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(E().linetype());
  }
  Status DoSetLinetype(std::string_view linetype) override {
    if (Status s = Live(); !s.ok()) return s;
    std::string raw = D().Encode(linetype);
    if (!D().doc->FindTableEntry("LTYPE", raw).valid()) {
      return Status::NotFound("linetype \"" + std::string(linetype) +
                              "\" is not loaded");
    }
    E().SetLinetype(raw);
    return Status();
  }
  Result<int32_t> DoLineWeight() const override {
    if (Status s = Live(); !s.ok()) return s;
    return static_cast<int32_t>(E().lineweight());
  }
  Status DoSetLineWeight(int32_t lw) override {
    if (Status s = Live(); !s.ok()) return s;
    E().SetLineweight(lw);
    return Status();
  }
  Result<bool> DoVisible() const override {
    if (Status s = Live(); !s.ok()) return s;
    return !E().invisible();
  }
  Status DoSetVisible(bool visible) override {
    if (Status s = Live(); !s.ok()) return s;
    E().SetInvisible(!visible);
    return Status();
  }
  Result<host::BoundingBox> DoGetBoundingBox() const override {
    if (Status s = Live(); !s.ok()) return s;
    std::optional<host::BoundingBox> box = EntityExtents(D(), id_);
    if (!box) return Status::Refused("the object has no extents");
    return *box;
  }
  Status DoErase() override {
    if (Status s = Live(); !s.ok()) return s;
    D().doc->Erase(E());
    return Status();
  }
  // A deep copy beside the original: attributes, vertices and the extension
  // dictionary (a viewport's annotation scale) come along.
  Result<host::EntityPtr> DoCopy() override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Block* block = D().BlockOfEntity(id_);
    if (block == nullptr) return Status::NotFound("the object has no owner");
    const dxf::RecordId ids[] = {id_};
    std::vector<dxf::Entity> copies =
        dxf::CopyEntities(*D().doc, ids, *D().doc, block);
    if (copies.empty()) {
      // The engine leaves out a layout's own (id 1) viewport: a layout
      // has one only.
      return Status::NotSupported("a layout's own viewport cannot be copied");
    }
    dxf::Entity copy = copies.front();
    if (copy.type() == "VIEWPORT") {
      // Viewport ids and stacking numbers are unique within a layout.
      int64_t id = 0, status = 0;
      for (dxf::RecordId other : block->entities) {
        dxf::Entity o = D().entity(other);
        if (o.erased() || o.type() != "VIEWPORT" || other == copy.id()) {
          continue;
        }
        id = std::max(id, o.GetInt(69, 0));
        status = std::max(status, o.GetInt(68, 0));
      }
      copy.SetInt(69, id + 1);
      if (copy.GetInt(68, 0) > 0) copy.SetInt(68, status + 1);
    }
    return MakeEntity(d_, copy.id());
  }
  Status DoMove(const host::Point& from, const host::Point& to) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity e = E();
    dxf::Vec3 n = e.GetPoint(210, dxf::Vec3{0, 0, 1});
    std::string_view type = e.type();
    if (n.x != 0 || n.y != 0 || n.z <= 0) {
      return Status::NotSupported("moving objects outside the world plane");
    }
    double dx = to.x - from.x, dy = to.y - from.y, dz = to.z - from.z;
    auto shift = [&](int code) {
      if (e.Find(code) < 0) return;
      dxf::Vec3 p = e.GetPoint(code);
      e.SetPoint(code, dxf::Vec3{p.x + dx, p.y + dy, p.z + dz});
    };
    if (type == "VIEWPORT" || type == "CIRCLE" || type == "ARC" ||
        type == "POINT" || type == "INSERT" || type == "MTEXT") {
      shift(10);
    } else if (type == "LINE" || type == "TEXT") {
      shift(10);
      shift(11);
    } else if (type == "LWPOLYLINE") {
      dxf::LwPolyline pl(e);
      std::vector<dxf::LwVertex> v = pl.vertices();
      for (dxf::LwVertex& x : v) {
        x.x += dx;
        x.y += dy;
      }
      pl.SetVertices(v);
    } else {
      return Status::NotSupported("moving " + std::string(type) +
                                  " objects is not supported by this host");
    }
    if (type == "INSERT") {
      for (dxf::RecordId c : D().doc->db().children(id_)) {
        dxf::Entity a = D().entity(c);
        for (int code : {10, 11}) {
          if (a.type() != "ATTRIB" || a.Find(code) < 0) continue;
          dxf::Vec3 p = a.GetPoint(code);
          a.SetPoint(code, dxf::Vec3{p.x + dx, p.y + dy, p.z + dz});
        }
      }
    }
    return Status();
  }
  Status DoUpdate() override { return Live(); }
  Result<std::vector<std::string>> DoGetXData(
      std::string_view application) const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<std::string> strings;
    // Most entities carry no extended data: skip the name's encoding then.
    const dxf::Entity e = E();
    if (e.XDataBegin() == static_cast<int>(e.tags().size())) return strings;
    for (const dxf::Tag& tag : e.XData(D().Encode(application))) {
      if (tag.code == 1000) strings.push_back(D().Decode(tag.value()));
    }
    return strings;
  }
  Status DoSetXData(std::string_view application,
                    const std::vector<std::string>& strings) override {
    if (Status s = Live(); !s.ok()) return s;
    const std::string app = D().Encode(application);
    if (app.empty()) {
      return Status::InvalidArgument("an application name is needed");
    }
    dxf::Entity e = E();
    // Drop the application's block of XDATA: from its 1001 to the next.
    auto tags = e.tags();
    for (size_t i = 1; i < tags.size(); ++i) {
      if (tags[i].code != 1001 || !dxf::EqualsNoCase(tags[i].value(), app)) {
        continue;
      }
      size_t end = i + 1;
      while (end < tags.size() && tags[end].code != 1001) ++end;
      e.EraseTags(static_cast<int>(i), static_cast<int>(end));
      break;
    }
    if (strings.empty()) return Status();
    if (Status s = RegisterApplication(D(), app); !s.ok()) return s;
    int at = static_cast<int>(e.tags().size());
    e.InsertTag(at++, 1001, app);
    for (const std::string& text : strings) {
      e.InsertTag(at++, 1000, D().Encode(text));
    }
    return Status();
  }
  std::shared_ptr<Drawing> d_;
  dxf::RecordId id_;
};

class DxfEntity : public EntityImpl<host::Entity> {
 public:
  using EntityImpl::EntityImpl;
};

class DxfPolyline : public EntityImpl<host::Polyline> {
 public:
  using EntityImpl::EntityImpl;

 protected:
  Result<std::vector<double>> DoCoordinates() const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<double> out;
    for (const dxf::LwVertex& v : dxf::LwPolyline(E()).vertices()) {
      out.push_back(v.x);
      out.push_back(v.y);
    }
    return out;
  }
  Result<host::Point> DoCoordinate(int32_t index) const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<dxf::LwVertex> v = dxf::LwPolyline(E()).vertices();
    if (index < 0 || static_cast<size_t>(index) >= v.size()) {
      return Status::NotFound("vertex " + std::to_string(index) +
                              " does not exist");
    }
    return host::Point{v[index].x, v[index].y, 0};
  }
  Result<bool> DoClosed() const override {
    if (Status s = Live(); !s.ok()) return s;
    return dxf::LwPolyline(E()).closed();
  }
  Status DoSetClosed(bool closed) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::LwPolyline(E()).SetClosed(closed);
    return Status();
  }
};

class DxfAttribute : public EntityImpl<host::Attribute> {
 public:
  using EntityImpl::EntityImpl;

 protected:
  Result<std::string> DoTagString() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(dxf::Attrib(E()).tag());
  }
  Result<std::string> DoTextString() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(dxf::Attrib(E()).value());
  }
  Status DoSetTextString(std::string_view text) override {
    if (Status s = Live(); !s.ok()) return s;
    // Also drops a pre-2018 multi-line attribute's stored MTEXT, which a
    // CAD program would otherwise restore over the new value.
    dxf::SetAttribValue(*D().doc, E(), D().Encode(text));
    return Status();
  }
};

class DxfBlockReference : public EntityImpl<host::BlockReference> {
 public:
  using EntityImpl::EntityImpl;

 protected:
  dxf::Insert I() const { return dxf::Insert(E()); }
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(I().block_name());
  }
  Result<std::string> DoEffectiveName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(dxf::EffectiveBlockName(*D().doc, I()));
  }
  Result<double> DoRotation() const override {
    if (Status s = Live(); !s.ok()) return s;
    return I().rotation() * kDeg;
  }
  Result<double> DoXScaleFactor() const override {
    if (Status s = Live(); !s.ok()) return s;
    return I().scale().x;
  }
  Result<double> DoYScaleFactor() const override {
    if (Status s = Live(); !s.ok()) return s;
    return I().scale().y;
  }
  Result<host::Point> DoInsertionPoint() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Vec3 p = I().insert_point();
    return host::Point{p.x, p.y, p.z};
  }
  Result<bool> DoHasAttributes() const override {
    if (Status s = Live(); !s.ok()) return s;
    return !I().attribs().empty();
  }
  Result<std::vector<host::AttributePtr>> DoGetAttributes() const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<host::AttributePtr> out;
    for (const dxf::Attrib& a : I().attribs()) {
      if (a.erased()) continue;
      out.push_back(std::make_shared<DxfAttribute>(d_, a.id()));
    }
    return out;
  }
  Result<std::vector<host::AttributePtr>> DoGetConstantAttributes()
      const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<host::AttributePtr> out;
    dxf::Block* block = D().doc->FindBlock(I().block_name());
    if (block == nullptr) return out;
    for (dxf::RecordId id : block->entities) {
      dxf::Entity e = D().entity(id);
      if (e.erased() || e.type() != "ATTDEF") continue;
      if (dxf::Attrib(e).flags() & 2) {
        out.push_back(std::make_shared<DxfAttribute>(d_, id));
      }
    }
    return out;
  }
};

// TEXT and MTEXT keep their string, insertion point, height and style in
// the same group codes; Record is the dxf view that reads them.
template <typename Base, typename Record>
class PlacedTextImpl : public EntityImpl<Base> {
 public:
  using EntityImpl<Base>::EntityImpl;

 protected:
  Record R() const { return Record(this->E()); }

  Result<std::string> DoTextString() const override {
    if (Status s = this->Live(); !s.ok()) return s;
    return this->D().Decode(R().text());
  }
  Status DoSetTextString(std::string_view text) override {
    if (Status s = this->Live(); !s.ok()) return s;
    R().SetText(this->D().Encode(text));
    return Status();
  }
  Result<host::Point> DoInsertionPoint() const override {
    if (Status s = this->Live(); !s.ok()) return s;
    dxf::Vec3 p = R().insert_point();
    return host::Point{p.x, p.y, p.z};
  }
  Status DoSetInsertionPoint(const host::Point& p) override {
    if (Status s = this->Live(); !s.ok()) return s;
    this->E().SetPoint(10, dxf::Vec3{p.x, p.y, p.z});
    return Status();
  }
  Result<double> DoHeight() const override {
    if (Status s = this->Live(); !s.ok()) return s;
    return R().height();
  }
  Status DoSetHeight(double h) override {
    if (Status s = this->Live(); !s.ok()) return s;
    if (h <= 0) return Status::InvalidArgument("text height must be positive");
    this->E().SetDouble(40, h);
    return Status();
  }
  Result<std::string> DoStyleName() const override {
    if (Status s = this->Live(); !s.ok()) return s;
    return this->D().Decode(R().style());
  }
  Status DoSetStyleName(std::string_view style) override {
    if (Status s = this->Live(); !s.ok()) return s;
    std::string raw = this->D().Encode(style);
    if (!this->D().doc->FindTableEntry("STYLE", raw).valid()) {
      return Status::NotFound("text style \"" + std::string(style) +
                              "\" does not exist");
    }
    this->E().Set(7, raw);
    return Status();
  }
};

using DxfText = PlacedTextImpl<host::Text, dxf::Text>;

class DxfMText : public PlacedTextImpl<host::MText, dxf::MText> {
 public:
  using PlacedTextImpl::PlacedTextImpl;

 protected:
  Result<int32_t> DoAttachmentPoint() const override {
    if (Status s = Live(); !s.ok()) return s;
    return static_cast<int32_t>(R().attachment());
  }
  Status DoSetAttachmentPoint(int32_t attachment) override {
    if (Status s = Live(); !s.ok()) return s;
    if (attachment < 1 || attachment > 9) {
      return Status::InvalidArgument("attachment point out of 1..9");
    }
    // The insertion point is the attachment point, so it stays put.
    E().SetInt(71, attachment);
    return Status();
  }
  Result<double> DoWidth() const override {
    if (Status s = Live(); !s.ok()) return s;
    return R().width();
  }
  Status DoSetWidth(double width) override {
    if (Status s = Live(); !s.ok()) return s;
    E().SetDouble(41, width);
    return Status();
  }
};

class DxfMLeader : public EntityImpl<host::MLeader> {
 public:
  using EntityImpl::EntityImpl;

 protected:
  Result<std::string> DoTextString() const override {
    if (Status s = Live(); !s.ok()) return s;
    return D().Decode(dxf::MLeader(E()).text());
  }
  Status DoSetTextString(std::string_view text) override {
    if (Status s = Live(); !s.ok()) return s;
    if (!dxf::MLeader(E()).SetText(D().Encode(text))) {
      return Status::Refused("the multileader holds no text");
    }
    return Status();
  }
};

// Paper-space viewports. Angles are radians here and degrees in the file;
// the scale is 41 / 45 (paper height over model view height).
class DxfPViewport : public EntityImpl<host::PViewport> {
 public:
  using EntityImpl::EntityImpl;

 protected:
  dxf::Viewport V() const { return dxf::Viewport(E()); }
  Result<host::Point> DoCenter() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Vec3 c = V().center();
    return host::Point{c.x, c.y, c.z};
  }
  Status DoSetCenter(const host::Point& c) override {
    if (Status s = Live(); !s.ok()) return s;
    V().SetCenter(dxf::Vec3{c.x, c.y, c.z});
    return Status();
  }
  Result<double> DoWidth() const override {
    if (Status s = Live(); !s.ok()) return s;
    return V().width();
  }
  Status DoSetWidth(double w) override {
    if (Status s = Live(); !s.ok()) return s;
    if (w <= 0) return Status::InvalidArgument("width must be positive");
    V().SetSize(w, V().height());
    return Status();
  }
  Result<double> DoHeight() const override {
    if (Status s = Live(); !s.ok()) return s;
    return V().height();
  }
  Status DoSetHeight(double h) override {
    if (Status s = Live(); !s.ok()) return s;
    if (h <= 0) return Status::InvalidArgument("height must be positive");
    // A CAD program keeps the scale when the frame grows: the model view
    // height follows the paper height.
    double scale = Scale();
    V().SetSize(V().width(), h);
    if (scale > 0) V().SetViewHeight(h / scale);
    return Status();
  }
  Result<host::Point> DoDirection() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Vec3 d = V().view_direction();
    return host::Point{d.x, d.y, d.z};
  }
  Status DoSetDirection(const host::Point& d) override {
    if (Status s = Live(); !s.ok()) return s;
    if (d.x == 0 && d.y == 0 && d.z == 0) {
      return Status::InvalidArgument("a view direction cannot be zero");
    }
    E().SetPoint(16, dxf::Vec3{d.x, d.y, d.z});
    return Status();
  }
  Result<int32_t> DoStandardScale() const override {
    if (Status s = Live(); !s.ok()) return s;
    // DXF stores no standard scale: every viewport reads as custom.
    return host::kCustomScale;
  }
  Status DoSetStandardScale(int32_t standard_scale) override {
    if (Status s = Live(); !s.ok()) return s;
    if (standard_scale != host::kCustomScale) {
      return Status::NotSupported(
          "only the custom standard scale (16) is supported by this host");
    }
    return Status();
  }
  Result<double> DoCustomScale() const override {
    if (Status s = Live(); !s.ok()) return s;
    double scale = Scale();
    if (scale <= 0) return Status::Refused("the viewport has no view height");
    return scale;
  }
  Status DoSetCustomScale(double scale) override {
    if (Status s = Live(); !s.ok()) return s;
    if (!(scale > 0)) return Status::InvalidArgument("scale must be positive");
    V().SetViewHeight(V().height() / scale);
    return Status();
  }
  Status DoDisplay(bool on) override { return DoSetViewportOn(on); }
  Result<bool> DoViewportOn() const override {
    if (Status s = Live(); !s.ok()) return s;
    return V().is_on();
  }
  Status DoSetViewportOn(bool on) override {
    if (Status s = Live(); !s.ok()) return s;
    if (!on) {
      V().SetOn(false);
      return Status();
    }
    if (V().is_on() && V().status() > 0) return Status();
    // 68 must be unique among the layout's viewports that are on.
    int next = 1;
    if (dxf::Block* block = D().BlockOfEntity(id_)) {
      for (dxf::RecordId id : block->entities) {
        dxf::Entity e = D().entity(id);
        if (!e.erased() && e.type() == "VIEWPORT") {
          next = std::max(next, dxf::Viewport(e).status() + 1);
        }
      }
    }
    V().SetOn(true, next);
    return Status();
  }
  Result<double> DoTwistAngle() const override {
    if (Status s = Live(); !s.ok()) return s;
    double a = std::fmod(V().twist() * kDeg, 2 * std::numbers::pi);
    return a < 0 ? a + 2 * std::numbers::pi : a;
  }
  Status DoSetTwistAngle(double angle) override {
    if (Status s = Live(); !s.ok()) return s;
    // Stored non-negative, as CAD programs write it (330 for -30).
    double deg = std::fmod(angle / kDeg, 360.0);
    if (deg < 0) deg += 360.0;
    V().SetTwist(deg);
    return Status();
  }
  Result<host::Point> DoTarget() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Vec3 t = V().view_target();
    return host::Point{t.x, t.y, t.z};
  }
  Status DoSetTarget(const host::Point& t) override {
    if (Status s = Live(); !s.ok()) return s;
    E().SetPoint(17, dxf::Vec3{t.x, t.y, t.z});
    return Status();
  }
  Result<bool> DoDisplayLocked() const override {
    if (Status s = Live(); !s.ok()) return s;
    return V().is_locked();
  }
  Status DoSetDisplayLocked(bool locked) override {
    if (Status s = Live(); !s.ok()) return s;
    V().SetLocked(locked);
    return Status();
  }

 private:
  double Scale() const {
    double vh = V().view_height();
    return vh > 0 ? V().height() / vh : 0;
  }
};

}  // namespace

std::string ObjectNameOfType(std::string_view type) {
  static const std::pair<std::string_view, std::string_view> kNames[] = {
      {"LWPOLYLINE", "AcDbPolyline"},
      {"INSERT", "AcDbBlockReference"},
      {"VIEWPORT", "AcDbViewport"},
      {"TEXT", "AcDbText"},
      {"MTEXT", "AcDbMText"},
      {"MULTILEADER", "AcDbMLeader"},
      {"MLEADER", "AcDbMLeader"},
      {"LINE", "AcDbLine"},
      {"CIRCLE", "AcDbCircle"},
      {"ARC", "AcDbArc"},
      {"ELLIPSE", "AcDbEllipse"},
      {"SPLINE", "AcDbSpline"},
      {"POINT", "AcDbPoint"},
      {"ATTRIB", "AcDbAttribute"},
      {"ATTDEF", "AcDbAttributeDefinition"},
      {"HATCH", "AcDbHatch"},
      {"SOLID", "AcDbTrace"},
      {"TRACE", "AcDbTrace"},
      {"3DFACE", "AcDbFace"},
      {"DIMENSION", "AcDbDimension"},
      {"LEADER", "AcDbLeader"},
      {"IMAGE", "AcDbRasterImage"},
      {"WIPEOUT", "AcDbWipeout"},
      {"ACAD_TABLE", "AcDbTable"},
      {"XLINE", "AcDbXline"},
      {"RAY", "AcDbRay"},
      {"3DSOLID", "AcDb3dSolid"},
      {"REGION", "AcDbRegion"},
      {"MLINE", "AcDbMline"},
      {"SEQEND", "AcDbSequenceEnd"},
      {"VERTEX", "AcDbVertex"},
  };
  for (const auto& [dxf_type, name] : kNames) {
    if (type == dxf_type) return std::string(name);
  }
  if (type == "POLYLINE") return "AcDb2dPolyline";
  // Unknown types: the CAD naming pattern, e.g. "AcDbShape" for SHAPE.
  std::string out = "AcDb";
  bool upper = true;
  for (char c : type) {
    if (c == '_') {
      upper = true;
      continue;
    }
    out += upper
               ? c
               : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    upper = false;
  }
  return out;
}

host::EntityPtr MakeEntity(const std::shared_ptr<Drawing>& d,
                           dxf::RecordId id) {
  std::string_view type = d->entity(id).type();
  if (type == "LWPOLYLINE") return std::make_shared<DxfPolyline>(d, id);
  if (type == "INSERT") return std::make_shared<DxfBlockReference>(d, id);
  if (type == "ATTRIB" || type == "ATTDEF") {
    return std::make_shared<DxfAttribute>(d, id);
  }
  if (type == "VIEWPORT") return std::make_shared<DxfPViewport>(d, id);
  if (type == "TEXT") return std::make_shared<DxfText>(d, id);
  if (type == "MTEXT") return std::make_shared<DxfMText>(d, id);
  if (type == "MULTILEADER" || type == "MLEADER") {
    return std::make_shared<DxfMLeader>(d, id);
  }
  return std::make_shared<DxfEntity>(d, id);
}

dxf::RecordId RecordOf(const host::Entity& entity, const Drawing* drawing) {
  const auto* holder = dynamic_cast<const RecordHolder*>(&entity);
  if (holder == nullptr || holder->drawing() != drawing) return dxf::kNoRecord;
  return holder->record();
}

}  // namespace lmt::dxfhost
