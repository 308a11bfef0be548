#include "dxfhost/document.h"

#include <cmath>
#include <filesystem>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "core/file_util.h"
#include "dxf/builders.h"
#include "dxf/entity_copy.h"
#include "dxf/upgrade.h"
#include "dxf/version.h"
#include "dxfhost/application.h"
#include "dxfhost/blocks.h"
#include "dxfhost/entities.h"
#include "dxfhost/layouts.h"
#include "dxfhost/selection.h"
#include "dxfhost/session.h"
#include "dxfhost/symbol_tables.h"
#include "host/releases.h"

namespace lmt::dxfhost {
namespace {

// What every drawing offers, for Document and DbxDocument alike. The
// drawing may be swapped (DbxDocument::Open): wrappers made before keep
// the old one, which is then closed.
template <typename Base>
class DatabaseImpl : public Base {
 public:
  explicit DatabaseImpl(std::shared_ptr<Drawing> d)
      : Base(d->gate), d_(std::move(d)) {}

  const Drawing* drawing() const { return d_.get(); }
  Drawing* drawing() { return d_.get(); }

 protected:
  Status Live() const { return d_->Live(); }

  Result<host::BlockPtr> DoModelSpace() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeBlock(d_, d_->doc->model_space());
  }
  Result<host::BlockPtr> DoPaperSpace() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Block* paper =
        d_->IsModel(d_->active_block) ? d_->last_paper_block : d_->active_block;
    if (paper == nullptr) paper = d_->doc->paper_space();
    if (paper == nullptr) return Status::NotFound("the drawing has no layout");
    return MakeBlock(d_, paper);
  }
  Result<host::BlocksPtr> DoBlocks() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeBlocks(d_);
  }
  Result<host::LayersPtr> DoLayers() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeLayers(d_);
  }
  Result<bool> DoHasView(std::string_view name) const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->doc->FindTableEntry("VIEW", d_->Encode(name)).valid();
  }
  // A view looks at its target (12) with its centre (10) in its own
  // rotated axes; the plan views made here and by SetView keep that at 0.
  Result<std::vector<host::NamedView>> DoViews() const override {
    if (Status s = Live(); !s.ok()) return s;
    std::vector<host::NamedView> views;
    const dxf::Table* table = d_->doc->table("VIEW");
    if (table == nullptr) return views;
    for (dxf::RecordId id : table->entries) {
      const dxf::Entity e = d_->entity(id);
      if (e.erased()) continue;
      const dxf::Vec3 target = e.GetPoint(12);
      const dxf::Vec3 centre = e.GetPoint(10);
      host::NamedView view;
      view.name = d_->Decode(e.GetString(2));
      view.center =
          host::Point{target.x + centre.x, target.y + centre.y, target.z};
      view.height = e.GetDouble(40);
      view.width = e.GetDouble(41);
      view.twist = e.GetDouble(50) * std::numbers::pi / 180.0;
      views.push_back(std::move(view));
    }
    return views;
  }
  Status DoDeleteView(std::string_view name) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity e = d_->doc->FindTableEntry("VIEW", d_->Encode(name));
    if (!e.valid() || e.erased()) {
      return Status::NotFound("no view is named \"" + std::string(name) + "\"");
    }
    d_->doc->Erase(e);
    return Status();
  }
  Status DoRegisterApplication(std::string_view name) override {
    if (Status s = Live(); !s.ok()) return s;
    const std::string app = d_->Encode(name);
    if (app.empty()) {
      return Status::InvalidArgument("an application name is needed");
    }
    return RegisterApplication(*d_, app);
  }
  Status DoSetView(const host::NamedView& view) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Document& doc = *d_->doc;
    const std::string name = d_->Encode(view.name);
    if (!dxf::IsValidName(doc, name)) {
      return Status::InvalidArgument("\"" + view.name +
                                     "\" cannot name a view");
    }
    if (!(view.width > 0) || !(view.height > 0)) {
      return Status::InvalidArgument("a view needs a positive size");
    }
    if (doc.table("VIEW") == nullptr) {
      return Status::NotSupported("the drawing has no VIEW table");
    }
    // The view looks down at its target, the centre, so the centre in the
    // view's own rotated axes is the origin whatever the twist.
    double twist = std::fmod(view.twist * 180.0 / std::numbers::pi, 360.0);
    if (twist < 0) twist += 360.0;
    const bool r12 = doc.IsR12();
    std::vector<dxf::Tag> tags;
    auto add = [&](int code, std::string_view value) {
      tags.push_back(doc.MakeTag(code, value));
    };
    auto number = [&](int code, double value) {
      add(code, dxf::FormatDouble(value));
    };
    add(0, "VIEW");
    if (!r12) {
      add(100, "AcDbSymbolTableRecord");
      add(100, "AcDbViewTableRecord");
    }
    add(2, name);
    add(70, "0");
    number(40, view.height);
    number(10, 0);
    number(20, 0);
    number(41, view.width);
    number(11, 0);
    number(21, 0);
    number(31, 1);
    number(12, view.center.x);
    number(22, view.center.y);
    number(32, view.center.z);
    number(42, 50);
    number(43, 0);
    number(44, 0);
    number(50, twist);
    add(71, "0");
    if (!r12) {
      add(281, "0");
      add(72, "0");
    }
    if (dxf::Entity old = doc.FindTableEntry("VIEW", name); old.valid()) {
      // Replaced in place: same handle, so references to it stay.
      for (const dxf::Tag& tag : tags) {
        if (tag.code != 0 && tag.code != 100 && tag.code != 2) {
          old.Set(tag.code, tag.value());
        }
      }
      return Status();
    }
    if (!doc.AddTableEntry("VIEW", std::move(tags)).valid()) {
      return Status::Refused("the view could not be added");
    }
    return Status();
  }
  Result<host::LinetypesPtr> DoLinetypes() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeLinetypes(d_);
  }
  Result<host::TextStylesPtr> DoTextStyles() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeTextStyles(d_);
  }
  Result<host::LayoutsPtr> DoLayouts() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeLayouts(d_);
  }
  // Copies within this drawing only; objects of another database are
  // refused. A layout's own (id 1) viewport is not copied into a layout,
  // which has its own: the result then has fewer items than `objects`.
  Result<std::vector<host::EntityPtr>> DoCopyObjects(
      const std::vector<host::EntityPtr>& objects,
      const host::BlockPtr& owner) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Block* target = owner ? BlockOf(*owner, d_.get()) : nullptr;
    if (target == nullptr) {
      return Status::InvalidArgument(
          "the target block is not from this drawing");
    }
    std::vector<dxf::RecordId> ids;
    for (const host::EntityPtr& object : objects) {
      dxf::RecordId id = object ? RecordOf(*object, d_.get()) : dxf::kNoRecord;
      if (id == dxf::kNoRecord || d_->entity(id).erased()) {
        return Status::InvalidArgument(
            "an object is not a live entity of this drawing");
      }
      ids.push_back(id);
    }
    std::vector<host::EntityPtr> copies;
    for (dxf::Entity e : dxf::CopyEntities(*d_->doc, ids, *d_->doc, target)) {
      copies.push_back(MakeEntity(d_, e.id()));
    }
    return copies;
  }
  Result<host::ObjectPtr> DoObjectIdToObject(
      uint64_t object_id) const override {
    if (Status s = Live(); !s.ok()) return s;
    if (IsStandInBlockId(object_id)) {
      for (auto& b : d_->doc->blocks()) {
        if (b->begin != dxf::kNoRecord &&
            StandInBlockId(b->begin) == object_id) {
          return host::ObjectPtr(MakeBlock(d_, b.get()));
        }
      }
    }
    dxf::Entity e =
        object_id != 0 ? d_->doc->FindByHandle(object_id) : dxf::Entity();
    if (!e.valid() || e.erased()) {
      return Status::NotFound("no object has id " + std::to_string(object_id));
    }
    if (dxf::Block* block = DefinedBlock(e)) {
      return host::ObjectPtr(MakeBlock(d_, block));
    }
    return host::ObjectPtr(MakeEntity(d_, e.id()));
  }

  // The block `e` stands for: the one its BLOCK_RECORD names, or the one
  // its BLOCK begins; null for any other object. Looked up, not searched:
  // every viewport of a run asks for its owner, and a run adds a block per
  // layout.
  dxf::Block* DefinedBlock(const dxf::Entity& e) const {
    dxf::Document& doc = *d_->doc;
    if (dxf::Block* b = doc.BlockByRecord(e.handle())) return b;
    if (e.type() != "BLOCK") return nullptr;
    if (dxf::Block* b = doc.BlockByRecord(e.owner()); b && b->begin == e.id()) {
      return b;
    }
    for (auto& b : doc.blocks()) {  // R12 blocks have no record
      if (b->begin == e.id()) return b.get();
    }
    return nullptr;
  }

  std::shared_ptr<Drawing> d_;
};

