// The application, its preferences and documents, the database members
// every drawing has, the tiled viewport and Utility, over IDispatch.
#include <chrono>
#include <cmath>
#include <numbers>
#include <utility>

#include "comhost/com_application.h"
#include "comhost/com_object.h"

namespace lmt::comhost {
namespace {

using host::Point;

std::vector<ScopedVariant> Args(ScopedVariant a) {
  std::vector<ScopedVariant> args;
  args.push_back(std::move(a));
  return args;
}

// The object model keeps these two options one level down
// (Preferences.Display, Preferences.OpenSave); each call walks there.
class ComPreferences : public host::Preferences, public ComObject {
 public:
  ComPreferences(const Shared& shared, ComPtr<IDispatch> object)
      : host::Preferences(shared.gate),
        ComObject(shared, std::move(object), "Preferences") {}

 protected:
  Result<bool> DoLayoutCreateViewport() const override {
    Result<ScopedVariant> v = Nested("Display", "LayoutCreateViewport");
    if (!v.ok()) return v.status();
    return ReadBool(*v->get());
  }
  Status DoSetLayoutCreateViewport(bool create) override {
    return NestedPut("Display", "LayoutCreateViewport", BoolVariant(create));
  }
  Result<int32_t> DoSaveAsType() const override {
    Result<ScopedVariant> v = Nested("OpenSave", "SaveAsType");
    if (!v.ok()) return v.status();
    return ReadI4(*v->get());
  }
  Status DoSetSaveAsType(int32_t save_type) override {
    return NestedPut("OpenSave", "SaveAsType", I4Variant(save_type));
  }

 private:
  Result<ScopedVariant> Nested(std::string_view group,
                               std::string_view member) const {
    Result<ComPtr<IDispatch>> g = GetDispatch(group);
    if (!g.ok()) return g.status();
    return Invoke(*shared().context, g->get(),
                  "Preferences" + std::string(group), member, CallKind::kGet);
  }
  Status NestedPut(std::string_view group, std::string_view member,
                   ScopedVariant value) {
    Result<ComPtr<IDispatch>> g = GetDispatch(group);
    if (!g.ok()) return g.status();
    return Invoke(*shared().context, g->get(),
                  "Preferences" + std::string(group), member, CallKind::kPut,
                  Args(std::move(value)))
        .status();
  }
};

class ComViewport : public host::Viewport, public ComObject {
 public:
  ComViewport(const Shared& shared, ComPtr<IDispatch> object)
      : host::Viewport(shared.gate),
        ComObject(shared, std::move(object), "Viewport") {}

 protected:
  Result<Point> DoDirection() const override { return GetPoint("Direction"); }
  Status DoSetDirection(const Point& d) override {
    return Put("Direction", PointVariant(d));
  }
  // Center, Height and Width of the Viewport object; it has no twist of its
  // own, so Twist answers kNotSupported here
  // (https://help.autodesk.com/cloudhelp/2015/FRA/AutoCAD-ActiveX/files/GUID-2B609059-6B70-4C66-A442-F5917363462A.htm).
  Result<Point> DoCenter() const override { return GetPoint("Center"); }
  Status DoSetCenter(const Point& c) override {
    return Put("Center", PointVariant(c));
  }
  Result<double> DoHeight() const override { return GetR8("Height"); }
  Status DoSetHeight(double h) override { return Put("Height", R8Variant(h)); }
  Result<double> DoWidth() const override { return GetR8("Width"); }
};

// "PlotToFile Method (ActiveX)", https://help.autodesk.com/cloudhelp/2016/
// ENU/AutoCAD-ActiveX/files/GUID-85A6B1AF-80AA-4F56-8305-6EFD4A4D8CF8.htm:
// PlotToFile(plotFile [, plotConfig]) plots the active layout, returns a
// Boolean.
class ComPlot : public host::Plot, public ComObject {
 public:
  ComPlot(const Shared& shared, ComPtr<IDispatch> object)
      : host::Plot(shared.gate), ComObject(shared, std::move(object), "Plot") {}

