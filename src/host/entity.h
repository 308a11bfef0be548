// Entities of the CAD object model: the Entity base and the kinds the
// add-in reads or edits. Every public member asks the application's call gate
// first (so a host can be made to refuse it, see call_gate.h) and then runs the
// host's protected Do* implementation. Gate names are "Class.Member" with the
// class that declares the member, e.g. "Entity.Layer",
// "PViewport.SetCustomScale". Nothing here throws; each call returns Status or
// Result<T>.
#ifndef LMT_HOST_ENTITY_H_
#define LMT_HOST_ENTITY_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"

namespace lmt::host {

// Standard scale value that makes CustomScale apply.
inline constexpr int32_t kCustomScale = 16;

// A drawing object of any kind. Hosts hand out the most derived class they
// know (Polyline, BlockReference, ...); ObjectName() and the class agree.
class Entity : public Object {
 public:
  ~Entity() override = default;

  // The class name, e.g. "AcDbPolyline", "AcDbBlockReference",
  // "AcDbViewport", "AcDbText", "AcDbMText", "AcDbMLeader".
  Result<std::string> ObjectName() const {
    if (Status s = Enter("Entity.ObjectName"); !s.ok()) return s;
    return DoObjectName();
  }
  // The session-wide object id (what ObjectIdToObject takes). Unsigned:
  // DXF hosts use the handle, and handles fill all 64 bits.
  Result<uint64_t> ObjectID() const {
    if (Status s = Enter("Entity.ObjectID"); !s.ok()) return s;
    return DoObjectID();
  }
  // The database handle as upper-case hexadecimal text.
  Result<std::string> Handle() const {
    if (Status s = Enter("Entity.Handle"); !s.ok()) return s;
    return DoHandle();
  }
  // The object id of the owning block (model space, a layout's
  // block or a block definition).
  Result<uint64_t> OwnerID() const {
    if (Status s = Enter("Entity.OwnerID"); !s.ok()) return s;
    return DoOwnerID();
  }
  Result<std::string> Layer() const {
    if (Status s = Enter("Entity.Layer"); !s.ok()) return s;
    return DoLayer();
  }
  Status SetLayer(std::string_view layer) {
    if (Status s = Enter("Entity.SetLayer"); !s.ok()) return s;
    return DoSetLayer(layer);
  }
  // Colour index: 0 ByBlock, 1..255, 256 ByLayer.
  Result<int32_t> Color() const {
    if (Status s = Enter("Entity.Color"); !s.ok()) return s;
    return DoColor();
  }
  Status SetColor(int32_t color) {
    if (Status s = Enter("Entity.SetColor"); !s.ok()) return s;
    return DoSetColor(color);
  }
  Result<std::string> Linetype() const {
    if (Status s = Enter("Entity.Linetype"); !s.ok()) return s;
    return DoLinetype();
  }
  Status SetLinetype(std::string_view linetype) {
    if (Status s = Enter("Entity.SetLinetype"); !s.ok()) return s;
    return DoSetLinetype(linetype);
  }
  // Hundredths of a millimetre; -1 ByLayer, -2 ByBlock, -3 Default.
  Result<int32_t> LineWeight() const {
    if (Status s = Enter("Entity.LineWeight"); !s.ok()) return s;
    return DoLineWeight();
  }
  Status SetLineWeight(int32_t line_weight) {
    if (Status s = Enter("Entity.SetLineWeight"); !s.ok()) return s;
    return DoSetLineWeight(line_weight);
  }
  Result<bool> Visible() const {
    if (Status s = Enter("Entity.Visible"); !s.ok()) return s;
    return DoVisible();
  }
  Status SetVisible(bool visible) {
    if (Status s = Enter("Entity.SetVisible"); !s.ok()) return s;
    return DoSetVisible(visible);
  }
  // World extents; kRefused when the entity has none (empty geometry).
  Result<BoundingBox> GetBoundingBox() const {
    if (Status s = Enter("Entity.GetBoundingBox"); !s.ok()) return s;
    return DoGetBoundingBox();
  }
  Status Erase() {
    if (Status s = Enter("Entity.Erase"); !s.ok()) return s;
    return DoErase();
  }
  // A copy in the same space, of the same class (cast it with As<T>).
  Result<EntityPtr> Copy() {
    if (Status s = Enter("Entity.Copy"); !s.ok()) return s;
    return DoCopy();
  }
  // Displaces by to - from.
  Status Move(const Point& from, const Point& to) {
    if (Status s = Enter("Entity.Move"); !s.ok()) return s;
    return DoMove(from, to);
  }
  // Redraws / regenerates the entity after changes.
  Status Update() {
    if (Status s = Enter("Entity.Update"); !s.ok()) return s;
    return DoUpdate();
  }
  // Extended data of one registered application: the strings (group 1000)
  // stored under its name, in order; empty when the entity has none.
  Result<std::vector<std::string>> GetXData(
      std::string_view application) const {
    if (Status s = Enter("Entity.GetXData"); !s.ok()) return s;
    return DoGetXData(application);
  }
  // Replaces the application's extended data with `strings`, registering the
  // application name in the drawing when it is not yet; an empty list
  // removes the application's data. Other applications' data stay.
  Status SetXData(std::string_view application,
                  const std::vector<std::string>& strings) {
    if (Status s = Enter("Entity.SetXData"); !s.ok()) return s;
    return DoSetXData(application, strings);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoObjectName() const;
  virtual Result<uint64_t> DoObjectID() const;
  virtual Result<std::string> DoHandle() const;
  virtual Result<uint64_t> DoOwnerID() const;
  virtual Result<std::string> DoLayer() const;
  virtual Status DoSetLayer(std::string_view layer);
  virtual Result<int32_t> DoColor() const;
  virtual Status DoSetColor(int32_t color);
  virtual Result<std::string> DoLinetype() const;
  virtual Status DoSetLinetype(std::string_view linetype);
  virtual Result<int32_t> DoLineWeight() const;
  virtual Status DoSetLineWeight(int32_t line_weight);
  virtual Result<bool> DoVisible() const;
  virtual Status DoSetVisible(bool visible);
  virtual Result<BoundingBox> DoGetBoundingBox() const;
  virtual Status DoErase();
  virtual Result<EntityPtr> DoCopy();
  virtual Status DoMove(const Point& from, const Point& to);
  virtual Status DoUpdate();
  virtual Result<std::vector<std::string>> DoGetXData(
      std::string_view application) const;
  virtual Status DoSetXData(std::string_view application,
                            const std::vector<std::string>& strings);
};

// A lightweight polyline ("AcDbPolyline", DXF LWPOLYLINE).
class Polyline : public Entity {
 public:
  ~Polyline() override = default;

