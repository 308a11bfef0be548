// Documents of the CAD object model. Database carries what every drawing has
// (spaces, tables, layouts, copying); Document is a drawing open in the CAD
// program (system variables, commands, active objects, selection sets, user
// prompts, saving); DbxDocument is the ObjectDBX document that reads and writes
// drawings without showing them. Gate names and failure rules as in entity.h;
// the members of Database keep the gate names "Database.<Member>" also when
// called on a Document.
#ifndef LMT_HOST_DOCUMENT_H_
#define LMT_HOST_DOCUMENT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"
#include "host/variant.h"

namespace lmt::host {

// Which space of the document is current (ActiveSpace).
enum class Space : int32_t { kPaperSpace = 0, kModelSpace = 1 };

// Coordinate systems of Utility::TranslateCoordinates, object-model values.
enum class CoordinateSystem : int32_t {
  kWorld = 0,
  kUcs = 1,
  kDisplay = 2,
  kPaperSpaceDisplay = 3,
};

// The tiled model-space viewport (ActiveViewport).
class Viewport : public Object {
 public:
  ~Viewport() override = default;

  // View direction of the tiled model viewport; (0, 0, 1) is plan view.
  Result<Point> Direction() const {
    return Gated("Viewport.Direction", [&] { return DoDirection(); });
  }
  // Takes effect once the viewport is assigned back with
  // Document::SetActiveViewport.
  Status SetDirection(const Point& direction) {
    return Gated("Viewport.SetDirection",
                 [&] { return DoSetDirection(direction); });
  }
  // The model point shown at the view's centre (world coordinates, plan
  // view) and the height of model space the view shows; like the direction
  // they take effect through Document::SetActiveViewport.
  Result<Point> Center() const {
    return Gated("Viewport.Center", [&] { return DoCenter(); });
  }
  Status SetCenter(const Point& center) {
    return Gated("Viewport.SetCenter", [&] { return DoSetCenter(center); });
  }
  Result<double> Height() const {
    return Gated("Viewport.Height", [&] { return DoHeight(); });
  }
  Status SetHeight(double height) {
    return Gated("Viewport.SetHeight", [&] { return DoSetHeight(height); });
  }
  // The width the view shows at its height: the screen's aspect ratio.
  Result<double> Width() const {
    return Gated("Viewport.Width", [&] { return DoWidth(); });
  }
  // The view's twist in radians: a model direction at angle a is shown at
  // a + twist on the screen.
  Result<double> Twist() const {
    return Gated("Viewport.Twist", [&] { return DoTwist(); });
  }
  Status SetTwist(double twist) {
    return Gated("Viewport.SetTwist", [&] { return DoSetTwist(twist); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoDirection() const {
    return Unsupported("Viewport.Direction");
  }
  virtual Status DoSetDirection(const Point& /*direction*/) {
    return Unsupported("Viewport.SetDirection");
  }
  virtual Result<Point> DoCenter() const {
    return Unsupported("Viewport.Center");
  }
  virtual Status DoSetCenter(const Point& /*center*/) {
    return Unsupported("Viewport.SetCenter");
  }
  virtual Result<double> DoHeight() const {
    return Unsupported("Viewport.Height");
  }
  virtual Status DoSetHeight(double /*height*/) {
    return Unsupported("Viewport.SetHeight");
  }
  virtual Result<double> DoWidth() const {
    return Unsupported("Viewport.Width");
  }
  virtual Result<double> DoTwist() const {
    return Unsupported("Viewport.Twist");
  }
  virtual Status DoSetTwist(double /*twist*/) {
    return Unsupported("Viewport.SetTwist");
  }
};

// The document's plotting (Document.Plot). The programs plot the active
// layout with its page setup; a device given here replaces the layout's for
// this plot only.
class Plot : public Object {
 public:
  ~Plot() override = default;

  // Plots the active layout into `file` through `device` (a PC3 name such
  // as "DWG To PDF.pc3"; empty for the layout's own). False when the
  // program reports that nothing was plotted.
  Result<bool> PlotToFile(std::string_view file, std::string_view device) {
    return Gated("Plot.PlotToFile", [&] { return DoPlotToFile(file, device); });
  }

 protected:
  using Object::Object;

  virtual Result<bool> DoPlotToFile(std::string_view /*file*/,
                                    std::string_view /*device*/) {
    return Unsupported("Plot.PlotToFile");
  }
};

// User input and coordinate conversion.
class Utility : public Object {
 public:
  ~Utility() override = default;

  // Asks the user for a point (rubber band from `base` when given);
  // kCancelled when the user cancels.
  Result<Point> GetPoint(const std::optional<Point>& base,
                         std::string_view prompt) {
    return Gated("Utility.GetPoint", [&] { return DoGetPoint(base, prompt); });
  }
  // Asks the user for a distance, from `base` when given (a point is passed
  // to the host as the object model's point array); kCancelled on cancel.
  Result<double> GetDistance(const std::optional<Point>& base,
                             std::string_view prompt) {
    return Gated("Utility.GetDistance",
                 [&] { return DoGetDistance(base, prompt); });
  }
  // Writes `text` to the host's command line.
  Status Prompt(std::string_view text) {
    return Gated("Utility.Prompt", [&] { return DoPrompt(text); });
  }
  Result<Point> TranslateCoordinates(const Point& point, CoordinateSystem from,
                                     CoordinateSystem to,
                                     bool displacement) const {
    return Gated("Utility.TranslateCoordinates", [&] {
      return DoTranslateCoordinates(point, from, to, displacement);
    });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoGetPoint(const std::optional<Point>& /*base*/,
                                   std::string_view /*prompt*/) {
    return Unsupported("Utility.GetPoint");
  }
  virtual Result<double> DoGetDistance(const std::optional<Point>& /*base*/,
                                       std::string_view /*prompt*/) {
    return Unsupported("Utility.GetDistance");
  }
  virtual Status DoPrompt(std::string_view /*text*/) {
    return Unsupported("Utility.Prompt");
  }
  virtual Result<Point> DoTranslateCoordinates(const Point& /*point*/,
                                               CoordinateSystem /*from*/,
                                               CoordinateSystem /*to*/,
                                               bool /*displacement*/) const {
    return Unsupported("Utility.TranslateCoordinates");
  }
};

// A named view of model space in plan (the drawing's VIEW table): the world
// point at the middle of the screen, the model extent shown, and the twist
// (radians, counter-clockwise: a model direction at angle a shows at a +
// twist).
struct NamedView {
  std::string name;
  Point center;
  double width = 0;
  double height = 0;
  double twist = 0;
};

// What every drawing holds.
class Database : public Object {
 public:
  ~Database() override = default;

  Result<BlockPtr> ModelSpace() const {
    return Gated("Database.ModelSpace", [&] { return DoModelSpace(); });
  }
  // The block of the active layout (the last active one in model space).
  Result<BlockPtr> PaperSpace() const {
    return Gated("Database.PaperSpace", [&] { return DoPaperSpace(); });
  }
  Result<BlocksPtr> Blocks() const {
    return Gated("Database.Blocks", [&] { return DoBlocks(); });
  }
  Result<LayersPtr> Layers() const {
    return Gated("Database.Layers", [&] { return DoLayers(); });
  }
  Result<LinetypesPtr> Linetypes() const {
    return Gated("Database.Linetypes", [&] { return DoLinetypes(); });
  }
  Result<TextStylesPtr> TextStyles() const {
    return Gated("Database.TextStyles", [&] { return DoTextStyles(); });
  }
  Result<LayoutsPtr> Layouts() const {
    return Gated("Database.Layouts", [&] { return DoLayouts(); });
  }
  // Deep-copies `objects` into `owner` (of this or another database);
  // returns the copies in the same order.
  Result<std::vector<EntityPtr>> CopyObjects(
      const std::vector<EntityPtr>& objects, const BlockPtr& owner) {
    return Gated("Database.CopyObjects",
                 [&] { return DoCopyObjects(objects, owner); });
  }
  // Any object by id (cast with As<T>); kNotFound when unknown.
  Result<ObjectPtr> ObjectIdToObject(uint64_t object_id) const {
    return Gated("Database.ObjectIdToObject",
                 [&] { return DoObjectIdToObject(object_id); });
  }
  // Whether a named view of that name exists (without regard to case).
  Result<bool> HasView(std::string_view name) const {
    return Gated("Database.HasView", [&] { return DoHasView(name); });
  }
  // Adds the named view, replacing one of the same name.
  Status SetView(const NamedView& view) {
    return Gated("Database.SetView", [&] { return DoSetView(view); });
  }
  // The named views, in the drawing's order.
  Result<std::vector<NamedView>> Views() const {
    return Gated("Database.Views", [&] { return DoViews(); });
  }
  // Removes the named view (without regard to case); kNotFound when there
  // is none.
  Status DeleteView(std::string_view name) {
    return Gated("Database.DeleteView", [&] { return DoDeleteView(name); });
  }
  // Registers an application name for extended data (the drawing's
  // registered applications); a name already there stays as it is.
  Status RegisterApplication(std::string_view name) {
    return Gated("Database.RegisterApplication",
                 [&] { return DoRegisterApplication(name); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<BlockPtr> DoModelSpace() const {
    return Unsupported("Database.ModelSpace");
  }
  virtual Result<BlockPtr> DoPaperSpace() const {
    return Unsupported("Database.PaperSpace");
  }
  virtual Result<BlocksPtr> DoBlocks() const {
    return Unsupported("Database.Blocks");
  }
  virtual Result<LayersPtr> DoLayers() const {
    return Unsupported("Database.Layers");
  }
  virtual Result<LinetypesPtr> DoLinetypes() const {
    return Unsupported("Database.Linetypes");
  }
  virtual Result<TextStylesPtr> DoTextStyles() const {
    return Unsupported("Database.TextStyles");
  }
  virtual Result<LayoutsPtr> DoLayouts() const {
    return Unsupported("Database.Layouts");
  }
  virtual Result<std::vector<EntityPtr>> DoCopyObjects(
      const std::vector<EntityPtr>& /*objects*/, const BlockPtr& /*owner*/) {
    return Unsupported("Database.CopyObjects");
  }
  virtual Result<ObjectPtr> DoObjectIdToObject(uint64_t /*object_id*/) const {
    return Unsupported("Database.ObjectIdToObject");
  }
  virtual Result<bool> DoHasView(std::string_view /*name*/) const {
    return Unsupported("Database.HasView");
  }
  virtual Status DoSetView(const NamedView& /*view*/) {
    return Unsupported("Database.SetView");
  }
  virtual Result<std::vector<NamedView>> DoViews() const {
    return Unsupported("Database.Views");
  }
  virtual Status DoDeleteView(std::string_view /*name*/) {
    return Unsupported("Database.DeleteView");
  }
  virtual Status DoRegisterApplication(std::string_view /*name*/) {
    return Unsupported("Database.RegisterApplication");
  }
};

// A drawing open in the CAD program.
class Document : public Database {
 public:
  ~Document() override = default;

  // File name with extension, no folder.
  Result<std::string> Name() const {
    return Gated("Document.Name", [&] { return DoName(); });
  }
  // Full path; empty for a drawing never saved.
  Result<std::string> FullName() const {
    return Gated("Document.FullName", [&] { return DoFullName(); });
  }
  Result<ApplicationPtr> Application() const {
    return Gated("Document.Application", [&] { return DoApplication(); });
  }
  // A system variable; kNotFound for an unknown name.
  Result<Variant> GetVariable(std::string_view name) const {
    return Gated("Document.GetVariable", [&] { return DoGetVariable(name); });
  }
  Status SetVariable(std::string_view name, const Variant& value) {
    return Gated("Document.SetVariable",
                 [&] { return DoSetVariable(name, value); });
  }
  // Queues command-line input (commands end with a carriage return). Hosts
  // may run it after the call returns.
  Status SendCommand(std::string_view command) {
    return Gated("Document.SendCommand",
                 [&] { return DoSendCommand(command); });
  }
  Result<LayoutPtr> ActiveLayout() const {
    return Gated("Document.ActiveLayout", [&] { return DoActiveLayout(); });
  }
  Status SetActiveLayout(const LayoutPtr& layout) {
    return Gated("Document.SetActiveLayout",
                 [&] { return DoSetActiveLayout(layout); });
  }
  Result<Space> ActiveSpace() const {
    return Gated("Document.ActiveSpace", [&] { return DoActiveSpace(); });
  }
  Status SetActiveSpace(Space space) {
    return Gated("Document.SetActiveSpace",
                 [&] { return DoSetActiveSpace(space); });
  }
  // True while a paper-space viewport is entered (model space through it).
  Result<bool> MSpace() const {
    return Gated("Document.MSpace", [&] { return DoMSpace(); });
  }
  Status SetMSpace(bool in_model) {
    return Gated("Document.SetMSpace", [&] { return DoSetMSpace(in_model); });
  }
  Result<PViewportPtr> ActivePViewport() const {
    return Gated("Document.ActivePViewport",
                 [&] { return DoActivePViewport(); });
  }
  Status SetActivePViewport(const PViewportPtr& viewport) {
    return Gated("Document.SetActivePViewport",
                 [&] { return DoSetActivePViewport(viewport); });
  }
  Result<ViewportPtr> ActiveViewport() const {
    return Gated("Document.ActiveViewport", [&] { return DoActiveViewport(); });
  }
  Status SetActiveViewport(const ViewportPtr& viewport) {
    return Gated("Document.SetActiveViewport",
                 [&] { return DoSetActiveViewport(viewport); });
  }
  Result<LayerPtr> ActiveLayer() const {
    return Gated("Document.ActiveLayer", [&] { return DoActiveLayer(); });
  }
  Status SetActiveLayer(const LayerPtr& layer) {
    return Gated("Document.SetActiveLayer",
                 [&] { return DoSetActiveLayer(layer); });
  }
  Result<TextStylePtr> ActiveTextStyle() const {
    return Gated("Document.ActiveTextStyle",
                 [&] { return DoActiveTextStyle(); });
  }
  Status SetActiveTextStyle(const TextStylePtr& style) {
    return Gated("Document.SetActiveTextStyle",
                 [&] { return DoSetActiveTextStyle(style); });
  }
  Result<SelectionSetsPtr> SelectionSets() const {
    return Gated("Document.SelectionSets", [&] { return DoSelectionSets(); });
  }
  Result<UtilityPtr> Utility() const {
    return Gated("Document.Utility", [&] { return DoUtility(); });
  }
  Result<PlotPtr> Plot() const {
    return Gated("Document.Plot", [&] { return DoPlot(); });
  }
  // Saves under `path` (the host adds the extension of `save_type` when
  // `path` has none) in the format numbered `save_type`.
  Status SaveAs(std::string_view path, int32_t save_type) {
    return Gated("Document.SaveAs", [&] { return DoSaveAs(path, save_type); });
  }
  Status Close(bool save_changes) {
    return Gated("Document.Close", [&] { return DoClose(save_changes); });
  }

 protected:
  using Database::Database;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("Document.Name");
  }
  virtual Result<std::string> DoFullName() const {
    return Unsupported("Document.FullName");
  }
  virtual Result<ApplicationPtr> DoApplication() const {
    return Unsupported("Document.Application");
  }
  virtual Result<Variant> DoGetVariable(std::string_view /*name*/) const {
    return Unsupported("Document.GetVariable");
  }
  virtual Status DoSetVariable(std::string_view /*name*/,
                               const Variant& /*value*/) {
    return Unsupported("Document.SetVariable");
  }
  virtual Status DoSendCommand(std::string_view /*command*/) {
    return Unsupported("Document.SendCommand");
  }
  virtual Result<LayoutPtr> DoActiveLayout() const {
    return Unsupported("Document.ActiveLayout");
  }
  virtual Status DoSetActiveLayout(const LayoutPtr& /*layout*/) {
    return Unsupported("Document.SetActiveLayout");
  }
  virtual Result<Space> DoActiveSpace() const {
    return Unsupported("Document.ActiveSpace");
  }
  virtual Status DoSetActiveSpace(Space /*space*/) {
    return Unsupported("Document.SetActiveSpace");
  }
  virtual Result<bool> DoMSpace() const {
    return Unsupported("Document.MSpace");
  }
  virtual Status DoSetMSpace(bool /*in_model*/) {
    return Unsupported("Document.SetMSpace");
  }
  virtual Result<PViewportPtr> DoActivePViewport() const {
    return Unsupported("Document.ActivePViewport");
  }
  virtual Status DoSetActivePViewport(const PViewportPtr& /*viewport*/) {
    return Unsupported("Document.SetActivePViewport");
  }
  virtual Result<ViewportPtr> DoActiveViewport() const {
    return Unsupported("Document.ActiveViewport");
  }
  virtual Status DoSetActiveViewport(const ViewportPtr& /*viewport*/) {
    return Unsupported("Document.SetActiveViewport");
  }
  virtual Result<LayerPtr> DoActiveLayer() const {
    return Unsupported("Document.ActiveLayer");
  }
  virtual Status DoSetActiveLayer(const LayerPtr& /*layer*/) {
    return Unsupported("Document.SetActiveLayer");
  }
  virtual Result<TextStylePtr> DoActiveTextStyle() const {
    return Unsupported("Document.ActiveTextStyle");
  }
  virtual Status DoSetActiveTextStyle(const TextStylePtr& /*style*/) {
    return Unsupported("Document.SetActiveTextStyle");
  }
  virtual Result<SelectionSetsPtr> DoSelectionSets() const {
    return Unsupported("Document.SelectionSets");
  }
  virtual Result<UtilityPtr> DoUtility() const {
    return Unsupported("Document.Utility");
  }
  virtual Result<PlotPtr> DoPlot() const {
    return Unsupported("Document.Plot");
  }
  virtual Status DoSaveAs(std::string_view /*path*/, int32_t /*save_type*/) {
    return Unsupported("Document.SaveAs");
  }
  virtual Status DoClose(bool /*save_changes*/) {
    return Unsupported("Document.Close");
  }
};

// An ObjectDBX document (Application::GetInterfaceObject).
class DbxDocument : public Database {
 public:
  ~DbxDocument() override = default;

  Result<std::string> Name() const {
    return Gated("DbxDocument.Name", [&] { return DoName(); });
  }
  // Reads a DWG into this document, replacing its content.
  Status Open(std::string_view path) {
    return Gated("DbxDocument.Open", [&] { return DoOpen(path); });
  }
  // Reads a DXF into this document.
  Status DxfIn(std::string_view path) {
    return Gated("DbxDocument.DxfIn", [&] { return DoDxfIn(path); });
  }
  // Writes the document as DXF.
  Status DxfOut(std::string_view path) {
    return Gated("DbxDocument.DxfOut", [&] { return DoDxfOut(path); });
  }
  // Writes the document as DWG.
  Status SaveAs(std::string_view path) {
    return Gated("DbxDocument.SaveAs", [&] { return DoSaveAs(path); });
  }

 protected:
  using Database::Database;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const {
    return Unsupported("DbxDocument.Name");
  }
  virtual Status DoOpen(std::string_view /*path*/) {
    return Unsupported("DbxDocument.Open");
  }
  virtual Status DoDxfIn(std::string_view /*path*/) {
    return Unsupported("DbxDocument.DxfIn");
  }
  virtual Status DoDxfOut(std::string_view /*path*/) {
    return Unsupported("DbxDocument.DxfOut");
  }
  virtual Status DoSaveAs(std::string_view /*path*/) {
    return Unsupported("DbxDocument.SaveAs");
  }
};

// The drawings open in the CAD program.
class Documents : public Object {
 public:
  ~Documents() override = default;

  Result<int32_t> Count() const {
    return Gated("Documents.Count", [&] { return DoCount(); });
  }
  Result<DocumentPtr> Item(int32_t index) const {
    return Gated("Documents.Item", [&] { return DoItemAt(index); });
  }
  // Every open document (the For Each walk).
  Result<std::vector<DocumentPtr>> Items() const {
    return Gated("Documents.Items", [&] { return DoItems(); });
  }
  // Opens a drawing; it becomes the active document.
  Result<DocumentPtr> Open(std::string_view path) {
    return Gated("Documents.Open", [&] { return DoOpen(path); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const {
    return Unsupported("Documents.Count");
  }
  virtual Result<DocumentPtr> DoItemAt(int32_t /*index*/) const {
    return Unsupported("Documents.Item");
  }
  virtual Result<std::vector<DocumentPtr>> DoItems() const {
    return Unsupported("Documents.Items");
  }
  virtual Result<DocumentPtr> DoOpen(std::string_view /*path*/) {
    return Unsupported("Documents.Open");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_DOCUMENT_H_