 protected:
  Result<bool> DoPlotToFile(std::string_view file,
                            std::string_view device) override {
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(file));
    if (!device.empty()) args.push_back(TextVariant(device));
    Result<ScopedVariant> v = Call("PlotToFile", std::move(args));
    if (!v.ok()) return v.status();
    return ReadBool(*v->get());
  }
};

class ComUtility : public host::Utility, public ComObject {
 public:
  ComUtility(const Shared& shared, ComPtr<IDispatch> object)
      : host::Utility(shared.gate),
        ComObject(shared, std::move(object), "Utility") {}

 protected:
  // GetPoint([Point], [Prompt]).
  Result<Point> DoGetPoint(const std::optional<Point>& base,
                           std::string_view prompt) override {
    Result<ScopedVariant> v = Call("GetPoint", BaseAndPrompt(base, prompt));
    if (!v.ok()) return v.status();
    return ReadPoint(*v->get());
  }
  Result<double> DoGetDistance(const std::optional<Point>& base,
                               std::string_view prompt) override {
    Result<ScopedVariant> v = Call("GetDistance", BaseAndPrompt(base, prompt));
    if (!v.ok()) return v.status();
    return ReadR8(*v->get());
  }
  Status DoPrompt(std::string_view text) override {
    return Do("Prompt", Args(TextVariant(text)));
  }
  Result<Point> DoTranslateCoordinates(const Point& point,
                                       host::CoordinateSystem from,
                                       host::CoordinateSystem to,
                                       bool displacement) const override {
    std::vector<ScopedVariant> args;
    args.push_back(PointVariant(point));
    args.push_back(I4Variant(static_cast<int32_t>(from)));
    args.push_back(I4Variant(static_cast<int32_t>(to)));
    args.push_back(I4Variant(displacement ? 1 : 0));
    Result<ScopedVariant> v = Call("TranslateCoordinates", std::move(args));
    if (!v.ok()) return v.status();
    return ReadPoint(*v->get());
  }

 private:
  static std::vector<ScopedVariant> BaseAndPrompt(
      const std::optional<Point>& base, std::string_view prompt) {
    std::vector<ScopedVariant> args;
    args.push_back(base ? PointVariant(*base) : MissingVariant());
    args.push_back(TextVariant(prompt));
    return args;
  }
};

// What Document and DbxDocument share.
template <typename Base>
class ComDatabaseT : public Base, public ComObject {
 public:
  ComDatabaseT(const Shared& shared, ComPtr<IDispatch> object,
               std::string type_key)
      : Base(shared.gate),
        ComObject(shared, std::move(object), std::move(type_key)) {}

