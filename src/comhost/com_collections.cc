// Blocks, layouts, symbol tables and selection sets over IDispatch. Every
// collection answers Count, Item (a zero-based index or a name, as the
// object model's Item takes either) and Items through its enumerator.
#include <utility>

#include "comhost/com_object.h"

namespace lmt::comhost {
namespace {

using host::Point;

std::vector<ScopedVariant> Args(ScopedVariant a) {
  std::vector<ScopedVariant> args;
  args.push_back(std::move(a));
  return args;
}

// Count / Item(index) / Item(name) / Items of one collection class.
template <typename Base, typename ItemPtr,
          ItemPtr (*Wrap)(const Shared&, ComPtr<IDispatch>)>
class ComCollectionT : public Base, public ComObject {
 public:
  ComCollectionT(const Shared& shared, ComPtr<IDispatch> object,
                 std::string type_key)
      : Base(shared.gate),
        ComObject(shared, std::move(object), std::move(type_key)) {}

 protected:
  Result<int32_t> DoCount() const override { return GetI4("Count"); }
  Result<ItemPtr> DoItemAt(int32_t index) const override {
    return Wrapped<ItemPtr>(GetDispatch("Item", Args(IndexVariant(index))),
                            shared(), Wrap);
  }
  Result<std::vector<ItemPtr>> DoItems() const override {
    return WrappedItems<ItemPtr>(*this, Wrap);
  }
  Result<ItemPtr> Named(std::string_view name) const {
    return Wrapped<ItemPtr>(GetDispatch("Item", Args(TextVariant(name))),
                            shared(), Wrap);
  }
  Result<ItemPtr> Added(std::string_view name) {
    return Wrapped<ItemPtr>(GetDispatch("Add", Args(TextVariant(name))),
                            shared(), Wrap);
  }
};

template <typename Base, typename ItemPtr,
          ItemPtr (*Wrap)(const Shared&, ComPtr<IDispatch>)>
class ComNamedCollectionT : public ComCollectionT<Base, ItemPtr, Wrap> {
 public:
  using ComCollectionT<Base, ItemPtr, Wrap>::ComCollectionT;

 protected:
  Result<ItemPtr> DoItemNamed(std::string_view name) const override {
    return this->Named(name);
  }
};

template <typename Base, typename ItemPtr,
          ItemPtr (*Wrap)(const Shared&, ComPtr<IDispatch>)>
class ComAddableCollectionT : public ComNamedCollectionT<Base, ItemPtr, Wrap> {
 public:
  using ComNamedCollectionT<Base, ItemPtr, Wrap>::ComNamedCollectionT;