// Plots the active layout through the application's plotter. As the
// programs do, it refuses to plot over an existing file.
class DxfPlot : public host::Plot {
 public:
  DxfPlot(std::shared_ptr<Drawing> d, DxfApplication::Plotter plotter)
      : host::Plot(d->gate), d_(std::move(d)), plotter_(std::move(plotter)) {}

 protected:
  Result<bool> DoPlotToFile(std::string_view file,
                            std::string_view device) override {
    if (Status s = d_->Live(); !s.ok()) return s;
    const std::string path(file);
    std::error_code error;
    if (std::filesystem::exists(core::PathFromUtf8(path), error)) {
      return Status::Refused("the plot file " + path + " exists");
    }
    const std::string layout =
        d_->Decode(d_->LayoutOfBlock(d_->active_block).name);
    if (Status s = plotter_(*d_->doc, layout, path, device); !s.ok()) {
      return s;
    }
    return true;
  }

 private:
  std::shared_ptr<Drawing> d_;
  DxfApplication::Plotter plotter_;
};

class DxfDocument : public DatabaseImpl<host::Document> {
 public:
  DxfDocument(std::shared_ptr<Drawing> d,
              std::weak_ptr<host::Application> application,
              std::function<void(const Drawing*)> on_close)
      : DatabaseImpl(std::move(d)),
        application_(std::move(application)),
        on_close_(std::move(on_close)) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return std::filesystem::path(d_->path).filename().string();
  }
  Result<std::string> DoFullName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->path;
  }
  Result<host::ApplicationPtr> DoApplication() const override {
    host::ApplicationPtr app = application_.lock();
    if (app == nullptr) return Status::NotFound("the application has ended");
    return app;
  }
  Result<host::Variant> DoGetVariable(std::string_view name) const override {
    if (Status s = Live(); !s.ok()) return s;
    return ReadVariable(*d_, name);
  }
  Status DoSetVariable(std::string_view name,
                       const host::Variant& value) override {
    if (Status s = Live(); !s.ok()) return s;
    return WriteVariable(*d_, name, value);
  }
  Status DoSendCommand(std::string_view command) override {
    if (Status s = Live(); !s.ok()) return s;
    return RunCommandLine(*d_, command);
  }
  Result<host::LayoutPtr> DoActiveLayout() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeLayout(d_, d_->LayoutOfBlock(d_->active_block));
  }
  Status DoSetActiveLayout(const host::LayoutPtr& layout) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Block* block = layout ? BlockOf(*layout, d_.get()) : nullptr;
    if (block == nullptr) {
      return Status::InvalidArgument("the layout is not from this drawing");
    }
    return ActivateBlock(*d_, block);
  }
  Result<host::Space> DoActiveSpace() const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->IsModel(d_->active_block) || d_->InViewport()
               ? host::Space::kModelSpace
               : host::Space::kPaperSpace;
  }
  Status DoSetActiveSpace(host::Space space) override {
    if (Status s = Live(); !s.ok()) return s;
    if (space == host::Space::kPaperSpace) {
      if (d_->IsModel(d_->active_block)) {
        return WriteVariable(*d_, "TILEMODE", host::Variant(int16_t{0}));
      }
      d_->mspace = false;
      return Status();
    }
    if (d_->IsModel(d_->active_block)) return Status();
    return DoSetMSpace(true);
  }
  Result<bool> DoMSpace() const override {
    if (Status s = Live(); !s.ok()) return s;
    return d_->InViewport();
  }
  Status DoSetMSpace(bool in_model) override {
    if (Status s = Live(); !s.ok()) return s;
    if (!in_model) {
      d_->mspace = false;
      return Status();
    }
    if (d_->IsModel(d_->active_block)) {
      return Status::Refused("MSpace needs a layout, not the Model tab");
    }
    if (!InActiveLayout(d_->active_pviewport)) {
      // Enter the first model viewport that is on (id 1 is the paper's own).
      d_->active_pviewport = dxf::kNoRecord;
      for (dxf::RecordId id : d_->active_block->entities) {
        dxf::Entity e = d_->entity(id);
        if (e.erased() || e.type() != "VIEWPORT" || IsPaperViewport(id)) {
          continue;
        }
        if ((e.GetInt(90, 0) & 131072) == 0) {
          d_->active_pviewport = id;
          break;
        }
      }
    }
    if (d_->active_pviewport == dxf::kNoRecord) {
      return Status::Refused("the layout has no viewport that is on");
    }
    d_->mspace = true;
    return Status();
  }
  Result<host::PViewportPtr> DoActivePViewport() const override {
    if (Status s = Live(); !s.ok()) return s;
    if (!InActiveLayout(d_->active_pviewport)) {
      return Status::NotFound("no viewport is active");
    }
    return host::As<host::PViewport>(MakeEntity(d_, d_->active_pviewport));
  }
  Status DoSetActivePViewport(const host::PViewportPtr& viewport) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::RecordId id =
        viewport ? RecordOf(*viewport, d_.get()) : dxf::kNoRecord;
    if (!InActiveLayout(id)) {
      return Status::InvalidArgument(
          "the viewport is not on the active layout of this drawing");
    }
    if (IsPaperViewport(id)) {
      return Status::Refused(
          "the layout's own paper viewport cannot be made "
          "active");
    }
    d_->active_pviewport = id;
    return Status();
  }
  Result<host::ViewportPtr> DoActiveViewport() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeTiledViewport(d_);
  }
  Status DoSetActiveViewport(const host::ViewportPtr& viewport) override {
    if (Status s = Live(); !s.ok()) return s;
    if (viewport == nullptr) return Status::InvalidArgument("no viewport");
    return ApplyTiledViewport(*viewport, *d_);
  }
  Result<host::LayerPtr> DoActiveLayer() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity layer = d_->doc->FindTableEntry(
        "LAYER", d_->doc->HeaderValue("$CLAYER").value_or("0"));
    if (!layer.valid()) layer = d_->doc->FindTableEntry("LAYER", "0");
    if (!layer.valid()) return Status::NotFound("the drawing has no layers");
    return MakeLayer(d_, layer.id());
  }
  Status DoSetActiveLayer(const host::LayerPtr& layer) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::RecordId id = layer ? RecordOf(*layer, d_.get()) : dxf::kNoRecord;
    if (id == dxf::kNoRecord) {
      return Status::InvalidArgument("the layer is not from this drawing");
    }
    return WriteVariable(
        *d_, "CLAYER", host::Variant(std::string(d_->entity(id).GetString(2))));
  }
  Result<host::TextStylePtr> DoActiveTextStyle() const override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::Entity style = d_->doc->FindTableEntry(
        "STYLE", d_->doc->HeaderValue("$TEXTSTYLE").value_or("Standard"));
    if (!style.valid()) return Status::NotFound("no current text style");
    return MakeTextStyle(d_, style.id());
  }
  Status DoSetActiveTextStyle(const host::TextStylePtr& style) override {
    if (Status s = Live(); !s.ok()) return s;
    dxf::RecordId id = style ? RecordOf(*style, d_.get()) : dxf::kNoRecord;
    if (id == dxf::kNoRecord) {
      return Status::InvalidArgument("the text style is not from this drawing");
    }
    return WriteVariable(
        *d_, "TEXTSTYLE",
        host::Variant(std::string(d_->entity(id).GetString(2))));
  }
  Result<host::SelectionSetsPtr> DoSelectionSets() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeSelectionSets(d_);
  }
  Result<host::UtilityPtr> DoUtility() const override {
    if (Status s = Live(); !s.ok()) return s;
    return MakeUtility(d_);
  }
  Result<host::PlotPtr> DoPlot() const override {
    if (Status s = Live(); !s.ok()) return s;
    Result<host::ApplicationPtr> app = DoApplication();
    if (!app.ok()) return app.status();
    const auto* owner = dynamic_cast<const DxfApplication*>(app->get());
    if (owner == nullptr) return Unsupported("Document.Plot");
    if (!owner->plotter()) return Unsupported("Document.Plot");
    return host::PlotPtr(std::make_shared<DxfPlot>(d_, owner->plotter()));
  }
  Status DoSaveAs(std::string_view path, int32_t save_type) override {
    if (Status s = Live(); !s.ok()) return s;
    Result<std::string> release = ReleaseOfSaveType(save_type);
    if (!release.ok()) return release.status();
    std::filesystem::path target{std::string(path)};
    if (target.empty()) return Status::InvalidArgument("no file name given");
    if (!target.has_extension()) target += ".dxf";
    if (Status s = SaveRelease(target.string(), *release); !s.ok()) return s;
    d_->path = std::filesystem::absolute(target).lexically_normal().string();
    d_->save_release = *release;
    return Status();
  }
  Status DoClose(bool save_changes) override {
    if (Status s = Live(); !s.ok()) return s;
    if (save_changes) {
      if (d_->path.empty()) {
        return Status::Refused("the drawing has no file name to save under");
      }
      if (Status s = SaveRelease(d_->path, d_->save_release); !s.ok()) {
        return s;
      }
    }
    for (auto& [file, x] : d_->xrefs) {
      if (x != nullptr) x->closed = true;
    }
    d_->closed = true;
    d_->selection_sets.clear();
    if (on_close_) on_close_(d_.get());
    return Status();
  }

 private:
  bool InActiveLayout(dxf::RecordId id) const {
    if (id == dxf::kNoRecord || d_->IsModel(d_->active_block)) return false;
    dxf::Entity e = d_->entity(id);
    if (e.erased() || e.type() != "VIEWPORT") return false;
    for (dxf::RecordId member : d_->active_block->entities) {
      if (member == id) return true;
    }
    return false;
  }
  // Writes the drawing as `release` ("" or its own: as it is). Another
  // release is converted in a copy, so the open drawing keeps everything
  // the older release cannot hold, as in a CAD program.
  Status SaveRelease(const std::string& path, const std::string& release) {
    if (release.empty() || release == d_->doc->version()) {
      return FromDxf(d_->doc->Save(path));
    }
    if (dxf::Status s = dxf::CheckTargetVersion(release); !s.ok()) {
      return Status::NotSupported(s.message());
    }
    std::unique_ptr<dxf::Document> copy;
    if (Status s =
            FromDxf(dxf::Document::Parse(d_->doc->ToString(), path, &copy));
        !s.ok()) {
      return s;
    }
    // R12, R13 and R14 reach the newer releases through DXF 2000.
    if (dxf::Status s = dxf::UpgradeForLayouts(*copy); !s.ok()) {
      return Status::NotSupported(s.message() + "; not saved as " +
                                  std::string(dxf::ReleaseName(release)));
    }
    if (dxf::Status s = dxf::ConvertVersion(*copy, release); !s.ok()) {
      return Status::NotSupported(s.message());
    }
    // The copy was made through ASCII; the file keeps the input's form.
    return FromDxf(copy->Save(path, d_->doc->format()));
  }

  // The layout's own paper viewport has id 1 (kept even in layouts never
  // displayed, where the others get 0).
  bool IsPaperViewport(dxf::RecordId id) const {
    return d_->entity(id).GetInt(69, 0) == 1;
  }

  std::weak_ptr<host::Application> application_;
  std::function<void(const Drawing*)> on_close_;
};

