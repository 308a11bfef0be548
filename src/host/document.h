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
    if (Status s = Enter("Viewport.Direction"); !s.ok()) return s;
    return DoDirection();
  }
  // Takes effect once the viewport is assigned back with
  // Document::SetActiveViewport.
  Status SetDirection(const Point& direction) {
    if (Status s = Enter("Viewport.SetDirection"); !s.ok()) return s;
    return DoSetDirection(direction);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoDirection() const;
  virtual Status DoSetDirection(const Point& direction);
};

// User input and coordinate conversion.
class Utility : public Object {
 public:
  ~Utility() override = default;

  // Asks the user for a point (rubber band from `base` when given);
  // kCancelled when the user cancels.
  Result<Point> GetPoint(const std::optional<Point>& base,
                         std::string_view prompt) {
    if (Status s = Enter("Utility.GetPoint"); !s.ok()) return s;
    return DoGetPoint(base, prompt);
  }
  // Asks the user for a distance, from `base` when given (a point is passed
  // to the host as the object model's point array); kCancelled on cancel.
  Result<double> GetDistance(const std::optional<Point>& base,
                             std::string_view prompt) {
    if (Status s = Enter("Utility.GetDistance"); !s.ok()) return s;
    return DoGetDistance(base, prompt);
  }
  // Writes `text` to the host's command line.
  Status Prompt(std::string_view text) {
    if (Status s = Enter("Utility.Prompt"); !s.ok()) return s;
    return DoPrompt(text);
  }
  Result<Point> TranslateCoordinates(const Point& point, CoordinateSystem from,
                                     CoordinateSystem to,
                                     bool displacement) const {
    if (Status s = Enter("Utility.TranslateCoordinates"); !s.ok()) return s;
    return DoTranslateCoordinates(point, from, to, displacement);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<Point> DoGetPoint(const std::optional<Point>& base,
                                   std::string_view prompt);
  virtual Result<double> DoGetDistance(const std::optional<Point>& base,
                                       std::string_view prompt);
  virtual Status DoPrompt(std::string_view text);
  virtual Result<Point> DoTranslateCoordinates(const Point& point,
                                               CoordinateSystem from,
                                               CoordinateSystem to,
                                               bool displacement) const;
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
    if (Status s = Enter("Database.ModelSpace"); !s.ok()) return s;
    return DoModelSpace();
  }
  // The block of the active layout (the last active one in model space).
  Result<BlockPtr> PaperSpace() const {
    if (Status s = Enter("Database.PaperSpace"); !s.ok()) return s;
    return DoPaperSpace();
  }
  Result<BlocksPtr> Blocks() const {
    if (Status s = Enter("Database.Blocks"); !s.ok()) return s;
    return DoBlocks();
  }
  Result<LayersPtr> Layers() const {
    if (Status s = Enter("Database.Layers"); !s.ok()) return s;
    return DoLayers();
  }
  Result<LinetypesPtr> Linetypes() const {
    if (Status s = Enter("Database.Linetypes"); !s.ok()) return s;
    return DoLinetypes();
  }
  Result<TextStylesPtr> TextStyles() const {
    if (Status s = Enter("Database.TextStyles"); !s.ok()) return s;
    return DoTextStyles();
  }
  Result<LayoutsPtr> Layouts() const {
    if (Status s = Enter("Database.Layouts"); !s.ok()) return s;
    return DoLayouts();
  }
  // Deep-copies `objects` into `owner` (of this or another database);
  // returns the copies in the same order.
  Result<std::vector<EntityPtr>> CopyObjects(
      const std::vector<EntityPtr>& objects, const BlockPtr& owner) {
    if (Status s = Enter("Database.CopyObjects"); !s.ok()) return s;
    return DoCopyObjects(objects, owner);
  }
  // Any object by id (cast with As<T>); kNotFound when unknown.
  Result<ObjectPtr> ObjectIdToObject(uint64_t object_id) const {
    if (Status s = Enter("Database.ObjectIdToObject"); !s.ok()) return s;
    return DoObjectIdToObject(object_id);
  }
  // Whether a named view of that name exists (without regard to case).
  Result<bool> HasView(std::string_view name) const {
    if (Status s = Enter("Database.HasView"); !s.ok()) return s;
    return DoHasView(name);
  }
  // Adds the named view, replacing one of the same name.
  Status SetView(const NamedView& view) {
    if (Status s = Enter("Database.SetView"); !s.ok()) return s;
    return DoSetView(view);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<BlockPtr> DoModelSpace() const;
  virtual Result<BlockPtr> DoPaperSpace() const;
  virtual Result<BlocksPtr> DoBlocks() const;
  virtual Result<LayersPtr> DoLayers() const;
  virtual Result<LinetypesPtr> DoLinetypes() const;
  virtual Result<TextStylesPtr> DoTextStyles() const;
  virtual Result<LayoutsPtr> DoLayouts() const;
  virtual Result<std::vector<EntityPtr>> DoCopyObjects(
      const std::vector<EntityPtr>& objects, const BlockPtr& owner);
  virtual Result<ObjectPtr> DoObjectIdToObject(uint64_t object_id) const;
  virtual Result<bool> DoHasView(std::string_view name) const;
  virtual Status DoSetView(const NamedView& view);
};

// A drawing open in the CAD program.
class Document : public Database {
 public:
  ~Document() override = default;