 protected:
  Result<ItemPtr> DoAdd(std::string_view name) override {
    return this->Added(name);
  }
};

host::LinetypePtr WrapLinetype(const Shared& shared, ComPtr<IDispatch> object);

class ComBlock : public host::Block, public ComObject {
 public:
  ComBlock(const Shared& shared, ComPtr<IDispatch> object)
      : host::Block(shared.gate),
        ComObject(shared, std::move(object), "Block") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Result<bool> DoIsXRef() const override { return GetBool("IsXRef"); }
  Result<bool> DoIsLayout() const override { return GetBool("IsLayout"); }
  // The base point, in WCS ("Origin Property (ActiveX)",
  // https://help.autodesk.com/cloudhelp/2016/ENU/AutoCAD-ActiveX/files/
  // GUID-9EB3E590-E112-4FA7-A266-3B60E5A0B1AF.htm).
  Result<host::Point> DoOrigin() const override { return GetPoint("Origin"); }
  Result<host::LayoutPtr> DoLayout() const override {
    return Wrapped<host::LayoutPtr>(GetDispatch("Layout"), shared(),
                                    WrapLayout);
  }
  Result<int32_t> DoCount() const override { return GetI4("Count"); }
  Result<host::EntityPtr> DoItemAt(int32_t index) const override {
    return Wrapped<host::EntityPtr>(
        GetDispatch("Item", Args(IndexVariant(index))), shared(), WrapEntity);
  }
  Result<std::vector<host::EntityPtr>> DoItems() const override {
    return WrappedItems<host::EntityPtr>(*this, WrapEntity);
  }
  Result<host::PViewportPtr> DoAddPViewport(const Point& center, double width,
                                            double height) override {
    std::vector<ScopedVariant> args;
    args.push_back(PointVariant(center));
    args.push_back(R8Variant(width));
    args.push_back(R8Variant(height));
    return Added<host::PViewport>("AddPViewport", "AcDbViewport",
                                  std::move(args));
  }
  Result<host::MTextPtr> DoAddMText(const Point& insertion_point, double width,
                                    std::string_view text) override {
    std::vector<ScopedVariant> args;
    args.push_back(PointVariant(insertion_point));
    args.push_back(R8Variant(width));
    args.push_back(TextVariant(text));
    return Added<host::MText>("AddMText", "AcDbMText", std::move(args));
  }
  Result<host::PolylinePtr> DoAddLightWeightPolyline(
      const std::vector<double>& coordinates) override {
    return Added<host::Polyline>("AddLightWeightPolyline", "AcDbPolyline",
                                 Args(DoublesVariant(coordinates)));
  }
  Result<host::TextPtr> DoAddText(std::string_view text,
                                  const Point& insertion_point,
                                  double height) override {
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(text));
    args.push_back(PointVariant(insertion_point));
    args.push_back(R8Variant(height));
    return Added<host::Text>("AddText", "AcDbText", std::move(args));
  }
  // InsertBlock(InsertionPoint, Name, Xscale, Yscale, ZScale, Rotation):
  // Name is a block of the drawing or a drawing file's path, from which the
  // program defines the block itself; rotation in radians. See
  // https://help.autodesk.com/cloudhelp/2015/ENU/AutoCAD-ActiveX/files/GUID-17F86FDD-B7FC-4F43-9F16-B4958F73A66D.htm
  Result<host::BlockReferencePtr> DoInsertBlock(const Point& insertion_point,
                                                std::string_view name,
                                                double x_scale, double y_scale,
                                                double z_scale,
                                                double rotation) override {
    std::vector<ScopedVariant> args;
    args.push_back(PointVariant(insertion_point));
    args.push_back(TextVariant(name));
    args.push_back(R8Variant(x_scale));
    args.push_back(R8Variant(y_scale));
    args.push_back(R8Variant(z_scale));
    args.push_back(R8Variant(rotation));
    return Added<host::BlockReference>("InsertBlock", "AcDbBlockReference",
                                       std::move(args));
  }