  // Flat vertex array x1, y1, x2, y2, ... (lightweight polylines are 2D);
  // the vertex count is size() / 2.
  Result<std::vector<double>> Coordinates() const {
    if (Status s = Enter("Polyline.Coordinates"); !s.ok()) return s;
    return DoCoordinates();
  }
  // Vertex `index` (zero-based), z = 0; kNotFound past the last vertex.
  Result<Point> Coordinate(int32_t index) const {
    if (Status s = Enter("Polyline.Coordinate"); !s.ok()) return s;
    return DoCoordinate(index);
  }
  Result<bool> Closed() const {
    if (Status s = Enter("Polyline.Closed"); !s.ok()) return s;
    return DoClosed();
  }
  Status SetClosed(bool closed) {
    if (Status s = Enter("Polyline.SetClosed"); !s.ok()) return s;
    return DoSetClosed(closed);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::vector<double>> DoCoordinates() const;
  virtual Result<Point> DoCoordinate(int32_t index) const;
  virtual Result<bool> DoClosed() const;
  virtual Status DoSetClosed(bool closed);
};

// A block reference or an external reference ("AcDbBlockReference",
// DXF INSERT); Blocks().Item(Name()) tells which through IsXRef().
class BlockReference : public Entity {
 public:
  ~BlockReference() override = default;