// The ObjectDBX document: reads and writes drawings without making them the
// session's active document. Each Open or DxfIn starts a new Drawing, so
// wrappers of the previous content report it closed instead of pointing
// into the new one.
class DxfDbxDocument : public DatabaseImpl<host::DbxDocument> {
 public:
  DxfDbxDocument(std::shared_ptr<host::CallGate> gate, host::HostKind kind)
      : DatabaseImpl(Empty(gate, kind)), kind_(kind) {}

 protected:
  Result<std::string> DoName() const override {
    if (Status s = Live(); !s.ok()) return s;
    return std::filesystem::path(d_->path).filename().string();
  }
  Status DoOpen(std::string_view path) override { return Read(path); }
  Status DoDxfIn(std::string_view path) override { return Read(path); }
  Status DoDxfOut(std::string_view path) override {
    if (Status s = Live(); !s.ok()) return s;
    return FromDxf(d_->doc->Save(std::string(path)));
  }
  Status DoSaveAs(std::string_view path) override {
    if (Status s = Live(); !s.ok()) return s;
    std::filesystem::path target{std::string(path)};
    if (dxf::EqualsNoCase(target.extension().string(), ".dwg")) {
      return Status::NotSupported(
          "DbxDocument.SaveAs: the embedded engine writes DXF 2000 and later "
          "only, not DWG");
    }
    return FromDxf(d_->doc->Save(target.string()));
  }

