#include "host/document.h"

namespace lmt::host {

Result<Point> Viewport::DoDirection() const {
  return Unsupported("Viewport.Direction");
}

Status Viewport::DoSetDirection(const Point& /*direction*/) {
  return Unsupported("Viewport.SetDirection");
}

Result<Point> Utility::DoGetPoint(const std::optional<Point>& /*base*/,
                                  std::string_view /*prompt*/) {
  return Unsupported("Utility.GetPoint");
}

Result<double> Utility::DoGetDistance(const std::optional<Point>& /*base*/,
                                      std::string_view /*prompt*/) {
  return Unsupported("Utility.GetDistance");
}

Status Utility::DoPrompt(std::string_view /*text*/) {
  return Unsupported("Utility.Prompt");
}

Result<Point> Utility::DoTranslateCoordinates(const Point& /*point*/,
                                              CoordinateSystem /*from*/,
                                              CoordinateSystem /*to*/,
                                              bool /*displacement*/) const {
  return Unsupported("Utility.TranslateCoordinates");
}

Result<BlockPtr> Database::DoModelSpace() const {
  return Unsupported("Database.ModelSpace");
}

Result<BlockPtr> Database::DoPaperSpace() const {
  return Unsupported("Database.PaperSpace");
}

Result<BlocksPtr> Database::DoBlocks() const {
  return Unsupported("Database.Blocks");
}

Result<LayersPtr> Database::DoLayers() const {
  return Unsupported("Database.Layers");
}

Result<LinetypesPtr> Database::DoLinetypes() const {
  return Unsupported("Database.Linetypes");
}

Result<TextStylesPtr> Database::DoTextStyles() const {
  return Unsupported("Database.TextStyles");
}

Result<LayoutsPtr> Database::DoLayouts() const {
  return Unsupported("Database.Layouts");
}

Result<std::vector<EntityPtr>> Database::DoCopyObjects(
    const std::vector<EntityPtr>& /*objects*/, const BlockPtr& /*owner*/) {
  return Unsupported("Database.CopyObjects");
}

Result<ObjectPtr> Database::DoObjectIdToObject(uint64_t /*object_id*/) const {
  return Unsupported("Database.ObjectIdToObject");
}

Result<bool> Database::DoHasView(std::string_view /*name*/) const {
  return Unsupported("Database.HasView");
}

Status Database::DoSetView(const NamedView& /*view*/) {
  return Unsupported("Database.SetView");
}

Result<std::string> Document::DoName() const {
  return Unsupported("Document.Name");
}

Result<std::string> Document::DoFullName() const {
  return Unsupported("Document.FullName");
}

Result<ApplicationPtr> Document::DoApplication() const {
  return Unsupported("Document.Application");
}

Result<Variant> Document::DoGetVariable(std::string_view /*name*/) const {
  return Unsupported("Document.GetVariable");
}

Status Document::DoSetVariable(std::string_view /*name*/,
                               const Variant& /*value*/) {
  return Unsupported("Document.SetVariable");
}

Status Document::DoSendCommand(std::string_view /*command*/) {
  return Unsupported("Document.SendCommand");
}

Result<LayoutPtr> Document::DoActiveLayout() const {
  return Unsupported("Document.ActiveLayout");
}

Status Document::DoSetActiveLayout(const LayoutPtr& /*layout*/) {
  return Unsupported("Document.SetActiveLayout");
}

Result<Space> Document::DoActiveSpace() const {
  return Unsupported("Document.ActiveSpace");
}

Status Document::DoSetActiveSpace(Space /*space*/) {
  return Unsupported("Document.SetActiveSpace");
}

Result<bool> Document::DoMSpace() const {
  return Unsupported("Document.MSpace");
}

Status Document::DoSetMSpace(bool /*in_model*/) {
  return Unsupported("Document.SetMSpace");
}

Result<PViewportPtr> Document::DoActivePViewport() const {
  return Unsupported("Document.ActivePViewport");
}

Status Document::DoSetActivePViewport(const PViewportPtr& /*viewport*/) {
  return Unsupported("Document.SetActivePViewport");
}

Result<ViewportPtr> Document::DoActiveViewport() const {
  return Unsupported("Document.ActiveViewport");
}

Status Document::DoSetActiveViewport(const ViewportPtr& /*viewport*/) {
  return Unsupported("Document.SetActiveViewport");
}

Result<LayerPtr> Document::DoActiveLayer() const {
  return Unsupported("Document.ActiveLayer");
}

Status Document::DoSetActiveLayer(const LayerPtr& /*layer*/) {
  return Unsupported("Document.SetActiveLayer");
}

Result<TextStylePtr> Document::DoActiveTextStyle() const {
  return Unsupported("Document.ActiveTextStyle");
}

Status Document::DoSetActiveTextStyle(const TextStylePtr& /*style*/) {
  return Unsupported("Document.SetActiveTextStyle");
}

Result<SelectionSetsPtr> Document::DoSelectionSets() const {
  return Unsupported("Document.SelectionSets");
}

Result<UtilityPtr> Document::DoUtility() const {
  return Unsupported("Document.Utility");
}

Status Document::DoSaveAs(std::string_view /*path*/, int32_t /*save_type*/) {
  return Unsupported("Document.SaveAs");
}

Status Document::DoClose(bool /*save_changes*/) {
  return Unsupported("Document.Close");
}

Result<std::string> DbxDocument::DoName() const {
  return Unsupported("DbxDocument.Name");
}

Status DbxDocument::DoOpen(std::string_view /*path*/) {
  return Unsupported("DbxDocument.Open");
}

Status DbxDocument::DoDxfIn(std::string_view /*path*/) {
  return Unsupported("DbxDocument.DxfIn");
}

Status DbxDocument::DoDxfOut(std::string_view /*path*/) {
  return Unsupported("DbxDocument.DxfOut");
}

Status DbxDocument::DoSaveAs(std::string_view /*path*/) {
  return Unsupported("DbxDocument.SaveAs");
}

Result<int32_t> Documents::DoCount() const {
  return Unsupported("Documents.Count");
}

Result<DocumentPtr> Documents::DoItemAt(int32_t /*index*/) const {
  return Unsupported("Documents.Item");
}

Result<std::vector<DocumentPtr>> Documents::DoItems() const {
  return Unsupported("Documents.Items");
}

Result<DocumentPtr> Documents::DoOpen(std::string_view /*path*/) {
  return Unsupported("Documents.Open");
}

}  // namespace lmt::host