  // The referenced block's name (for a dynamic block the anonymous "*U.."
  // name).
  Result<std::string> Name() const {
    if (Status s = Enter("BlockReference.Name"); !s.ok()) return s;
    return DoName();
  }
  // The real block name, also for references of a dynamic block.
  Result<std::string> EffectiveName() const {
    if (Status s = Enter("BlockReference.EffectiveName"); !s.ok()) return s;
    return DoEffectiveName();
  }
  // Radians.
  Result<double> Rotation() const {
    if (Status s = Enter("BlockReference.Rotation"); !s.ok()) return s;
    return DoRotation();
  }
  Result<double> XScaleFactor() const {
    if (Status s = Enter("BlockReference.XScaleFactor"); !s.ok()) return s;
    return DoXScaleFactor();
  }
  Result<double> YScaleFactor() const {
    if (Status s = Enter("BlockReference.YScaleFactor"); !s.ok()) return s;
    return DoYScaleFactor();
  }
  Result<Point> InsertionPoint() const {
    if (Status s = Enter("BlockReference.InsertionPoint"); !s.ok()) return s;
    return DoInsertionPoint();
  }
  Result<bool> HasAttributes() const {
    if (Status s = Enter("BlockReference.HasAttributes"); !s.ok()) return s;
    return DoHasAttributes();
  }
  // The attribute references, in their order.
  Result<std::vector<AttributePtr>> GetAttributes() const {
    if (Status s = Enter("BlockReference.GetAttributes"); !s.ok()) return s;
    return DoGetAttributes();
  }
  // The constant attributes of the definition.
  Result<std::vector<AttributePtr>> GetConstantAttributes() const {
    if (Status s = Enter("BlockReference.GetConstantAttributes"); !s.ok())
      return s;
    return DoGetConstantAttributes();
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<std::string> DoEffectiveName() const;
  virtual Result<double> DoRotation() const;
  virtual Result<double> DoXScaleFactor() const;
  virtual Result<double> DoYScaleFactor() const;
  virtual Result<Point> DoInsertionPoint() const;
  virtual Result<bool> DoHasAttributes() const;
  virtual Result<std::vector<AttributePtr>> DoGetAttributes() const;
  virtual Result<std::vector<AttributePtr>> DoGetConstantAttributes() const;
};

// An attribute of a block reference ("AcDbAttribute"), or a constant
// attribute of a definition ("AcDbAttributeDefinition").
class Attribute : public Entity {
 public:
  ~Attribute() override = default;

  Result<std::string> TagString() const {
    if (Status s = Enter("Attribute.TagString"); !s.ok()) return s;
    return DoTagString();
  }
  Result<std::string> TextString() const {
    if (Status s = Enter("Attribute.TextString"); !s.ok()) return s;
    return DoTextString();
  }
  Status SetTextString(std::string_view text) {
    if (Status s = Enter("Attribute.SetTextString"); !s.ok()) return s;
    return DoSetTextString(text);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTagString() const;
  virtual Result<std::string> DoTextString() const;
  virtual Status DoSetTextString(std::string_view text);
};

// A paper-space viewport ("AcDbViewport").
class PViewport : public Entity {
 public:
  ~PViewport() override = default;