 private:
  static std::shared_ptr<Drawing> Empty(std::shared_ptr<host::CallGate> gate,
                                        host::HostKind kind) {
    auto d = std::make_shared<Drawing>();
    d->gate = std::move(gate);
    d->kind = kind;
    d->closed = true;  // nothing read yet
    return d;
  }
  Status Read(std::string_view path) {
    Result<std::shared_ptr<Drawing>> read =
        ReadDrawing(std::string(path), d_->gate, nullptr, kind_);
    if (!read.ok()) return read.status();
    d_->closed = true;
    d_ = *read;
    return Status();
  }

  host::HostKind kind_;
};

}  // namespace

Result<std::shared_ptr<Drawing>> ReadDrawing(
    const std::string& path, std::shared_ptr<host::CallGate> gate,
    host::User* user, host::HostKind kind, bool recover) {
  std::unique_ptr<dxf::Document> doc;
  if (Status s = FromDxf(dxf::Document::Load(path, &doc, {recover})); !s.ok()) {
    return s;
  }
  auto d = std::make_shared<Drawing>();
  d->doc = std::move(doc);
  d->path = std::filesystem::absolute(path).lexically_normal().string();
  d->gate = std::move(gate);
  d->user = user;
  d->kind = kind;
  InitSession(*d);
  return d;
}