 protected:
  Result<host::BlockPtr> DoModelSpace() const override {
    return Wrapped<host::BlockPtr>(GetDispatch("ModelSpace"), shared(),
                                   WrapBlock);
  }
  Result<host::BlockPtr> DoPaperSpace() const override {
    return Wrapped<host::BlockPtr>(GetDispatch("PaperSpace"), shared(),
                                   WrapBlock);
  }
  Result<host::BlocksPtr> DoBlocks() const override {
    return Wrapped<host::BlocksPtr>(GetDispatch("Blocks"), shared(),
                                    WrapBlocks);
  }
  Result<host::LayersPtr> DoLayers() const override {
    return Wrapped<host::LayersPtr>(GetDispatch("Layers"), shared(),
                                    WrapLayers);
  }
  Result<host::LinetypesPtr> DoLinetypes() const override {
    return Wrapped<host::LinetypesPtr>(GetDispatch("Linetypes"), shared(),
                                       WrapLinetypes);
  }
  Result<host::TextStylesPtr> DoTextStyles() const override {
    return Wrapped<host::TextStylesPtr>(GetDispatch("TextStyles"), shared(),
                                        WrapTextStyles);
  }
  Result<host::LayoutsPtr> DoLayouts() const override {
    return Wrapped<host::LayoutsPtr>(GetDispatch("Layouts"), shared(),
                                     WrapLayouts);
  }
  // CopyObjects(Objects, Owner) returns the copies as an array.
  Result<std::vector<host::EntityPtr>> DoCopyObjects(
      const std::vector<host::EntityPtr>& objects,
      const host::BlockPtr& owner) override {
    Result<std::vector<IDispatch*>> sources = DispatchesOf(objects);
    if (!sources.ok()) return sources.status();
    IDispatch* target = DispatchOf(owner.get());
    if (target == nullptr) {
      return Status::InvalidArgument("CopyObjects: no owner block");
    }
    std::vector<ScopedVariant> args;
    args.push_back(DispatchArrayVariant(*sources));
    args.push_back(DispatchVariant(target));
    Result<ScopedVariant> v = Call("CopyObjects", std::move(args));
    if (!v.ok()) return v.status();
    Result<std::vector<ComPtr<IDispatch>>> copies =
        ReadDispatchArray(*v->get());
    if (!copies.ok()) return copies.status();
    // A copy is of its original's class: no need to ask its kind.
    std::vector<host::EntityPtr> out;
    for (size_t i = 0; i < copies->size(); ++i) {
      const ComObject* source =
          i < objects.size() ? dynamic_cast<const ComObject*>(objects[i].get())
                             : nullptr;
      out.push_back(source != nullptr
                        ? WrapEntityOfKind(shared(), std::move((*copies)[i]),
                                           source->type_key())
                        : WrapEntity(shared(), std::move((*copies)[i])));
    }
    return out;
  }
  // Named views: the drawing's Views collection (Add, Item) and the View's
  // own Delete, Center (a 2D point), Height, Width, Direction and Target.
  // https://help.autodesk.com/cloudhelp/2015/ENU/AutoCAD-ActiveX/files/GUID-DD4ED21D-EF6A-4FAD-99C5-3A08BEF12101.htm
  // https://help.autodesk.com/cloudhelp/2016/ITA/AutoCAD-ActiveX/files/GUID-1B9C7D36-0905-4C20-84C5-53714379B811.htm
  // A program answers Item of a name it lacks with an error of its own
  // choosing; a real failure shows when the view is then added.
  Result<bool> DoHasView(std::string_view name) const override {
    Result<ComPtr<IDispatch>> views = GetDispatch("Views");
    if (!views.ok()) return views.status();
    Result<ComPtr<IDispatch>> view = ViewItem(views->get(), name);
    if (view.ok()) return true;
    switch (view.status().code()) {
      case StatusCode::kNotFound:
      case StatusCode::kInvalidArgument:
      case StatusCode::kRefused:
        return false;
      default:
        return view.status();
    }
  }
  // TwistAngle is a member of PViewport only
  // (https://help.autodesk.com/cloudhelp/2016/CHS/AutoCAD-ActiveX/files/GUID-37481065-7A7F-46D7-84E5-B1BB072CFF36.htm):
  // a turned frame's view cannot be made through the View object, so it is
  // refused rather than made unturned. A view of the same name is given
  // the new values. The view looks straight down at the origin, so
  // Center is the world point in the middle.
  Status DoSetView(const host::NamedView& view) override {
    const double turn = std::remainder(view.twist, 2 * std::numbers::pi);
    if (std::abs(turn) > 1e-9) {
      return Status::NotSupported(
          "the program's views have no twist: a turned frame gets no view");
    }
    Result<ComPtr<IDispatch>> views = GetDispatch("Views");
    if (!views.ok()) return views.status();
    // A view of that name is given the new values rather than deleted
    // first, so a refusal midway never leaves the drawing without it.
    Result<ComPtr<IDispatch>> made = ViewItem(views->get(), view.name);
    if (!made.ok()) {
      Result<ScopedVariant> added =
          Invoke(*shared().context, views->get(), "Views", "Add",
                 CallKind::kGet, Args(TextVariant(view.name)));
      if (!added.ok()) return added.status();
      made = ReadDispatch(*added->get());
      if (!made.ok()) return made.status();
    }
    if (!*made) return Status::Refused("Views gave no view");
    auto put = [&](std::string_view member, ScopedVariant value) {
      return Invoke(*shared().context, made->get(), "View", member,
                    CallKind::kPut, Args(std::move(value)))
          .status();
    };
    if (Status s = put("Direction", PointVariant(Point{0, 0, 1})); !s.ok()) {
      return s;
    }
    if (Status s = put("Target", PointVariant(Point{0, 0, 0})); !s.ok()) {
      return s;
    }
    if (Status s =
            put("Center", DoublesVariant({view.center.x, view.center.y}));
        !s.ok()) {
      return s;
    }
    if (Status s = put("Height", R8Variant(view.height)); !s.ok()) return s;
    return put("Width", R8Variant(view.width));
  }
  // Count and Item(index) rather than a For Each walk: the programs'
  // Views need not enumerate. The views are read as SetView makes them,
  // level (the View object has no twist) and looking down at the origin.
  Result<std::vector<host::NamedView>> DoViews() const override {
    Result<ComPtr<IDispatch>> views = GetDispatch("Views");
    if (!views.ok()) return views.status();
    ComContext& context = *shared().context;
    Result<ScopedVariant> count =
        Invoke(context, views->get(), "Views", "Count", CallKind::kGet);
    if (!count.ok()) return count.status();
    Result<int32_t> n = ReadI4(*count->get());
    if (!n.ok()) return n.status();
    std::vector<host::NamedView> out;
    for (int32_t i = 0; i < *n; ++i) {
      Result<ScopedVariant> item =
          Invoke(context, views->get(), "Views", "Item", CallKind::kGet,
                 Args(IndexVariant(i)));
      if (!item.ok()) return item.status();
      Result<ComPtr<IDispatch>> view = ReadDispatch(*item->get());
      if (!view.ok()) return view.status();
      if (!*view) return Status::Refused("Views gave no view");
      auto get = [&](std::string_view member) {
        return Invoke(context, view->get(), "View", member, CallKind::kGet);
      };
      host::NamedView v;
      Result<ScopedVariant> name = get("Name");
      Result<ScopedVariant> centre = get("Center");
      Result<ScopedVariant> height = get("Height");
      Result<ScopedVariant> width = get("Width");
      for (const Result<ScopedVariant>* r : {&name, &centre, &height, &width}) {
        if (!r->ok()) return r->status();
      }
      Result<std::string> text = ReadText(*name->get());
      Result<std::vector<double>> xy = ReadDoubles(*centre->get());
      Result<double> h = ReadR8(*height->get());
      Result<double> w = ReadR8(*width->get());
      if (!text.ok() || !xy.ok() || xy->size() < 2 || !h.ok() || !w.ok()) {
        return Status::InvalidArgument("a view's values are not readable");
      }
      v.name = *text;
      v.center = Point{(*xy)[0], (*xy)[1], 0};
      v.height = *h;
      v.width = *w;
      out.push_back(std::move(v));
    }
    return out;
  }
  // Delete is the View's own member, not the collection's.
  Status DoDeleteView(std::string_view name) override {
    Result<ComPtr<IDispatch>> views = GetDispatch("Views");
    if (!views.ok()) return views.status();
    Result<ComPtr<IDispatch>> view = ViewItem(views->get(), name);
    if (!view.ok()) return view.status();
    return Invoke(*shared().context, view->get(), "View", "Delete",
                  CallKind::kGet)
        .status();
  }
  // Extended data must name an application registered in the drawing;
  // Add leaves one already there as it is. RegisteredApplications:
  // https://help.autodesk.com/cloudhelp/2021/ENU/AutoCAD-ActiveX-Reference/files/GUID-606BE79B-6E2C-4BAB-BFF7-F54B7167F96C.htm
  // https://help.autodesk.com/cloudhelp/2015/ENU/AutoCAD-ActiveX/files/GUID-62AD8980-F707-4906-8640-B3C54E9FC3F4.htm
  Status DoRegisterApplication(std::string_view name) override {
    Result<ComPtr<IDispatch>> apps = GetDispatch("RegisteredApplications");
    if (!apps.ok()) return apps.status();
    return Invoke(*shared().context, apps->get(), "RegisteredApplications",
                  "Add", CallKind::kGet, Args(TextVariant(name)))
        .status();
  }
  Result<host::ObjectPtr> DoObjectIdToObject(uint64_t id) const override {
    // VT_I8 carries the id's 64 bits; the CAD program reads them back the
    // same way.
    return Wrapped<host::ObjectPtr>(
        GetDispatch("ObjectIdToObject",
                    Args(I8Variant(static_cast<int64_t>(id)))),
        shared(), WrapAnyObject);
  }