  // Paper-space centre.
  Result<Point> Center() const {
    if (Status s = Enter("PViewport.Center"); !s.ok()) return s;
    return DoCenter();
  }
  Status SetCenter(const Point& center) {
    if (Status s = Enter("PViewport.SetCenter"); !s.ok()) return s;
    return DoSetCenter(center);
  }
  // Paper units.
  Result<double> Width() const {
    if (Status s = Enter("PViewport.Width"); !s.ok()) return s;
    return DoWidth();
  }
  Status SetWidth(double width) {
    if (Status s = Enter("PViewport.SetWidth"); !s.ok()) return s;
    return DoSetWidth(width);
  }
  // Paper units.
  Result<double> Height() const {
    if (Status s = Enter("PViewport.Height"); !s.ok()) return s;
    return DoHeight();
  }
  Status SetHeight(double height) {
    if (Status s = Enter("PViewport.SetHeight"); !s.ok()) return s;
    return DoSetHeight(height);
  }
  // View direction; (0, 0, 1) is plan view.
  Result<Point> Direction() const {
    if (Status s = Enter("PViewport.Direction"); !s.ok()) return s;
    return DoDirection();
  }
  Status SetDirection(const Point& direction) {
    if (Status s = Enter("PViewport.SetDirection"); !s.ok()) return s;
    return DoSetDirection(direction);
  }
  // 16 (kCustomScale) means CustomScale applies.
  Result<int32_t> StandardScale() const {
    if (Status s = Enter("PViewport.StandardScale"); !s.ok()) return s;
    return DoStandardScale();
  }
  Status SetStandardScale(int32_t standard_scale) {
    if (Status s = Enter("PViewport.SetStandardScale"); !s.ok()) return s;
    return DoSetStandardScale(standard_scale);
  }
  // Paper units per model unit (0.01 for 1:100).
  Result<double> CustomScale() const {
    if (Status s = Enter("PViewport.CustomScale"); !s.ok()) return s;
    return DoCustomScale();
  }
  Status SetCustomScale(double scale) {
    if (Status s = Enter("PViewport.SetCustomScale"); !s.ok()) return s;
    return DoSetCustomScale(scale);
  }
  // The viewport's Display method: switches it on or off.
  Status Display(bool on) {
    if (Status s = Enter("PViewport.Display"); !s.ok()) return s;
    return DoDisplay(on);
  }
  Result<bool> ViewportOn() const {
    if (Status s = Enter("PViewport.ViewportOn"); !s.ok()) return s;
    return DoViewportOn();
  }
  Status SetViewportOn(bool on) {
    if (Status s = Enter("PViewport.SetViewportOn"); !s.ok()) return s;
    return DoSetViewportOn(on);
  }
  // Radians.
  Result<double> TwistAngle() const {
    if (Status s = Enter("PViewport.TwistAngle"); !s.ok()) return s;
    return DoTwistAngle();
  }
  Status SetTwistAngle(double angle) {
    if (Status s = Enter("PViewport.SetTwistAngle"); !s.ok()) return s;
    return DoSetTwistAngle(angle);
  }
  // World point the view looks at.
  Result<Point> Target() const {
    if (Status s = Enter("PViewport.Target"); !s.ok()) return s;
    return DoTarget();
  }
  Status SetTarget(const Point& target) {
    if (Status s = Enter("PViewport.SetTarget"); !s.ok()) return s;
    return DoSetTarget(target);
  }
  Result<bool> DisplayLocked() const {
    if (Status s = Enter("PViewport.DisplayLocked"); !s.ok()) return s;
    return DoDisplayLocked();
  }
  Status SetDisplayLocked(bool locked) {
    if (Status s = Enter("PViewport.SetDisplayLocked"); !s.ok()) return s;
    return DoSetDisplayLocked(locked);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoCenter() const;
  virtual Status DoSetCenter(const Point& center);
  virtual Result<double> DoWidth() const;
  virtual Status DoSetWidth(double width);
  virtual Result<double> DoHeight() const;
  virtual Status DoSetHeight(double height);
  virtual Result<Point> DoDirection() const;
  virtual Status DoSetDirection(const Point& direction);
  virtual Result<int32_t> DoStandardScale() const;
  virtual Status DoSetStandardScale(int32_t standard_scale);
  virtual Result<double> DoCustomScale() const;
  virtual Status DoSetCustomScale(double scale);
  virtual Status DoDisplay(bool on);
  virtual Result<bool> DoViewportOn() const;
  virtual Status DoSetViewportOn(bool on);
  virtual Result<double> DoTwistAngle() const;
  virtual Status DoSetTwistAngle(double angle);
  virtual Result<Point> DoTarget() const;
  virtual Status DoSetTarget(const Point& target);
  virtual Result<bool> DoDisplayLocked() const;
  virtual Status DoSetDisplayLocked(bool locked);
};

// A single-line text ("AcDbText").
class Text : public Entity {
 public:
  ~Text() override = default;

