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
    return Gated("Entity.ObjectName", [&] { return DoObjectName(); });
  }
  // The session-wide object id (what ObjectIdToObject takes). Unsigned:
  // DXF hosts use the handle, and handles fill all 64 bits.
  Result<uint64_t> ObjectID() const {
    return Gated("Entity.ObjectID", [&] { return DoObjectID(); });
  }
  // The database handle as upper-case hexadecimal text.
  Result<std::string> Handle() const {
    return Gated("Entity.Handle", [&] { return DoHandle(); });
  }
  // The object id of the owning block (model space, a layout's
  // block or a block definition).
  Result<uint64_t> OwnerID() const {
    return Gated("Entity.OwnerID", [&] { return DoOwnerID(); });
  }
  Result<std::string> Layer() const {
    return Gated("Entity.Layer", [&] { return DoLayer(); });
  }
  Status SetLayer(std::string_view layer) {
    return Gated("Entity.SetLayer", [&] { return DoSetLayer(layer); });
  }
  // Colour index: 0 ByBlock, 1..255, 256 ByLayer.
  Result<int32_t> Color() const {
    return Gated("Entity.Color", [&] { return DoColor(); });
  }
  Status SetColor(int32_t color) {
    return Gated("Entity.SetColor", [&] { return DoSetColor(color); });
  }
  Result<std::string> Linetype() const {
    return Gated("Entity.Linetype", [&] { return DoLinetype(); });
  }
  Status SetLinetype(std::string_view linetype) {
    return Gated("Entity.SetLinetype", [&] { return DoSetLinetype(linetype); });
  }
  // Hundredths of a millimetre; -1 ByLayer, -2 ByBlock, -3 Default.
  Result<int32_t> LineWeight() const {
    return Gated("Entity.LineWeight", [&] { return DoLineWeight(); });
  }
  Status SetLineWeight(int32_t line_weight) {
    return Gated("Entity.SetLineWeight",
                 [&] { return DoSetLineWeight(line_weight); });
  }
  Result<bool> Visible() const {
    return Gated("Entity.Visible", [&] { return DoVisible(); });
  }
  Status SetVisible(bool visible) {
    return Gated("Entity.SetVisible", [&] { return DoSetVisible(visible); });
  }
  // World extents; kRefused when the entity has none (empty geometry).
  Result<BoundingBox> GetBoundingBox() const {
    return Gated("Entity.GetBoundingBox", [&] { return DoGetBoundingBox(); });
  }
  Status Erase() {
    return Gated("Entity.Erase", [&] { return DoErase(); });
  }
  // A copy in the same space, of the same class (cast it with As<T>).
  Result<EntityPtr> Copy() {
    return Gated("Entity.Copy", [&] { return DoCopy(); });
  }
  // Displaces by to - from.
  Status Move(const Point& from, const Point& to) {
    return Gated("Entity.Move", [&] { return DoMove(from, to); });
  }
  // Redraws / regenerates the entity after changes.
  Status Update() {
    return Gated("Entity.Update", [&] { return DoUpdate(); });
  }
  // Extended data of one registered application: the strings (group 1000)
  // stored under its name, in order; empty when the entity has none.
  Result<std::vector<std::string>> GetXData(
      std::string_view application) const {
    return Gated("Entity.GetXData", [&] { return DoGetXData(application); });
  }
  // Replaces the application's extended data with `strings`, registering the
  // application name in the drawing when it is not yet; an empty list
  // removes the application's data. Other applications' data stay.
  Status SetXData(std::string_view application,
                  const std::vector<std::string>& strings) {
    return Gated("Entity.SetXData",
                 [&] { return DoSetXData(application, strings); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoObjectName() const {
    return Unsupported("Entity.ObjectName");
  }
  virtual Result<uint64_t> DoObjectID() const {
    return Unsupported("Entity.ObjectID");
  }
  virtual Result<std::string> DoHandle() const {
    return Unsupported("Entity.Handle");
  }
  virtual Result<uint64_t> DoOwnerID() const {
    return Unsupported("Entity.OwnerID");
  }
  virtual Result<std::string> DoLayer() const {
    return Unsupported("Entity.Layer");
  }
  virtual Status DoSetLayer(std::string_view /*layer*/) {
    return Unsupported("Entity.SetLayer");
  }
  virtual Result<int32_t> DoColor() const {
    return Unsupported("Entity.Color");
  }
  virtual Status DoSetColor(int32_t /*color*/) {
    return Unsupported("Entity.SetColor");
  }
  virtual Result<std::string> DoLinetype() const {
    return Unsupported("Entity.Linetype");
  }
  virtual Status DoSetLinetype(std::string_view /*linetype*/) {
    return Unsupported("Entity.SetLinetype");
  }
  virtual Result<int32_t> DoLineWeight() const {
    return Unsupported("Entity.LineWeight");
  }
  virtual Status DoSetLineWeight(int32_t /*line_weight*/) {
    return Unsupported("Entity.SetLineWeight");
  }
  virtual Result<bool> DoVisible() const {
    return Unsupported("Entity.Visible");
  }
  virtual Status DoSetVisible(bool /*visible*/) {
    return Unsupported("Entity.SetVisible");
  }
  virtual Result<BoundingBox> DoGetBoundingBox() const {
    return Unsupported("Entity.GetBoundingBox");
  }
  virtual Status DoErase() { return Unsupported("Entity.Erase"); }
  virtual Result<EntityPtr> DoCopy() { return Unsupported("Entity.Copy"); }
  virtual Status DoMove(const Point& /*from*/, const Point& /*to*/) {
    return Unsupported("Entity.Move");
  }
  virtual Status DoUpdate() { return Unsupported("Entity.Update"); }
  virtual Result<std::vector<std::string>> DoGetXData(
      std::string_view /*application*/) const {
    return Unsupported("Entity.GetXData");
  }
  virtual Status DoSetXData(std::string_view /*application*/,
                            const std::vector<std::string>& /*strings*/) {
    return Unsupported("Entity.SetXData");
  }
};

// A lightweight polyline ("AcDbPolyline", DXF LWPOLYLINE).
class Polyline : public Entity {
 public:
  ~Polyline() override = default;

  // Flat vertex array x1, y1, x2, y2, ... (lightweight polylines are 2D);
  // the vertex count is size() / 2.
  Result<std::vector<double>> Coordinates() const {
    return Gated("Polyline.Coordinates", [&] { return DoCoordinates(); });
  }
  // Vertex `index` (zero-based), z = 0; kNotFound past the last vertex.
  Result<Point> Coordinate(int32_t index) const {
    return Gated("Polyline.Coordinate", [&] { return DoCoordinate(index); });
  }
  Result<bool> Closed() const {
    return Gated("Polyline.Closed", [&] { return DoClosed(); });
  }
  Status SetClosed(bool closed) {
    return Gated("Polyline.SetClosed", [&] { return DoSetClosed(closed); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::vector<double>> DoCoordinates() const {
    return Unsupported("Polyline.Coordinates");
  }
  virtual Result<Point> DoCoordinate(int32_t /*index*/) const {
    return Unsupported("Polyline.Coordinate");
  }
  virtual Result<bool> DoClosed() const {
    return Unsupported("Polyline.Closed");
  }
  virtual Status DoSetClosed(bool /*closed*/) {
    return Unsupported("Polyline.SetClosed");
  }
};

// A block reference or an external reference ("AcDbBlockReference",
// DXF INSERT); Blocks().Item(Name()) tells which through IsXRef().
class BlockReference : public Entity {
 public:
  ~BlockReference() override = default;

  // The referenced block's name (for a dynamic block the anonymous "*U.."
  // name).
  Result<std::string> Name() const {
    return Gated("BlockReference.Name", [&] { return DoName(); });
  }
  // The real block name, also for references of a dynamic block.
  Result<std::string> EffectiveName() const {
    return Gated("BlockReference.EffectiveName",
                 [&] { return DoEffectiveName(); });
  }
  // Radians.
  Result<double> Rotation() const {
    return Gated("BlockReference.Rotation", [&] { return DoRotation(); });
  }
  Result<double> XScaleFactor() const {
    return Gated("BlockReference.XScaleFactor",
                 [&] { return DoXScaleFactor(); });
  }
  Result<double> YScaleFactor() const {
    return Gated("BlockReference.YScaleFactor",
                 [&] { return DoYScaleFactor(); });
  }
  Result<Point> InsertionPoint() const {
    return Gated("BlockReference.InsertionPoint",
                 [&] { return DoInsertionPoint(); });
  }
  Result<bool> HasAttributes() const {
    return Gated("BlockReference.HasAttributes",
                 [&] { return DoHasAttributes(); });
  }
  // The attribute references, in their order.
  Result<std::vector<AttributePtr>> GetAttributes() const {
    return Gated("BlockReference.GetAttributes",
                 [&] { return DoGetAttributes(); });
  }
  // The constant attributes of the definition.
  Result<std::vector<AttributePtr>> GetConstantAttributes() const {
    return Gated("BlockReference.GetConstantAttributes",
                 [&] { return DoGetConstantAttributes(); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("BlockReference.Name");
  }
  virtual Result<std::string> DoEffectiveName() const {
    return Unsupported("BlockReference.EffectiveName");
  }
  virtual Result<double> DoRotation() const {
    return Unsupported("BlockReference.Rotation");
  }
  virtual Result<double> DoXScaleFactor() const {
    return Unsupported("BlockReference.XScaleFactor");
  }
  virtual Result<double> DoYScaleFactor() const {
    return Unsupported("BlockReference.YScaleFactor");
  }
  virtual Result<Point> DoInsertionPoint() const {
    return Unsupported("BlockReference.InsertionPoint");
  }
  virtual Result<bool> DoHasAttributes() const {
    return Unsupported("BlockReference.HasAttributes");
  }
  virtual Result<std::vector<AttributePtr>> DoGetAttributes() const {
    return Unsupported("BlockReference.GetAttributes");
  }
  virtual Result<std::vector<AttributePtr>> DoGetConstantAttributes() const {
    return Unsupported("BlockReference.GetConstantAttributes");
  }
};

// An attribute of a block reference ("AcDbAttribute"), or a constant
// attribute of a definition ("AcDbAttributeDefinition").
class Attribute : public Entity {
 public:
  ~Attribute() override = default;

  Result<std::string> TagString() const {
    return Gated("Attribute.TagString", [&] { return DoTagString(); });
  }
  Result<std::string> TextString() const {
    return Gated("Attribute.TextString", [&] { return DoTextString(); });
  }
  Status SetTextString(std::string_view text) {
    return Gated("Attribute.SetTextString",
                 [&] { return DoSetTextString(text); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTagString() const {
    return Unsupported("Attribute.TagString");
  }
  virtual Result<std::string> DoTextString() const {
    return Unsupported("Attribute.TextString");
  }
  virtual Status DoSetTextString(std::string_view /*text*/) {
    return Unsupported("Attribute.SetTextString");
  }
};

// A paper-space viewport ("AcDbViewport").
class PViewport : public Entity {
 public:
  ~PViewport() override = default;

  // Paper-space centre.
  Result<Point> Center() const {
    return Gated("PViewport.Center", [&] { return DoCenter(); });
  }
  Status SetCenter(const Point& center) {
    return Gated("PViewport.SetCenter", [&] { return DoSetCenter(center); });
  }
  // Paper units.
  Result<double> Width() const {
    return Gated("PViewport.Width", [&] { return DoWidth(); });
  }
  Status SetWidth(double width) {
    return Gated("PViewport.SetWidth", [&] { return DoSetWidth(width); });
  }
  // Paper units.
  Result<double> Height() const {
    return Gated("PViewport.Height", [&] { return DoHeight(); });
  }
  Status SetHeight(double height) {
    return Gated("PViewport.SetHeight", [&] { return DoSetHeight(height); });
  }
  // View direction; (0, 0, 1) is plan view.
  Result<Point> Direction() const {
    return Gated("PViewport.Direction", [&] { return DoDirection(); });
  }
  Status SetDirection(const Point& direction) {
    return Gated("PViewport.SetDirection",
                 [&] { return DoSetDirection(direction); });
  }
  // 16 (kCustomScale) means CustomScale applies.
  Result<int32_t> StandardScale() const {
    return Gated("PViewport.StandardScale", [&] { return DoStandardScale(); });
  }
  Status SetStandardScale(int32_t standard_scale) {
    return Gated("PViewport.SetStandardScale",
                 [&] { return DoSetStandardScale(standard_scale); });
  }
  // Paper units per model unit (0.01 for 1:100).
  Result<double> CustomScale() const {
    return Gated("PViewport.CustomScale", [&] { return DoCustomScale(); });
  }
  Status SetCustomScale(double scale) {
    return Gated("PViewport.SetCustomScale",
                 [&] { return DoSetCustomScale(scale); });
  }
  // The viewport's Display method: switches it on or off.
  Status Display(bool on) {
    return Gated("PViewport.Display", [&] { return DoDisplay(on); });
  }
  Result<bool> ViewportOn() const {
    return Gated("PViewport.ViewportOn", [&] { return DoViewportOn(); });
  }
  Status SetViewportOn(bool on) {
    return Gated("PViewport.SetViewportOn",
                 [&] { return DoSetViewportOn(on); });
  }
  // Radians.
  Result<double> TwistAngle() const {
    return Gated("PViewport.TwistAngle", [&] { return DoTwistAngle(); });
  }
  Status SetTwistAngle(double angle) {
    return Gated("PViewport.SetTwistAngle",
                 [&] { return DoSetTwistAngle(angle); });
  }
  // World point the view looks at.
  Result<Point> Target() const {
    return Gated("PViewport.Target", [&] { return DoTarget(); });
  }
  Status SetTarget(const Point& target) {
    return Gated("PViewport.SetTarget", [&] { return DoSetTarget(target); });
  }
  Result<bool> DisplayLocked() const {
    return Gated("PViewport.DisplayLocked", [&] { return DoDisplayLocked(); });
  }
  Status SetDisplayLocked(bool locked) {
    return Gated("PViewport.SetDisplayLocked",
                 [&] { return DoSetDisplayLocked(locked); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoCenter() const {
    return Unsupported("PViewport.Center");
  }
  virtual Status DoSetCenter(const Point& /*center*/) {
    return Unsupported("PViewport.SetCenter");
  }
  virtual Result<double> DoWidth() const {
    return Unsupported("PViewport.Width");
  }
  virtual Status DoSetWidth(double /*width*/) {
    return Unsupported("PViewport.SetWidth");
  }
  virtual Result<double> DoHeight() const {
    return Unsupported("PViewport.Height");
  }
  virtual Status DoSetHeight(double /*height*/) {
    return Unsupported("PViewport.SetHeight");
  }
  virtual Result<Point> DoDirection() const {
    return Unsupported("PViewport.Direction");
  }
  virtual Status DoSetDirection(const Point& /*direction*/) {
    return Unsupported("PViewport.SetDirection");
  }
  virtual Result<int32_t> DoStandardScale() const {
    return Unsupported("PViewport.StandardScale");
  }
  virtual Status DoSetStandardScale(int32_t /*standard_scale*/) {
    return Unsupported("PViewport.SetStandardScale");
  }
  virtual Result<double> DoCustomScale() const {
    return Unsupported("PViewport.CustomScale");
  }
  virtual Status DoSetCustomScale(double /*scale*/) {
    return Unsupported("PViewport.SetCustomScale");
  }
  virtual Status DoDisplay(bool /*on*/) {
    return Unsupported("PViewport.Display");
  }
  virtual Result<bool> DoViewportOn() const {
    return Unsupported("PViewport.ViewportOn");
  }
  virtual Status DoSetViewportOn(bool /*on*/) {
    return Unsupported("PViewport.SetViewportOn");
  }
  virtual Result<double> DoTwistAngle() const {
    return Unsupported("PViewport.TwistAngle");
  }
  virtual Status DoSetTwistAngle(double /*angle*/) {
    return Unsupported("PViewport.SetTwistAngle");
  }
  virtual Result<Point> DoTarget() const {
    return Unsupported("PViewport.Target");
  }
  virtual Status DoSetTarget(const Point& /*target*/) {
    return Unsupported("PViewport.SetTarget");
  }
  virtual Result<bool> DoDisplayLocked() const {
    return Unsupported("PViewport.DisplayLocked");
  }
  virtual Status DoSetDisplayLocked(bool /*locked*/) {
    return Unsupported("PViewport.SetDisplayLocked");
  }
};

// A single-line text ("AcDbText").
class Text : public Entity {
 public:
  ~Text() override = default;

  Result<std::string> TextString() const {
    return Gated("Text.TextString", [&] { return DoTextString(); });
  }
  Status SetTextString(std::string_view text) {
    return Gated("Text.SetTextString", [&] { return DoSetTextString(text); });
  }
  Result<Point> InsertionPoint() const {
    return Gated("Text.InsertionPoint", [&] { return DoInsertionPoint(); });
  }
  Status SetInsertionPoint(const Point& point) {
    return Gated("Text.SetInsertionPoint",
                 [&] { return DoSetInsertionPoint(point); });
  }
  Result<double> Height() const {
    return Gated("Text.Height", [&] { return DoHeight(); });
  }
  Status SetHeight(double height) {
    return Gated("Text.SetHeight", [&] { return DoSetHeight(height); });
  }
  Result<std::string> StyleName() const {
    return Gated("Text.StyleName", [&] { return DoStyleName(); });
  }
  Status SetStyleName(std::string_view style) {
    return Gated("Text.SetStyleName", [&] { return DoSetStyleName(style); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const {
    return Unsupported("Text.TextString");
  }
  virtual Status DoSetTextString(std::string_view /*text*/) {
    return Unsupported("Text.SetTextString");
  }
  virtual Result<Point> DoInsertionPoint() const {
    return Unsupported("Text.InsertionPoint");
  }
  virtual Status DoSetInsertionPoint(const Point& /*point*/) {
    return Unsupported("Text.SetInsertionPoint");
  }
  virtual Result<double> DoHeight() const { return Unsupported("Text.Height"); }
  virtual Status DoSetHeight(double /*height*/) {
    return Unsupported("Text.SetHeight");
  }
  virtual Result<std::string> DoStyleName() const {
    return Unsupported("Text.StyleName");
  }
  virtual Status DoSetStyleName(std::string_view /*style*/) {
    return Unsupported("Text.SetStyleName");
  }
};

// A multi-line text ("AcDbMText").
class MText : public Entity {
 public:
  ~MText() override = default;

  Result<std::string> TextString() const {
    return Gated("MText.TextString", [&] { return DoTextString(); });
  }
  Status SetTextString(std::string_view text) {
    return Gated("MText.SetTextString", [&] { return DoSetTextString(text); });
  }
  Result<Point> InsertionPoint() const {
    return Gated("MText.InsertionPoint", [&] { return DoInsertionPoint(); });
  }
  Status SetInsertionPoint(const Point& point) {
    return Gated("MText.SetInsertionPoint",
                 [&] { return DoSetInsertionPoint(point); });
  }
  Result<double> Height() const {
    return Gated("MText.Height", [&] { return DoHeight(); });
  }
  Status SetHeight(double height) {
    return Gated("MText.SetHeight", [&] { return DoSetHeight(height); });
  }
  Result<std::string> StyleName() const {
    return Gated("MText.StyleName", [&] { return DoStyleName(); });
  }
  Status SetStyleName(std::string_view style) {
    return Gated("MText.SetStyleName", [&] { return DoSetStyleName(style); });
  }
  // 1..9: top/middle/bottom by left/centre/right (4, 5, 6 = middle).
  Result<int32_t> AttachmentPoint() const {
    return Gated("MText.AttachmentPoint", [&] { return DoAttachmentPoint(); });
  }
  // Moves the text so that the new attachment point stays put.
  Status SetAttachmentPoint(int32_t attachment_point) {
    return Gated("MText.SetAttachmentPoint",
                 [&] { return DoSetAttachmentPoint(attachment_point); });
  }
  Result<double> Width() const {
    return Gated("MText.Width", [&] { return DoWidth(); });
  }
  Status SetWidth(double width) {
    return Gated("MText.SetWidth", [&] { return DoSetWidth(width); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const {
    return Unsupported("MText.TextString");
  }
  virtual Status DoSetTextString(std::string_view /*text*/) {
    return Unsupported("MText.SetTextString");
  }
  virtual Result<Point> DoInsertionPoint() const {
    return Unsupported("MText.InsertionPoint");
  }
  virtual Status DoSetInsertionPoint(const Point& /*point*/) {
    return Unsupported("MText.SetInsertionPoint");
  }
  virtual Result<double> DoHeight() const {
    return Unsupported("MText.Height");
  }
  virtual Status DoSetHeight(double /*height*/) {
    return Unsupported("MText.SetHeight");
  }
  virtual Result<std::string> DoStyleName() const {
    return Unsupported("MText.StyleName");
  }
  virtual Status DoSetStyleName(std::string_view /*style*/) {
    return Unsupported("MText.SetStyleName");
  }
  virtual Result<int32_t> DoAttachmentPoint() const {
    return Unsupported("MText.AttachmentPoint");
  }
  virtual Status DoSetAttachmentPoint(int32_t /*attachment_point*/) {
    return Unsupported("MText.SetAttachmentPoint");
  }
  virtual Result<double> DoWidth() const { return Unsupported("MText.Width"); }
  virtual Status DoSetWidth(double /*width*/) {
    return Unsupported("MText.SetWidth");
  }
};

// A multileader ("AcDbMLeader"); only its text content is modelled.
class MLeader : public Entity {
 public:
  ~MLeader() override = default;

  Result<std::string> TextString() const {
    return Gated("MLeader.TextString", [&] { return DoTextString(); });
  }
  Status SetTextString(std::string_view text) {
    return Gated("MLeader.SetTextString",
                 [&] { return DoSetTextString(text); });
  }

 protected:
  using Entity::Entity;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoTextString() const {
    return Unsupported("MLeader.TextString");
  }
  virtual Status DoSetTextString(std::string_view /*text*/) {
    return Unsupported("MLeader.SetTextString");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_ENTITY_H_