 private:
  Result<ComPtr<IDispatch>> ViewItem(IDispatch* views,
                                     std::string_view name) const {
    Result<ScopedVariant> item =
        Invoke(*shared().context, views, "Views", "Item", CallKind::kGet,
               Args(TextVariant(name)));
    if (!item.ok()) return item.status();
    return ReadDispatch(*item->get());
  }
};

class ComDocument : public ComDatabaseT<host::Document> {
 public:
  ComDocument(const Shared& shared, ComPtr<IDispatch> object)
      : ComDatabaseT(shared, std::move(object), "Document") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Result<std::string> DoFullName() const override {
    return GetText("FullName");
  }
  Result<host::ApplicationPtr> DoApplication() const override {
    return Wrapped<host::ApplicationPtr>(GetDispatch("Application"), shared(),
                                         WrapApplicationShared);
  }
  Result<host::Variant> DoGetVariable(std::string_view name) const override {
    Result<ScopedVariant> v = Call("GetVariable", Args(TextVariant(name)));
    if (!v.ok()) return v.status();
    return ReadHostVariant(*v->get());
  }
  Status DoSetVariable(std::string_view name,
                       const host::Variant& value) override {
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(name));
    args.push_back(HostVariant(value));
    return Do("SetVariable", std::move(args));
  }
  // SendCommand returns as soon as the command prompts; the command runs
  // when the program is idle. The add-in reads the command's effect next
  // (the pattern layout, the restored FILEDIA), so it waits for the program
  // to be quiescent ("GetAcadState Method (ActiveX)", https://help.autodesk.
  // com/cloudhelp/2015/ENU/AutoCAD-ActiveX/files/GUID-820F93B4-7B83-4708-
  // 8E21-0D43D7D1C828.htm). A program without GetAcadState is taken as it
  // answers.
  Status DoSendCommand(std::string_view command) override {
    if (Status s = Do("SendCommand", Args(TextVariant(command))); !s.ok()) {
      return s;
    }
    WaitUntilQuiescent();
    return Status();
  }
  void WaitUntilQuiescent() const {
    Result<ComPtr<IDispatch>> app = GetDispatch("Application");
    if (!app.ok()) return;
    ComContext& context = *shared().context;
    const auto deadline =
        std::chrono::steady_clock::now() + context.busy_budget();
    std::chrono::milliseconds pause{5};
    for (;;) {
      Result<ScopedVariant> state = Invoke(context, app->get(), "Application",
                                           "GetAcadState", CallKind::kGet);
      if (!state.ok() || V_VT(state->get()) != VT_DISPATCH ||
          V_DISPATCH(state->get()) == nullptr) {
        return;
      }
      Result<ScopedVariant> quiet =
          Invoke(context, V_DISPATCH(state->get()), "AcadState", "IsQuiescent",
                 CallKind::kGet);
      if (!quiet.ok() || ReadBool(*quiet->get()).value_or(true)) return;
      if (std::chrono::steady_clock::now() >= deadline) return;
      ComContext::Pause(pause);
      pause = std::min(pause * 2, std::chrono::milliseconds{100});
    }
  }
  Result<host::LayoutPtr> DoActiveLayout() const override {
    return Wrapped<host::LayoutPtr>(GetDispatch("ActiveLayout"), shared(),
                                    WrapLayout);
  }
  Status DoSetActiveLayout(const host::LayoutPtr& layout) override {
    return PutObject("ActiveLayout", layout.get());
  }
  Result<host::Space> DoActiveSpace() const override {
    Result<int32_t> space = GetI4("ActiveSpace");
    if (!space.ok()) return space.status();
    return *space == 0 ? host::Space::kPaperSpace : host::Space::kModelSpace;
  }
  Status DoSetActiveSpace(host::Space space) override {
    return Put("ActiveSpace", I4Variant(static_cast<int32_t>(space)));
  }
  Result<bool> DoMSpace() const override { return GetBool("MSpace"); }
  Status DoSetMSpace(bool in_model) override {
    return Put("MSpace", BoolVariant(in_model));
  }
  Result<host::PViewportPtr> DoActivePViewport() const override {
    Result<ComPtr<IDispatch>> v = GetDispatch("ActivePViewport");
    if (!v.ok()) return v.status();
    host::PViewportPtr typed =
        host::As<host::PViewport>(WrapEntity(shared(), std::move(*v)));
    if (typed == nullptr)
      return Status::Refused("ActivePViewport: no viewport");
    return typed;
  }
  Status DoSetActivePViewport(const host::PViewportPtr& viewport) override {
    return PutObject("ActivePViewport", viewport.get());
  }
  Result<host::ViewportPtr> DoActiveViewport() const override {
    Result<ComPtr<IDispatch>> v = GetDispatch("ActiveViewport");
    if (!v.ok()) return v.status();
    return host::ViewportPtr(std::make_shared<ComViewport>(shared(), *v));
  }
  Status DoSetActiveViewport(const host::ViewportPtr& viewport) override {
    return PutObject("ActiveViewport", viewport.get());
  }
  Result<host::LayerPtr> DoActiveLayer() const override {
    return Wrapped<host::LayerPtr>(GetDispatch("ActiveLayer"), shared(),
                                   WrapLayer);
  }
  Status DoSetActiveLayer(const host::LayerPtr& layer) override {
    return PutObject("ActiveLayer", layer.get());
  }
  Result<host::TextStylePtr> DoActiveTextStyle() const override {
    return Wrapped<host::TextStylePtr>(GetDispatch("ActiveTextStyle"), shared(),
                                       WrapTextStyle);
  }
  Status DoSetActiveTextStyle(const host::TextStylePtr& style) override {
    return PutObject("ActiveTextStyle", style.get());
  }
  Result<host::SelectionSetsPtr> DoSelectionSets() const override {
    return Wrapped<host::SelectionSetsPtr>(GetDispatch("SelectionSets"),
                                           shared(), WrapSelectionSets);
  }
  Result<host::UtilityPtr> DoUtility() const override {
    Result<ComPtr<IDispatch>> v = GetDispatch("Utility");
    if (!v.ok()) return v.status();
    return host::UtilityPtr(std::make_shared<ComUtility>(shared(), *v));
  }
  Result<host::PlotPtr> DoPlot() const override {
    Result<ComPtr<IDispatch>> v = GetDispatch("Plot");
    if (!v.ok()) return v.status();
    return host::PlotPtr(std::make_shared<ComPlot>(shared(), *v));
  }
  Status DoSaveAs(std::string_view path, int32_t save_type) override {
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(path));
    args.push_back(I4Variant(save_type));
    return Do("SaveAs", std::move(args));
  }
  Status DoClose(bool save_changes) override {
    return Do("Close", Args(BoolVariant(save_changes)));
  }

 private:
  Status PutObject(std::string_view member, const host::Object* object) {
    IDispatch* d = DispatchOf(object);
    if (d == nullptr) {
      return Status::InvalidArgument(std::string(member) +
                                     ": an object of another host");
    }
    return Put(member, DispatchVariant(d));
  }
};