host::DocumentPtr MakeDocument(std::shared_ptr<Drawing> d,
                               std::weak_ptr<host::Application> application,
                               std::function<void(const Drawing*)> on_close) {
  return std::make_shared<DxfDocument>(std::move(d), std::move(application),
                                       std::move(on_close));
}

host::DbxDocumentPtr MakeDbxDocument(std::shared_ptr<host::CallGate> gate,
                                     host::HostKind kind) {
  return std::make_shared<DxfDbxDocument>(std::move(gate), kind);
}

const Drawing* DrawingOf(const host::Document& document) {
  const auto* doc = dynamic_cast<const DxfDocument*>(&document);
  return doc != nullptr ? doc->drawing() : nullptr;
}

std::optional<Status> DeleteLayoutsAtOnce(
    host::Document& document, const std::vector<std::string>& names) {
  auto* doc = dynamic_cast<DxfDocument*>(&document);
  if (doc == nullptr) return std::nullopt;
  return DeleteLayoutsAtOnce(*doc->drawing(), names);
}

Result<std::string> UpgradeForLayouts(host::Document& document) {
  auto* doc = dynamic_cast<DxfDocument*>(&document);
  Drawing* d = doc != nullptr ? doc->drawing() : nullptr;
  if (d == nullptr || d->closed || d->doc->version() >= "AC1015") {
    return std::string();
  }
  std::string release(dxf::ReleaseName(d->doc->version()));
  if (dxf::Status s = dxf::UpgradeForLayouts(*d->doc); !s.ok()) {
    return Status::NotSupported(s.message());
  }
  d->ForgetLayouts();
  return release;
}

Result<std::string> ReleaseOfSaveType(int32_t save_type) {
  std::optional<host::SaveTypeMatch> match = host::FindSaveType(save_type);
  if (!match) {
    return Status::InvalidArgument("unknown save type " +
                                   std::to_string(save_type));
  }
  if (!match->dxf) {
    return Status::NotSupported(
        "save type " + std::to_string(save_type) + " (" +
        std::string(match->release->name) +
        " DWG): the embedded engine writes DXF only, not DWG");
  }
  return std::string(match->release->acadver);
}

}  // namespace lmt::dxfhost