  // File name with extension, no folder.
  Result<std::string> Name() const {
    if (Status s = Enter("Document.Name"); !s.ok()) return s;
    return DoName();
  }
  // Full path; empty for a drawing never saved.
  Result<std::string> FullName() const {
    if (Status s = Enter("Document.FullName"); !s.ok()) return s;
    return DoFullName();
  }
  Result<ApplicationPtr> Application() const {
    if (Status s = Enter("Document.Application"); !s.ok()) return s;
    return DoApplication();
  }
  // A system variable; kNotFound for an unknown name.
  Result<Variant> GetVariable(std::string_view name) const {
    if (Status s = Enter("Document.GetVariable"); !s.ok()) return s;
    return DoGetVariable(name);
  }
  Status SetVariable(std::string_view name, const Variant& value) {
    if (Status s = Enter("Document.SetVariable"); !s.ok()) return s;
    return DoSetVariable(name, value);
  }
  // Queues command-line input (commands end with a carriage return). Hosts
  // may run it after the call returns.
  Status SendCommand(std::string_view command) {
    if (Status s = Enter("Document.SendCommand"); !s.ok()) return s;
    return DoSendCommand(command);
  }
  Result<LayoutPtr> ActiveLayout() const {
    if (Status s = Enter("Document.ActiveLayout"); !s.ok()) return s;
    return DoActiveLayout();
  }
  Status SetActiveLayout(const LayoutPtr& layout) {
    if (Status s = Enter("Document.SetActiveLayout"); !s.ok()) return s;
    return DoSetActiveLayout(layout);
  }
  Result<Space> ActiveSpace() const {
    if (Status s = Enter("Document.ActiveSpace"); !s.ok()) return s;
    return DoActiveSpace();
  }
  Status SetActiveSpace(Space space) {
    if (Status s = Enter("Document.SetActiveSpace"); !s.ok()) return s;
    return DoSetActiveSpace(space);
  }
  // True while a paper-space viewport is entered (model space through it).
  Result<bool> MSpace() const {
    if (Status s = Enter("Document.MSpace"); !s.ok()) return s;
    return DoMSpace();
  }
  Status SetMSpace(bool in_model) {
    if (Status s = Enter("Document.SetMSpace"); !s.ok()) return s;
    return DoSetMSpace(in_model);
  }
  Result<PViewportPtr> ActivePViewport() const {
    if (Status s = Enter("Document.ActivePViewport"); !s.ok()) return s;
    return DoActivePViewport();
  }
  Status SetActivePViewport(const PViewportPtr& viewport) {
    if (Status s = Enter("Document.SetActivePViewport"); !s.ok()) return s;
    return DoSetActivePViewport(viewport);
  }
  Result<ViewportPtr> ActiveViewport() const {
    if (Status s = Enter("Document.ActiveViewport"); !s.ok()) return s;
    return DoActiveViewport();
  }
  Status SetActiveViewport(const ViewportPtr& viewport) {
    if (Status s = Enter("Document.SetActiveViewport"); !s.ok()) return s;
    return DoSetActiveViewport(viewport);
  }
  Result<LayerPtr> ActiveLayer() const {
    if (Status s = Enter("Document.ActiveLayer"); !s.ok()) return s;
    return DoActiveLayer();
  }
  Status SetActiveLayer(const LayerPtr& layer) {
    if (Status s = Enter("Document.SetActiveLayer"); !s.ok()) return s;
    return DoSetActiveLayer(layer);
  }
  Result<TextStylePtr> ActiveTextStyle() const {
    if (Status s = Enter("Document.ActiveTextStyle"); !s.ok()) return s;
    return DoActiveTextStyle();
  }
  Status SetActiveTextStyle(const TextStylePtr& style) {
    if (Status s = Enter("Document.SetActiveTextStyle"); !s.ok()) return s;
    return DoSetActiveTextStyle(style);
  }
  Result<SelectionSetsPtr> SelectionSets() const {
    if (Status s = Enter("Document.SelectionSets"); !s.ok()) return s;
    return DoSelectionSets();
  }
  Result<UtilityPtr> Utility() const {
    if (Status s = Enter("Document.Utility"); !s.ok()) return s;
    return DoUtility();
  }
  // Saves under `path` (the host adds the extension of `save_type` when
  // `path` has none) in the format numbered `save_type`.
  Status SaveAs(std::string_view path, int32_t save_type) {
    if (Status s = Enter("Document.SaveAs"); !s.ok()) return s;
    return DoSaveAs(path, save_type);
  }
  Status Close(bool save_changes) {
    if (Status s = Enter("Document.Close"); !s.ok()) return s;
    return DoClose(save_changes);
  }

