#include "host/entity.h"

namespace lmt::host {

Result<std::vector<std::string>> Entity::DoGetXData(
    std::string_view /*application*/) const {
  return Unsupported("Entity.GetXData");
}

Status Entity::DoSetXData(std::string_view /*application*/,
                          const std::vector<std::string>& /*strings*/) {
  return Unsupported("Entity.SetXData");
}

Result<std::string> Entity::DoObjectName() const {
  return Unsupported("Entity.ObjectName");
}

Result<uint64_t> Entity::DoObjectID() const {
  return Unsupported("Entity.ObjectID");
}

Result<std::string> Entity::DoHandle() const {
  return Unsupported("Entity.Handle");
}

Result<uint64_t> Entity::DoOwnerID() const {
  return Unsupported("Entity.OwnerID");
}

Result<std::string> Entity::DoLayer() const {
  return Unsupported("Entity.Layer");
}

Status Entity::DoSetLayer(std::string_view /*layer*/) {
  return Unsupported("Entity.SetLayer");
}

Result<int32_t> Entity::DoColor() const { return Unsupported("Entity.Color"); }

Status Entity::DoSetColor(int32_t /*color*/) {
  return Unsupported("Entity.SetColor");
}

Result<std::string> Entity::DoLinetype() const {
  return Unsupported("Entity.Linetype");
}

Status Entity::DoSetLinetype(std::string_view /*linetype*/) {
  return Unsupported("Entity.SetLinetype");
}

Result<int32_t> Entity::DoLineWeight() const {
  return Unsupported("Entity.LineWeight");
}

Status Entity::DoSetLineWeight(int32_t /*line_weight*/) {
  return Unsupported("Entity.SetLineWeight");
}

Result<bool> Entity::DoVisible() const { return Unsupported("Entity.Visible"); }

Status Entity::DoSetVisible(bool /*visible*/) {
  return Unsupported("Entity.SetVisible");
}

Result<BoundingBox> Entity::DoGetBoundingBox() const {
  return Unsupported("Entity.GetBoundingBox");
}

Status Entity::DoErase() { return Unsupported("Entity.Erase"); }

Result<EntityPtr> Entity::DoCopy() { return Unsupported("Entity.Copy"); }

Status Entity::DoMove(const Point& /*from*/, const Point& /*to*/) {
  return Unsupported("Entity.Move");
}

Status Entity::DoUpdate() { return Unsupported("Entity.Update"); }

Result<std::vector<double>> Polyline::DoCoordinates() const {
  return Unsupported("Polyline.Coordinates");
}

Result<Point> Polyline::DoCoordinate(int32_t /*index*/) const {
  return Unsupported("Polyline.Coordinate");
}

Result<bool> Polyline::DoClosed() const {
  return Unsupported("Polyline.Closed");
}

Status Polyline::DoSetClosed(bool /*closed*/) {
  return Unsupported("Polyline.SetClosed");
}

Result<std::string> BlockReference::DoName() const {
  return Unsupported("BlockReference.Name");
}

Result<std::string> BlockReference::DoEffectiveName() const {
  return Unsupported("BlockReference.EffectiveName");
}

Result<double> BlockReference::DoRotation() const {
  return Unsupported("BlockReference.Rotation");
}

Result<double> BlockReference::DoXScaleFactor() const {
  return Unsupported("BlockReference.XScaleFactor");
}

Result<double> BlockReference::DoYScaleFactor() const {
  return Unsupported("BlockReference.YScaleFactor");
}

Result<Point> BlockReference::DoInsertionPoint() const {
  return Unsupported("BlockReference.InsertionPoint");
}

Result<bool> BlockReference::DoHasAttributes() const {
  return Unsupported("BlockReference.HasAttributes");
}

Result<std::vector<AttributePtr>> BlockReference::DoGetAttributes() const {
  return Unsupported("BlockReference.GetAttributes");
}

Result<std::vector<AttributePtr>> BlockReference::DoGetConstantAttributes()
    const {
  return Unsupported("BlockReference.GetConstantAttributes");
}

Result<std::string> Attribute::DoTagString() const {
  return Unsupported("Attribute.TagString");
}

Result<std::string> Attribute::DoTextString() const {
  return Unsupported("Attribute.TextString");
}

Status Attribute::DoSetTextString(std::string_view /*text*/) {
  return Unsupported("Attribute.SetTextString");
}

Result<Point> PViewport::DoCenter() const {
  return Unsupported("PViewport.Center");
}

Status PViewport::DoSetCenter(const Point& /*center*/) {
  return Unsupported("PViewport.SetCenter");
}

Result<double> PViewport::DoWidth() const {
  return Unsupported("PViewport.Width");
}

Status PViewport::DoSetWidth(double /*width*/) {
  return Unsupported("PViewport.SetWidth");
}

Result<double> PViewport::DoHeight() const {
  return Unsupported("PViewport.Height");
}

Status PViewport::DoSetHeight(double /*height*/) {
  return Unsupported("PViewport.SetHeight");
}

Result<Point> PViewport::DoDirection() const {
  return Unsupported("PViewport.Direction");
}

Status PViewport::DoSetDirection(const Point& /*direction*/) {
  return Unsupported("PViewport.SetDirection");
}

Result<int32_t> PViewport::DoStandardScale() const {
  return Unsupported("PViewport.StandardScale");
}

Status PViewport::DoSetStandardScale(int32_t /*standard_scale*/) {
  return Unsupported("PViewport.SetStandardScale");
}

Result<double> PViewport::DoCustomScale() const {
  return Unsupported("PViewport.CustomScale");
}

Status PViewport::DoSetCustomScale(double /*scale*/) {
  return Unsupported("PViewport.SetCustomScale");
}

Status PViewport::DoDisplay(bool /*on*/) {
  return Unsupported("PViewport.Display");
}

Result<bool> PViewport::DoViewportOn() const {
  return Unsupported("PViewport.ViewportOn");
}

Status PViewport::DoSetViewportOn(bool /*on*/) {
  return Unsupported("PViewport.SetViewportOn");
}

Result<double> PViewport::DoTwistAngle() const {
  return Unsupported("PViewport.TwistAngle");
}

Status PViewport::DoSetTwistAngle(double /*angle*/) {
  return Unsupported("PViewport.SetTwistAngle");
}

Result<Point> PViewport::DoTarget() const {
  return Unsupported("PViewport.Target");
}

Status PViewport::DoSetTarget(const Point& /*target*/) {
  return Unsupported("PViewport.SetTarget");
}

Result<bool> PViewport::DoDisplayLocked() const {
  return Unsupported("PViewport.DisplayLocked");
}

Status PViewport::DoSetDisplayLocked(bool /*locked*/) {
  return Unsupported("PViewport.SetDisplayLocked");
}

Result<std::string> Text::DoTextString() const {
  return Unsupported("Text.TextString");
}

Status Text::DoSetTextString(std::string_view /*text*/) {
  return Unsupported("Text.SetTextString");
}

Result<Point> Text::DoInsertionPoint() const {
  return Unsupported("Text.InsertionPoint");
}

Status Text::DoSetInsertionPoint(const Point& /*point*/) {
  return Unsupported("Text.SetInsertionPoint");
}

Result<double> Text::DoHeight() const { return Unsupported("Text.Height"); }

Status Text::DoSetHeight(double /*height*/) {
  return Unsupported("Text.SetHeight");
}

Result<std::string> Text::DoStyleName() const {
  return Unsupported("Text.StyleName");
}

Status Text::DoSetStyleName(std::string_view /*style*/) {
  return Unsupported("Text.SetStyleName");
}

Result<std::string> MText::DoTextString() const {
  return Unsupported("MText.TextString");
}

Status MText::DoSetTextString(std::string_view /*text*/) {
  return Unsupported("MText.SetTextString");
}

Result<Point> MText::DoInsertionPoint() const {
  return Unsupported("MText.InsertionPoint");
}

Status MText::DoSetInsertionPoint(const Point& /*point*/) {
  return Unsupported("MText.SetInsertionPoint");
}

Result<double> MText::DoHeight() const { return Unsupported("MText.Height"); }

Status MText::DoSetHeight(double /*height*/) {
  return Unsupported("MText.SetHeight");
}

Result<std::string> MText::DoStyleName() const {
  return Unsupported("MText.StyleName");
}

Status MText::DoSetStyleName(std::string_view /*style*/) {
  return Unsupported("MText.SetStyleName");
}

Result<int32_t> MText::DoAttachmentPoint() const {
  return Unsupported("MText.AttachmentPoint");
}

Status MText::DoSetAttachmentPoint(int32_t /*attachment_point*/) {
  return Unsupported("MText.SetAttachmentPoint");
}

Result<double> MText::DoWidth() const { return Unsupported("MText.Width"); }

Status MText::DoSetWidth(double /*width*/) {
  return Unsupported("MText.SetWidth");
}

Result<std::string> MLeader::DoTextString() const {
  return Unsupported("MLeader.TextString");
}

Status MLeader::DoSetTextString(std::string_view /*text*/) {
  return Unsupported("MLeader.SetTextString");
}

}  // namespace lmt::host