 private:
  // A new entity of kind T, whose ObjectName is `kind` by the object
  // model's contract, so it is not asked.
  template <typename T>
  Result<std::shared_ptr<T>> Added(std::string_view member, const char* kind,
                                   std::vector<ScopedVariant> args) {
    Result<ComPtr<IDispatch>> object = GetDispatch(member, std::move(args));
    if (!object.ok()) return object.status();
    std::shared_ptr<T> typed =
        host::As<T>(WrapEntityOfKind(shared(), std::move(*object), kind));
    if (typed == nullptr) {
      return Status::Refused(std::string(member) + ": unexpected object kind");
    }
    return typed;
  }
};

class ComLayout : public host::Layout, public ComObject {
 public:
  ComLayout(const Shared& shared, ComPtr<IDispatch> object)
      : host::Layout(shared.gate),
        ComObject(shared, std::move(object), "Layout") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Status DoSetName(std::string_view name) override {
    return Put("Name", TextVariant(name));
  }
  Result<host::BlockPtr> DoBlock() const override {
    return Wrapped<host::BlockPtr>(GetDispatch("Block"), shared(), WrapBlock);
  }
  Status DoCopyFrom(const host::LayoutPtr& source) override {
    IDispatch* d = DispatchOf(source.get());
    if (d == nullptr) return Status::InvalidArgument("CopyFrom: no layout");
    return Do("CopyFrom", Args(DispatchVariant(d)));
  }
  Result<int32_t> DoPlotType() const override { return GetI4("PlotType"); }
  Status DoSetPlotType(int32_t plot_type) override {
    return Put("PlotType", I4Variant(plot_type));
  }
  Status DoDelete() override { return Do("Delete"); }
  Result<int32_t> DoTabOrder() const override { return GetI4("TabOrder"); }
  Status DoSetTabOrder(int32_t order) override {
    return Put("TabOrder", I4Variant(order));
  }
  // Page setup, under the LayoutPlotConfiguration members of the ActiveX
  // reference (ConfigName, CanonicalMediaName, StyleSheet, StandardScale,
  // UseStandardScale, CenterPlot, PlotRotation, GetPaperSize in mm whatever
  // PaperUnits says, RefreshPlotDeviceInfo), e.g.
  // https://help.autodesk.com/cloudhelp/2016/ENU/AutoCAD-ActiveX/files/GUID-7B662353-85A5-486D-8673-B164DACA3676.htm
  Result<std::string> DoConfigName() const override {
    return GetText("ConfigName");
  }
  Status DoSetConfigName(std::string_view name) override {
    return Put("ConfigName", TextVariant(name));
  }
  Result<std::string> DoCanonicalMediaName() const override {
    return GetText("CanonicalMediaName");
  }
  Status DoSetCanonicalMediaName(std::string_view name) override {
    return Put("CanonicalMediaName", TextVariant(name));
  }
  Result<std::string> DoStyleSheet() const override {
    return GetText("StyleSheet");
  }
  Status DoSetStyleSheet(std::string_view name) override {
    return Put("StyleSheet", TextVariant(name));
  }
  Result<int32_t> DoStandardScale() const override {
    return GetI4("StandardScale");
  }
  Status DoSetStandardScale(int32_t scale) override {
    return Put("StandardScale", I4Variant(scale));
  }
  Result<bool> DoUseStandardScale() const override {
    return GetBool("UseStandardScale");
  }
  Status DoSetUseStandardScale(bool use) override {
    return Put("UseStandardScale", BoolVariant(use));
  }
  Result<bool> DoCenterPlot() const override { return GetBool("CenterPlot"); }
  Status DoSetCenterPlot(bool center) override {
    return Put("CenterPlot", BoolVariant(center));
  }
  Result<int32_t> DoPlotRotation() const override {
    return GetI4("PlotRotation");
  }
  Status DoSetPlotRotation(int32_t rotation) override {
    return Put("PlotRotation", I4Variant(rotation));
  }
  Result<host::PaperSize> DoGetPaperSize() const override {
    ScopedVariant width, height;
    std::vector<ScopedVariant> args;
    for (ScopedVariant* out : {&width, &height}) {
      args.push_back(RefVariant(*out));
    }
    if (Status s = Do("GetPaperSize", std::move(args)); !s.ok()) return s;
    Result<double> w = ReadR8(*width.get());
    Result<double> h = ReadR8(*height.get());
    if (!w.ok() || !h.ok()) {
      return Status::InvalidArgument("GetPaperSize: unreadable size");
    }
    return host::PaperSize{*w, *h};
  }
  Status DoRefreshPlotDeviceInfo() override {
    return Do("RefreshPlotDeviceInfo");
  }
};

class ComLayer : public host::Layer, public ComObject {
 public:
  ComLayer(const Shared& shared, ComPtr<IDispatch> object)
      : host::Layer(shared.gate),
        ComObject(shared, std::move(object), "Layer") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Result<bool> DoFreeze() const override { return GetBool("Freeze"); }
  Status DoSetFreeze(bool frozen) override {
    return Put("Freeze", BoolVariant(frozen));
  }
  Result<bool> DoLock() const override { return GetBool("Lock"); }
  Status DoSetLock(bool locked) override {
    return Put("Lock", BoolVariant(locked));
  }
  Status DoDelete() override { return Do("Delete"); }
};

class ComLinetype : public host::Linetype, public ComObject {
 public:
  ComLinetype(const Shared& shared, ComPtr<IDispatch> object)
      : host::Linetype(shared.gate),
        ComObject(shared, std::move(object), "Linetype") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
};

class ComTextStyle : public host::TextStyle, public ComObject {
 public:
  ComTextStyle(const Shared& shared, ComPtr<IDispatch> object)
      : host::TextStyle(shared.gate),
        ComObject(shared, std::move(object), "TextStyle") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  // GetFont(Typeface As String, Bold As Boolean, Italic As Boolean,
  // Charset As Long, PitchAndFamily As Long), typed output-only arguments
  // ("GetFont Method (ActiveX)", https://help.autodesk.com/cloudhelp/2016/
  // CHS/AutoCAD-ActiveX/files/GUID-7070FBED-AD5F-47EB-BB9A-5CD25B76DCC8.htm):
  // the type library refuses a VARIANT reference as a type mismatch.
  Result<host::Font> DoGetFont() const override {
    BSTR typeface = nullptr;
    VARIANT_BOOL bold = VARIANT_FALSE;
    VARIANT_BOOL italic = VARIANT_FALSE;
    LONG charset = 0;
    LONG pitch = 0;
    std::vector<ScopedVariant> args;
    args.push_back(TypedRefVariant(VT_BSTR, &typeface));
    args.push_back(TypedRefVariant(VT_BOOL, &bold));
    args.push_back(TypedRefVariant(VT_BOOL, &italic));
    args.push_back(TypedRefVariant(VT_I4, &charset));
    args.push_back(TypedRefVariant(VT_I4, &pitch));
    Status s = Do("GetFont", std::move(args));
    std::string face;
    if (typeface != nullptr) {
      face = WideToUtf8(std::wstring_view(typeface, SysStringLen(typeface)));
      SysFreeString(typeface);
    }
    if (!s.ok()) return s;
    return host::Font{face, bold != VARIANT_FALSE, italic != VARIANT_FALSE,
                      static_cast<int32_t>(charset),
                      static_cast<int32_t>(pitch)};
  }
  Status DoSetFont(const host::Font& font) override {
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(font.typeface));
    args.push_back(BoolVariant(font.bold));
    args.push_back(BoolVariant(font.italic));
    args.push_back(I4Variant(font.charset));
    args.push_back(I4Variant(font.pitch_and_family));
    return Do("SetFont", std::move(args));
  }
  Result<std::string> DoFontFile() const override {
    return GetText("FontFile");
  }
  Status DoSetFontFile(std::string_view file) override {
    return Put("FontFile", TextVariant(file));
  }
};