class ComDbxDocument : public ComDatabaseT<host::DbxDocument> {
 public:
  ComDbxDocument(const Shared& shared, ComPtr<IDispatch> object)
      : ComDatabaseT(shared, std::move(object), "DbxDocument") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Status DoOpen(std::string_view path) override {
    return Do("Open", Args(TextVariant(path)));
  }
  Status DoDxfIn(std::string_view path) override {
    return Do("DxfIn", Args(TextVariant(path)));
  }
  Status DoDxfOut(std::string_view path) override {
    return Do("DxfOut", Args(TextVariant(path)));
  }
  Status DoSaveAs(std::string_view path) override {
    return Do("SaveAs", Args(TextVariant(path)));
  }
};

class ComDocuments : public host::Documents, public ComObject {
 public:
  ComDocuments(const Shared& shared, ComPtr<IDispatch> object)
      : host::Documents(shared.gate),
        ComObject(shared, std::move(object), "Documents") {}

 protected:
  Result<int32_t> DoCount() const override { return GetI4("Count"); }
  Result<host::DocumentPtr> DoItemAt(int32_t index) const override {
    return Wrapped<host::DocumentPtr>(
        GetDispatch("Item", Args(IndexVariant(index))), shared(), WrapDocument);
  }
  Result<std::vector<host::DocumentPtr>> DoItems() const override {
    return WrappedItems<host::DocumentPtr>(*this, WrapDocument);
  }
  Result<host::DocumentPtr> DoOpen(std::string_view path) override {
    return Wrapped<host::DocumentPtr>(
        GetDispatch("Open", Args(TextVariant(path))), shared(), WrapDocument);
  }
};