 protected:
  using Database::Database;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Result<std::string> DoFullName() const;
  virtual Result<ApplicationPtr> DoApplication() const;
  virtual Result<Variant> DoGetVariable(std::string_view name) const;
  virtual Status DoSetVariable(std::string_view name, const Variant& value);
  virtual Status DoSendCommand(std::string_view command);
  virtual Result<LayoutPtr> DoActiveLayout() const;
  virtual Status DoSetActiveLayout(const LayoutPtr& layout);
  virtual Result<Space> DoActiveSpace() const;
  virtual Status DoSetActiveSpace(Space space);
  virtual Result<bool> DoMSpace() const;
  virtual Status DoSetMSpace(bool in_model);
  virtual Result<PViewportPtr> DoActivePViewport() const;
  virtual Status DoSetActivePViewport(const PViewportPtr& viewport);
  virtual Result<ViewportPtr> DoActiveViewport() const;
  virtual Status DoSetActiveViewport(const ViewportPtr& viewport);
  virtual Result<LayerPtr> DoActiveLayer() const;
  virtual Status DoSetActiveLayer(const LayerPtr& layer);
  virtual Result<TextStylePtr> DoActiveTextStyle() const;
  virtual Status DoSetActiveTextStyle(const TextStylePtr& style);
  virtual Result<SelectionSetsPtr> DoSelectionSets() const;
  virtual Result<UtilityPtr> DoUtility() const;
  virtual Status DoSaveAs(std::string_view path, int32_t save_type);
  virtual Status DoClose(bool save_changes);
};

// An ObjectDBX document (Application::GetInterfaceObject).
class DbxDocument : public Database {
 public:
  ~DbxDocument() override = default;

  Result<std::string> Name() const {
    if (Status s = Enter("DbxDocument.Name"); !s.ok()) return s;
    return DoName();
  }
  // Reads a DWG into this document, replacing its content.
  Status Open(std::string_view path) {
    if (Status s = Enter("DbxDocument.Open"); !s.ok()) return s;
    return DoOpen(path);
  }
  // Reads a DXF into this document.
  Status DxfIn(std::string_view path) {
    if (Status s = Enter("DbxDocument.DxfIn"); !s.ok()) return s;
    return DoDxfIn(path);
  }
  // Writes the document as DXF.
  Status DxfOut(std::string_view path) {
    if (Status s = Enter("DbxDocument.DxfOut"); !s.ok()) return s;
    return DoDxfOut(path);
  }
  // Writes the document as DWG.
  Status SaveAs(std::string_view path) {
    if (Status s = Enter("DbxDocument.SaveAs"); !s.ok()) return s;
    return DoSaveAs(path);
  }

 protected:
  using Database::Database;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoName() const;
  virtual Status DoOpen(std::string_view path);
  virtual Status DoDxfIn(std::string_view path);
  virtual Status DoDxfOut(std::string_view path);
  virtual Status DoSaveAs(std::string_view path);
};

// The drawings open in the CAD program.
class Documents : public Object {
 public:
  ~Documents() override = default;

  Result<int32_t> Count() const {
    if (Status s = Enter("Documents.Count"); !s.ok()) return s;
    return DoCount();
  }
  Result<DocumentPtr> Item(int32_t index) const {
    if (Status s = Enter("Documents.Item"); !s.ok()) return s;
    return DoItemAt(index);
  }
  // Every open document (the For Each walk).
  Result<std::vector<DocumentPtr>> Items() const {
    if (Status s = Enter("Documents.Items"); !s.ok()) return s;
    return DoItems();
  }
  // Opens a drawing; it becomes the active document.
  Result<DocumentPtr> Open(std::string_view path) {
    if (Status s = Enter("Documents.Open"); !s.ok()) return s;
    return DoOpen(path);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<int32_t> DoCount() const;
  virtual Result<DocumentPtr> DoItemAt(int32_t index) const;
  virtual Result<std::vector<DocumentPtr>> DoItems() const;
  virtual Result<DocumentPtr> DoOpen(std::string_view path);
};

}  // namespace lmt::host

#endif  // LMT_HOST_DOCUMENT_H_
