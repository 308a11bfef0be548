// Blocks, layouts, symbol tables and selection sets.
#include "automation/members.h"
#include "automation/tables.h"

namespace lmt::automation {
namespace {

using host::Block;
using host::Blocks;
using host::Layer;
using host::Layers;
using host::Layout;
using host::Layouts;
using host::Linetype;
using host::Linetypes;
using host::SelectionSet;
using host::SelectionSets;
using host::TextStyle;
using host::TextStyles;

constexpr char kBlockRecordName[] = "AcDbBlockTableRecord";
constexpr char kLayoutName[] = "AcDbLayout";
constexpr char kLayerName[] = "AcDbLayerTableRecord";
constexpr char kTextStyleName[] = "AcDbTextStyleTableRecord";

Status AddPViewport(Call& call) {
  Block* self = Self<Block>(call);
  if (self == nullptr) return Status::NotSupported("not a block");
  Result<host::Point> center = Arg<host::Point>(call, 0);
  Result<double> width = Arg<double>(call, 1);
  Result<double> height = Arg<double>(call, 2);
  if (!center.ok()) return center.status();
  if (!width.ok()) return width.status();
  if (!height.ok()) return height.status();
  return Returned(call, self->AddPViewport(*center, *width, *height));
}

Status AddMText(Call& call) {
  Block* self = Self<Block>(call);
  if (self == nullptr) return Status::NotSupported("not a block");
  Result<host::Point> at = Arg<host::Point>(call, 0);
  Result<double> width = Arg<double>(call, 1);
  Result<std::string> text = Arg<std::string>(call, 2);
  if (!at.ok()) return at.status();
  if (!width.ok()) return width.status();
  if (!text.ok()) return text.status();
  return Returned(call, self->AddMText(*at, *width, *text));
}

Status AddLightWeightPolyline(Call& call) {
  Block* self = Self<Block>(call);
  if (self == nullptr) return Status::NotSupported("not a block");
  Result<std::vector<double>> coordinates = Arg<std::vector<double>>(call, 0);
  if (!coordinates.ok()) return coordinates.status();
  return Returned(call, self->AddLightWeightPolyline(*coordinates));
}

Status AddText(Call& call) {
  Block* self = Self<Block>(call);
  if (self == nullptr) return Status::NotSupported("not a block");
  Result<std::string> text = Arg<std::string>(call, 0);
  Result<host::Point> at = Arg<host::Point>(call, 1);
  Result<double> height = Arg<double>(call, 2);
  if (!text.ok()) return text.status();
  if (!at.ok()) return at.status();
  if (!height.ok()) return height.status();
  return Returned(call, self->AddText(*text, *at, *height));
}

// InsertBlock(InsertionPoint, Name [, Xscale [, Yscale [, ZScale
// [, Rotation]]]]): the scales default to 1 and the rotation to 0 radians.
Status InsertBlock(Call& call) {
  Block* self = Self<Block>(call);
  if (self == nullptr) return Status::NotSupported("not a block");
  Result<host::Point> at = Arg<host::Point>(call, 0);
  Result<std::string> name = Arg<std::string>(call, 1);
  if (!at.ok()) return at.status();
  if (!name.ok()) return name.status();
  double numbers[4] = {1, 1, 1, 0};
  for (size_t i = 0; i < 4; ++i) {
    Result<std::optional<double>> value = OptionalArg<double>(call, 2 + i);
    if (!value.ok()) return value.status();
    if (*value) numbers[i] = **value;
  }
  return Returned(call, self->InsertBlock(*at, *name, numbers[0], numbers[1],
                                          numbers[2], numbers[3]));
}

Status CopyFrom(Call& call) {
  Layout* self = Self<Layout>(call);
  if (self == nullptr) return Status::NotSupported("not a layout");
  Result<host::LayoutPtr> source = ObjectArg<Layout>(call, 0);
  if (!source.ok()) return source.status();
  return self->CopyFrom(*source);
}

// GetFont(Typeface, Bold, Italic, Charset, PitchAndFamily), all out and
// typed (String, Boolean, Boolean, Long, Long): as with the programs' type
// library, a VARIANT reference or a reference of another type is refused.
Status GetFont(Call& call) {
  TextStyle* self = Self<TextStyle>(call);
  if (self == nullptr) return Status::NotSupported("not a text style");
  if (call.args.size() < 5) return MissingArgument(call.args.size());
  constexpr VARTYPE kTypes[] = {VT_BSTR, VT_BOOL, VT_BOOL, VT_I4, VT_I4};
  for (size_t i = 0; i < 5; ++i) {
    if (V_VT(call.args[i]) != (VT_BYREF | kTypes[i]) ||
        V_BYREF(call.args[i]) == nullptr) {
      return Status::InvalidArgument("GetFont: argument " +
                                     std::to_string(i + 1) +
                                     " is not a variable of its type");
    }
  }
  Result<host::Font> font = self->GetFont();
  if (!font.ok()) return font.status();
  BSTR* face = V_BSTRREF(call.args[0]);
  SysFreeString(*face);
  *face = SysAllocString(core::Utf8ToWide(font->typeface).c_str());
  *V_BOOLREF(call.args[1]) = font->bold ? VARIANT_TRUE : VARIANT_FALSE;
  *V_BOOLREF(call.args[2]) = font->italic ? VARIANT_TRUE : VARIANT_FALSE;
  *V_I4REF(call.args[3]) = font->charset;
  *V_I4REF(call.args[4]) = font->pitch_and_family;
  return Status();
}

// GetPaperSize(Width, Height), both out, in millimetres.
Status GetPaperSize(Call& call) {
  Layout* self = Self<Layout>(call);
  if (self == nullptr) return Status::NotSupported("not a layout");
  Result<host::PaperSize> size = self->GetPaperSize();
  if (!size.ok()) return size.status();
  if (call.args.size() < 2) return MissingArgument(call.args.size());
  comhost::ScopedVariant values[] = {comhost::R8Variant(size->width),
                                     comhost::R8Variant(size->height)};
  for (size_t i = 0; i < 2; ++i) {
    VARIANT* arg = call.args[i];
    if (V_VT(arg) != (VT_BYREF | VT_VARIANT) || V_VARIANTREF(arg) == nullptr) {
      return Status::InvalidArgument("GetPaperSize takes variables");
    }
    VariantClear(V_VARIANTREF(arg));
    *V_VARIANTREF(arg) = values[i].Release();
  }
  return Status();
}

Status SetFont(Call& call) {
  TextStyle* self = Self<TextStyle>(call);
  if (self == nullptr) return Status::NotSupported("not a text style");
  Result<std::string> face = Arg<std::string>(call, 0);
  Result<bool> bold = Arg<bool>(call, 1);
  Result<bool> italic = Arg<bool>(call, 2);
  Result<int32_t> charset = Arg<int32_t>(call, 3);
  Result<int32_t> pitch = Arg<int32_t>(call, 4);
  if (!face.ok() || !bold.ok() || !italic.ok() || !charset.ok() ||
      !pitch.ok()) {
    return Status::InvalidArgument("SetFont: bad arguments");
  }
  return self->SetFont(host::Font{*face, *bold, *italic, *charset, *pitch});
}

// The filter arguments at `index` and `index` + 1 (both may be omitted).
Result<host::SelectionFilter> FilterArgs(Call& call, size_t index) {
  VARIANT missing;
  VariantInit(&missing);
  const VARIANT& codes = index < call.args.size() ? *call.args[index] : missing;
  const VARIANT& values =
      index + 1 < call.args.size() ? *call.args[index + 1] : missing;
  return comhost::ReadFilter(codes, values);
}

// Select(Mode, [Point1], [Point2], [FilterType], [FilterData]).
Status Select(Call& call) {
  SelectionSet* self = Self<SelectionSet>(call);
  if (self == nullptr) return Status::NotSupported("not a selection set");
  Result<int32_t> mode = Arg<int32_t>(call, 0);
  if (!mode.ok()) return mode.status();
  if (*mode < 0 || *mode > static_cast<int32_t>(host::SelectMode::kAll)) {
    return Status::InvalidArgument("unknown selection mode");
  }
  Result<std::optional<host::Point>> p1 = OptionalArg<host::Point>(call, 1);
  Result<std::optional<host::Point>> p2 = OptionalArg<host::Point>(call, 2);
  if (!p1.ok()) return p1.status();
  if (!p2.ok()) return p2.status();
  Result<host::SelectionFilter> filter = FilterArgs(call, 3);
  if (!filter.ok()) return filter.status();
  auto select_mode = static_cast<host::SelectMode>(*mode);
  if (*p1 && *p2) return self->Select(select_mode, **p1, **p2, *filter);
  return self->Select(select_mode, *filter);
}

Status SelectOnScreen(Call& call) {
  SelectionSet* self = Self<SelectionSet>(call);
  if (self == nullptr) return Status::NotSupported("not a selection set");
  Result<host::SelectionFilter> filter = FilterArgs(call, 0);
  if (!filter.ok()) return filter.status();
  return self->SelectOnScreen(*filter);
}

template <Status (SelectionSet::*Method)(const std::vector<host::EntityPtr>&)>
Status WithItems(Call& call) {
  SelectionSet* self = Self<SelectionSet>(call);
  if (self == nullptr) return Status::NotSupported("not a selection set");
  Result<std::vector<host::EntityPtr>> items = EntitiesArg(call, 0);
  if (!items.ok()) return items.status();
  return (self->*Method)(*items);
}

constexpr Member kBlock[] = {
    {L"ObjectName", &FixedObjectName<kBlockRecordName>},
    {L"Name", &Prop<Block, &Block::Name>},
    {L"IsXRef", &Prop<Block, &Block::IsXRef>},
    {L"IsLayout", &Prop<Block, &Block::IsLayout>},
    {L"Origin", &Prop<Block, &Block::Origin>},
    {L"Layout", &Prop<Block, &Block::Layout>},
    {L"Count", &Prop<Block, &Block::Count>},
    {L"Item", &IndexItem<Block>},
    {L"AddPViewport", &AddPViewport},
    {L"AddMText", &AddMText},
    {L"AddLightWeightPolyline", &AddLightWeightPolyline},
    {L"AddText", &AddText},
    {L"InsertBlock", &InsertBlock},
};
constexpr Member kBlocks[] = {
    {L"Count", &Prop<Blocks, &Blocks::Count>},
    {L"Item", &NamedItem<Blocks>},
};
constexpr Member kLayout[] = {
    {L"ObjectName", &FixedObjectName<kLayoutName>},
    {L"Name", &Prop<Layout, &Layout::Name, &Layout::SetName>},
    {L"Block", &Prop<Layout, &Layout::Block>},
    {L"CopyFrom", &CopyFrom},
    {L"PlotType", &Prop<Layout, &Layout::PlotType, &Layout::SetPlotType>},
    {L"TabOrder", &Prop<Layout, &Layout::TabOrder, &Layout::SetTabOrder>},
    {L"Delete", &Action<Layout, &Layout::Delete>},
    {L"ConfigName", &Prop<Layout, &Layout::ConfigName, &Layout::SetConfigName>},
    {L"CanonicalMediaName", &Prop<Layout, &Layout::CanonicalMediaName,
                                  &Layout::SetCanonicalMediaName>},
    {L"StyleSheet", &Prop<Layout, &Layout::StyleSheet, &Layout::SetStyleSheet>},
    {L"StandardScale",
     &Prop<Layout, &Layout::StandardScale, &Layout::SetStandardScale>},
    {L"UseStandardScale",
     &Prop<Layout, &Layout::UseStandardScale, &Layout::SetUseStandardScale>},
    {L"CenterPlot", &Prop<Layout, &Layout::CenterPlot, &Layout::SetCenterPlot>},
    {L"PlotRotation",
     &Prop<Layout, &Layout::PlotRotation, &Layout::SetPlotRotation>},
    {L"GetPaperSize", &GetPaperSize},
    {L"RefreshPlotDeviceInfo", &Action<Layout, &Layout::RefreshPlotDeviceInfo>},
};
constexpr Member kLayouts[] = {
    {L"Count", &Prop<Layouts, &Layouts::Count>},
    {L"Item", &NamedItem<Layouts>},
    {L"Add", &AddNamed<Layouts>},
};
constexpr Member kLayer[] = {
    {L"ObjectName", &FixedObjectName<kLayerName>},
    {L"Name", &Prop<Layer, &Layer::Name>},
    {L"Freeze", &Prop<Layer, &Layer::Freeze, &Layer::SetFreeze>},
    {L"Lock", &Prop<Layer, &Layer::Lock, &Layer::SetLock>},
    {L"Delete", &Action<Layer, &Layer::Delete>},
};
constexpr Member kLayers[] = {
    {L"Count", &Prop<Layers, &Layers::Count>},
    {L"Item", &NamedItem<Layers>},
    {L"Add", &AddNamed<Layers>},
};
constexpr Member kLinetype[] = {
    {L"Name", &Prop<Linetype, &Linetype::Name>},
};
constexpr Member kLinetypes[] = {
    {L"Count", &Prop<Linetypes, &Linetypes::Count>},
    {L"Item", &NamedItem<Linetypes>},
};
constexpr Member kTextStyle[] = {
    {L"ObjectName", &FixedObjectName<kTextStyleName>},
    {L"Name", &Prop<TextStyle, &TextStyle::Name>},
    {L"GetFont", &GetFont},
    {L"SetFont", &SetFont},
    {L"FontFile",
     &Prop<TextStyle, &TextStyle::FontFile, &TextStyle::SetFontFile>},
};
constexpr Member kTextStyles[] = {
    {L"Count", &Prop<TextStyles, &TextStyles::Count>},
    {L"Item", &NamedItem<TextStyles>},
    {L"Add", &AddNamed<TextStyles>},
};
constexpr Member kSelectionSet[] = {
    {L"Name", &Prop<SelectionSet, &SelectionSet::Name>},
    {L"Count", &Prop<SelectionSet, &SelectionSet::Count>},
    {L"Item", &IndexItem<SelectionSet>},
    {L"Select", &Select},
    {L"SelectOnScreen", &SelectOnScreen},
    {L"AddItems", &WithItems<&SelectionSet::AddItems>},
    {L"RemoveItems", &WithItems<&SelectionSet::RemoveItems>},
    {L"Clear", &Action<SelectionSet, &SelectionSet::Clear>},
    {L"Erase", &Action<SelectionSet, &SelectionSet::Erase>},
    {L"Delete", &Action<SelectionSet, &SelectionSet::Delete>},
};
constexpr Member kSelectionSets[] = {
    {L"Count", &Prop<SelectionSets, &SelectionSets::Count>},
    {L"Item", &NamedItem<SelectionSets>},
    {L"Add", &AddNamed<SelectionSets>},
};

}  // namespace

const ClassTable kBlockTable{L"Block", kBlock, &ItemsOf<Block>};
const ClassTable kBlocksTable{L"Blocks", kBlocks, &ItemsOf<Blocks>};
const ClassTable kLayoutTable{L"Layout", kLayout};
const ClassTable kLayoutsTable{L"Layouts", kLayouts, &ItemsOf<Layouts>};
const ClassTable kLayerTable{L"Layer", kLayer};
const ClassTable kLayersTable{L"Layers", kLayers, &ItemsOf<Layers>};
const ClassTable kLinetypeTable{L"Linetype", kLinetype};
const ClassTable kLinetypesTable{L"Linetypes", kLinetypes, &ItemsOf<Linetypes>};
const ClassTable kTextStyleTable{L"TextStyle", kTextStyle};
const ClassTable kTextStylesTable{L"TextStyles", kTextStyles,
                                  &ItemsOf<TextStyles>};
const ClassTable kSelectionSetTable{L"SelectionSet", kSelectionSet,
                                    &ItemsOf<SelectionSet>};
const ClassTable kSelectionSetsTable{L"SelectionSets", kSelectionSets,
                                     &ItemsOf<SelectionSets>};

}  // namespace lmt::automation