class ComSelectionSet : public host::SelectionSet, public ComObject {
 public:
  ComSelectionSet(const Shared& shared, ComPtr<IDispatch> object)
      : host::SelectionSet(shared.gate),
        ComObject(shared, std::move(object), "SelectionSet") {}

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Result<int32_t> DoCount() const override { return GetI4("Count"); }
  Result<host::EntityPtr> DoItemAt(int32_t index) const override {
    return Wrapped<host::EntityPtr>(
        GetDispatch("Item", Args(IndexVariant(index))), shared(), WrapEntity);
  }
  Result<std::vector<host::EntityPtr>> DoItems() const override {
    return WrappedItems<host::EntityPtr>(*this, WrapEntity);
  }
  Status DoSelectOnScreen(const host::SelectionFilter& filter) override {
    std::vector<ScopedVariant> args;
    AppendFilter(filter, args);
    return Do("SelectOnScreen", std::move(args));
  }
  Status DoAddItems(const std::vector<host::EntityPtr>& items) override {
    return WithObjects("AddItems", items);
  }
  Status DoRemoveItems(const std::vector<host::EntityPtr>& items) override {
    return WithObjects("RemoveItems", items);
  }
  Status DoClear() override { return Do("Clear"); }
  Status DoErase() override { return Do("Erase"); }
  Status DoDelete() override { return Do("Delete"); }
  // Select(Mode, [Point1], [Point2], [FilterType], [FilterData]).
  Status DoSelect(host::SelectMode mode, const std::optional<Point>& corner1,
                  const std::optional<Point>& corner2,
                  const host::SelectionFilter& filter) override {
    std::vector<ScopedVariant> args;
    args.push_back(I4Variant(static_cast<int32_t>(mode)));
    args.push_back(corner1 ? PointVariant(*corner1) : MissingVariant());
    args.push_back(corner2 ? PointVariant(*corner2) : MissingVariant());
    AppendFilter(filter, args);
    return Do("Select", std::move(args));
  }