class ComApplication : public host::Application, public ComObject {
 public:
  ComApplication(const Shared& shared, ComPtr<IDispatch> object)
      : host::Application(shared.gate),
        ComObject(shared, std::move(object), "Application") {}

 protected:
  Result<std::string> DoVersion() const override { return GetText("Version"); }
  Result<bool> DoVisible() const override { return GetBool("Visible"); }
  Status DoSetVisible(bool visible) override {
    return Put("Visible", BoolVariant(visible));
  }
  Result<std::string> DoCaption() const override { return GetText("Caption"); }
  Result<host::DocumentPtr> DoActiveDocument() const override {
    Result<ComPtr<IDispatch>> d = GetDispatch("ActiveDocument");
    if (!d.ok()) {
      // Programs answer "no drawing" with an error of their own choosing.
      return Status::NotFound(d.status().message());
    }
    return WrapDocument(shared(), std::move(*d));
  }
  Result<host::DocumentsPtr> DoDocuments() const override {
    Result<ComPtr<IDispatch>> d = GetDispatch("Documents");
    if (!d.ok()) return d.status();
    return host::DocumentsPtr(std::make_shared<ComDocuments>(shared(), *d));
  }
  Result<host::PreferencesPtr> DoPreferences() const override {
    Result<ComPtr<IDispatch>> d = GetDispatch("Preferences");
    if (!d.ok()) return d.status();
    return host::PreferencesPtr(std::make_shared<ComPreferences>(shared(), *d));
  }
  Result<host::DbxDocumentPtr> DoGetInterfaceObject(
      std::string_view prog_id) override {
    return Wrapped<host::DbxDocumentPtr>(
        GetDispatch("GetInterfaceObject", Args(TextVariant(prog_id))), shared(),
        WrapDbxDocument);
  }
  Status DoZoomExtents() override { return Do("ZoomExtents"); }
};

}  // namespace

host::DocumentPtr WrapDocument(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComDocument>(shared, std::move(object));
}

host::DbxDocumentPtr WrapDbxDocument(const Shared& shared,
                                     ComPtr<IDispatch> object) {
  return std::make_shared<ComDbxDocument>(shared, std::move(object));
}

host::ApplicationPtr WrapApplicationShared(const Shared& shared,
                                           ComPtr<IDispatch> object) {
  return std::make_shared<ComApplication>(shared, std::move(object));
}

host::ApplicationPtr WrapApplication(ComPtr<IDispatch> application) {
  return WrapApplication(std::move(application),
                         std::make_shared<host::CallGate>(),
                         std::make_shared<ComContext>());
}

host::ApplicationPtr WrapApplication(ComPtr<IDispatch> application,
                                     std::shared_ptr<host::CallGate> gate,
                                     std::shared_ptr<ComContext> context) {
  LMT_CHECK(application);
  return WrapApplicationShared(Shared{std::move(gate), std::move(context)},
                               std::move(application));
}

const CallStats* CallStatsOf(const host::Object& object) {
  const ComObject* com = dynamic_cast<const ComObject*>(&object);
  return com != nullptr ? &com->shared().context->stats() : nullptr;
}

}  // namespace lmt::comhost