  Result<std::string> TextString() const {
    if (Status s = Enter("Text.TextString"); !s.ok()) return s;
    return DoTextString();
  }
  Status SetTextString(std::string_view text) {
    if (Status s = Enter("Text.SetTextString"); !s.ok()) return s;
    return DoSetTextString(text);
  }
  Result<Point> InsertionPoint() const {
    if (Status s = Enter("Text.InsertionPoint"); !s.ok()) return s;
    return DoInsertionPoint();
  }
  Status SetInsertionPoint(const Point& point) {
    if (Status s = Enter("Text.SetInsertionPoint"); !s.ok()) return s;
    return DoSetInsertionPoint(point);
  }
  Result<double> Height() const {
    if (Status s = Enter("Text.Height"); !s.ok()) return s;
    return DoHeight();
  }
  Status SetHeight(double height) {
    if (Status s = Enter("Text.SetHeight"); !s.ok()) return s;
    return DoSetHeight(height);
  }
  Result<std::string> StyleName() const {
    if (Status s = Enter("Text.StyleName"); !s.ok()) return s;
    return DoStyleName();
  }
  Status SetStyleName(std::string_view style) {
    if (Status s = Enter("Text.SetStyleName"); !s.ok()) return s;
    return DoSetStyleName(style);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const;
  virtual Status DoSetTextString(std::string_view text);
  virtual Result<Point> DoInsertionPoint() const;
  virtual Status DoSetInsertionPoint(const Point& point);
  virtual Result<double> DoHeight() const;
  virtual Status DoSetHeight(double height);
  virtual Result<std::string> DoStyleName() const;
  virtual Status DoSetStyleName(std::string_view style);
};

// A multi-line text ("AcDbMText").
class MText : public Entity {
 public:
  ~MText() override = default;

  Result<std::string> TextString() const {
    if (Status s = Enter("MText.TextString"); !s.ok()) return s;
    return DoTextString();
  }
  Status SetTextString(std::string_view text) {
    if (Status s = Enter("MText.SetTextString"); !s.ok()) return s;
    return DoSetTextString(text);
  }
  Result<Point> InsertionPoint() const {
    if (Status s = Enter("MText.InsertionPoint"); !s.ok()) return s;
    return DoInsertionPoint();
  }
  Status SetInsertionPoint(const Point& point) {
    if (Status s = Enter("MText.SetInsertionPoint"); !s.ok()) return s;
    return DoSetInsertionPoint(point);
  }
  Result<double> Height() const {
    if (Status s = Enter("MText.Height"); !s.ok()) return s;
    return DoHeight();
  }
  Status SetHeight(double height) {
    if (Status s = Enter("MText.SetHeight"); !s.ok()) return s;
    return DoSetHeight(height);
  }
  Result<std::string> StyleName() const {
    if (Status s = Enter("MText.StyleName"); !s.ok()) return s;
    return DoStyleName();
  }
  Status SetStyleName(std::string_view style) {
    if (Status s = Enter("MText.SetStyleName"); !s.ok()) return s;
    return DoSetStyleName(style);
  }
  // 1..9: top/middle/bottom by left/centre/right (4, 5, 6 = middle).
  Result<int32_t> AttachmentPoint() const {
    if (Status s = Enter("MText.AttachmentPoint"); !s.ok()) return s;
    return DoAttachmentPoint();
  }
  // Moves the text so that the new attachment point stays put.
  Status SetAttachmentPoint(int32_t attachment_point) {
    if (Status s = Enter("MText.SetAttachmentPoint"); !s.ok()) return s;
    return DoSetAttachmentPoint(attachment_point);
  }
  Result<double> Width() const {
    if (Status s = Enter("MText.Width"); !s.ok()) return s;
    return DoWidth();
  }
  Status SetWidth(double width) {
    if (Status s = Enter("MText.SetWidth"); !s.ok()) return s;
    return DoSetWidth(width);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const;
  virtual Status DoSetTextString(std::string_view text);
  virtual Result<Point> DoInsertionPoint() const;
  virtual Status DoSetInsertionPoint(const Point& point);
  virtual Result<double> DoHeight() const;
  virtual Status DoSetHeight(double height);
  virtual Result<std::string> DoStyleName() const;
  virtual Status DoSetStyleName(std::string_view style);
  virtual Result<int32_t> DoAttachmentPoint() const;
  virtual Status DoSetAttachmentPoint(int32_t attachment_point);
  virtual Result<double> DoWidth() const;
  virtual Status DoSetWidth(double width);
};

// A multileader ("AcDbMLeader"); only its text content is modelled.
class MLeader : public Entity {
 public:
  ~MLeader() override = default;

  Result<std::string> TextString() const {
    if (Status s = Enter("MLeader.TextString"); !s.ok()) return s;
    return DoTextString();
  }
  Status SetTextString(std::string_view text) {
    if (Status s = Enter("MLeader.SetTextString"); !s.ok()) return s;
    return DoSetTextString(text);
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const;
  virtual Status DoSetTextString(std::string_view text);
};

}  // namespace lmt::host

#endif  // LMT_HOST_ENTITY_H_