 private:
  // The filter's two arrays, or two omitted arguments for no filter (an
  // empty array is refused by some hosts).
  static void AppendFilter(const host::SelectionFilter& filter,
                           std::vector<ScopedVariant>& args) {
    if (filter.empty()) {
      args.push_back(MissingVariant());
      args.push_back(MissingVariant());
      return;
    }
    ScopedVariant codes, values;
    FilterVariants(filter, codes, values);
    args.push_back(std::move(codes));
    args.push_back(std::move(values));
  }
  Status WithObjects(std::string_view member,
                     const std::vector<host::EntityPtr>& items) {
    Result<std::vector<IDispatch*>> objects = DispatchesOf(items);
    if (!objects.ok()) return objects.status();
    return Do(member, Args(DispatchArrayVariant(*objects)));
  }
};

using ComBlocks = ComNamedCollectionT<host::Blocks, host::BlockPtr, WrapBlock>;
using ComLayouts =
    ComAddableCollectionT<host::Layouts, host::LayoutPtr, WrapLayout>;
using ComLayers =
    ComAddableCollectionT<host::Layers, host::LayerPtr, WrapLayer>;
using ComLinetypes =
    ComNamedCollectionT<host::Linetypes, host::LinetypePtr, WrapLinetype>;
using ComTextStyles =
    ComAddableCollectionT<host::TextStyles, host::TextStylePtr, WrapTextStyle>;
using ComSelectionSets =
    ComAddableCollectionT<host::SelectionSets, host::SelectionSetPtr,
                          WrapSelectionSet>;

host::LinetypePtr WrapLinetype(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComLinetype>(shared, std::move(object));
}

}  // namespace

host::BlockPtr WrapBlock(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComBlock>(shared, std::move(object));
}
host::LayoutPtr WrapLayout(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComLayout>(shared, std::move(object));
}
host::LayerPtr WrapLayer(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComLayer>(shared, std::move(object));
}
host::TextStylePtr WrapTextStyle(const Shared& shared,
                                 ComPtr<IDispatch> object) {
  return std::make_shared<ComTextStyle>(shared, std::move(object));
}
host::SelectionSetPtr WrapSelectionSet(const Shared& shared,
                                       ComPtr<IDispatch> object) {
  return std::make_shared<ComSelectionSet>(shared, std::move(object));
}
host::BlocksPtr WrapBlocks(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComBlocks>(shared, std::move(object), "Blocks");
}
host::LayoutsPtr WrapLayouts(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComLayouts>(shared, std::move(object), "Layouts");
}
host::LayersPtr WrapLayers(const Shared& shared, ComPtr<IDispatch> object) {
  return std::make_shared<ComLayers>(shared, std::move(object), "Layers");
}
host::LinetypesPtr WrapLinetypes(const Shared& shared,
                                 ComPtr<IDispatch> object) {
  return std::make_shared<ComLinetypes>(shared, std::move(object), "Linetypes");
}
host::TextStylesPtr WrapTextStyles(const Shared& shared,
                                   ComPtr<IDispatch> object) {
  return std::make_shared<ComTextStyles>(shared, std::move(object),
                                         "TextStyles");
}
host::SelectionSetsPtr WrapSelectionSets(const Shared& shared,
                                         ComPtr<IDispatch> object) {
  return std::make_shared<ComSelectionSets>(shared, std::move(object),
                                            "SelectionSets");
}

}  // namespace lmt::comhost
