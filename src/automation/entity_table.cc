// Entities: the members of every kind in one table.
#include <string>
#include <variant>
#include <vector>

#include "automation/members.h"
#include "automation/server.h"
#include "automation/tables.h"

namespace lmt::automation {
namespace {

using host::Attribute;
using host::BlockReference;
using host::Entity;
using host::MLeader;
using host::MText;
using host::Polyline;
using host::PViewport;
using host::Text;

// Fills the by-reference argument `index` (an out parameter).
Status SetOut(Call& call, size_t index, comhost::ScopedVariant value) {
  if (index >= call.args.size()) return MissingArgument(index);
  VARIANT* arg = call.args[index];
  if (V_VT(arg) != (VT_BYREF | VT_VARIANT) || V_VARIANTREF(arg) == nullptr) {
    return Status::InvalidArgument("argument " + std::to_string(index + 1) +
                                   " must be a variable");
  }
  VariantClear(V_VARIANTREF(arg));
  *V_VARIANTREF(arg) = value.Release();
  return Status();
}

Status GetBoundingBox(Call& call) {
  Entity* self = Self<Entity>(call);
  if (self == nullptr) return Status::NotSupported("not an entity");
  Result<host::BoundingBox> box = self->GetBoundingBox();
  if (!box.ok()) return box.status();
  if (Status s = SetOut(call, 0, comhost::PointVariant(box->min)); !s.ok()) {
    return s;
  }
  return SetOut(call, 1, comhost::PointVariant(box->max));
}

Status Copy(Call& call) {
  Entity* self = Self<Entity>(call);
  if (self == nullptr) return Status::NotSupported("not an entity");
  return Returned(call, self->Copy());
}

Status Move(Call& call) {
  Entity* self = Self<Entity>(call);
  if (self == nullptr) return Status::NotSupported("not an entity");
  Result<host::Point> from = Arg<host::Point>(call, 0);
  Result<host::Point> to = Arg<host::Point>(call, 1);
  if (!from.ok()) return from.status();
  if (!to.ok()) return to.status();
  return self->Move(*from, *to);
}

Status Coordinate(Call& call) {
  Polyline* self = Self<Polyline>(call);
  if (self == nullptr) return Status::NotSupported("not a polyline");
  Result<int32_t> index = Arg<int32_t>(call, 0);
  if (!index.ok()) return index.status();
  return Returned(call, self->Coordinate(*index));
}

Status Display(Call& call) {
  PViewport* self = Self<PViewport>(call);
  if (self == nullptr) return Status::NotSupported("not a viewport");
  Result<bool> on = Arg<bool>(call, 0);
  if (!on.ok()) return on.status();
  return self->Display(*on);
}

// The two XData arrays as the programs' type library types them: VT_I2
// group codes and VT_VARIANT values (directly or by reference), of one
// length.
Result<host::SelectionFilter> XDataArgs(Call& call, size_t index) {
  if (call.args.size() < index + 2) return MissingArgument(call.args.size());
  constexpr VARTYPE kTypes[] = {VT_ARRAY | VT_I2, VT_ARRAY | VT_VARIANT};
  for (size_t i = 0; i < 2; ++i) {
    if ((V_VT(call.args[index + i]) & ~VT_BYREF) != kTypes[i]) {
      return Status::InvalidArgument("argument " +
                                     std::to_string(index + i + 1) +
                                     (i == 0 ? " must be an array of short"
                                             : " must be an array of "
                                               "variants"));
    }
  }
  return comhost::ReadFilter(*call.args[index], *call.args[index + 1]);
}

// SetXData(XDataType, XDataValue): the application's name first (1001),
// which must have been registered in the drawing, then its data. This
// server keeps strings (1000) only; the name alone removes the data.
Status SetXData(Call& call) {
  Entity* self = Self<Entity>(call);
  if (self == nullptr) return Status::NotSupported("not an entity");
  Result<host::SelectionFilter> data = XDataArgs(call, 0);
  if (!data.ok()) return data.status();
  const auto* app =
      data->empty() ? nullptr : std::get_if<std::string>(&data->values[0]);
  if (app == nullptr || data->codes[0] != 1001) {
    return Status::InvalidArgument("extended data start with 1001 and a name");
  }
  if (!call.server.IsRegistered(*app)) {
    return Status::InvalidArgument("application \"" + *app +
                                   "\" is not registered in the drawing");
  }
  std::vector<std::string> strings;
  for (size_t i = 1; i < data->size(); ++i) {
    const auto* text = std::get_if<std::string>(&data->values[i]);
    if (data->codes[i] != 1000 || text == nullptr) {
      return Status::NotSupported("this server keeps strings (1000) only");
    }
    strings.push_back(*text);
  }
  return self->SetXData(*app, strings);
}

// GetXData(AppName, XDataType, XDataValue): both arrays out, left empty
// when the object has no data of that application.
Status GetXData(Call& call) {
  Entity* self = Self<Entity>(call);
  if (self == nullptr) return Status::NotSupported("not an entity");
  Result<std::string> app = Arg<std::string>(call, 0);
  if (!app.ok()) return app.status();
  if (app->empty()) {
    return Status::NotSupported("this server reads one application's data");
  }
  Result<std::vector<std::string>> strings = self->GetXData(*app);
  if (!strings.ok()) return strings.status();
  comhost::ScopedVariant codes, values;
  if (!strings->empty()) {
    host::SelectionFilter data;
    data.Add(1001, *app);
    for (const std::string& text : *strings) data.Add(1000, text);
    comhost::FilterVariants(data, codes, values);
  }
  if (Status s = SetOut(call, 1, std::move(codes)); !s.ok()) return s;
  return SetOut(call, 2, std::move(values));
}

constexpr Member kMembers[] = {
    {L"ObjectName", &Prop<Entity, &Entity::ObjectName>},
    {L"ObjectID", &Prop<Entity, &Entity::ObjectID>},
    {L"Handle", &Prop<Entity, &Entity::Handle>},
    {L"OwnerID", &Prop<Entity, &Entity::OwnerID>},
    {L"Layer", &Prop<Entity, &Entity::Layer, &Entity::SetLayer>},
    {L"Color", &Prop<Entity, &Entity::Color, &Entity::SetColor>},
    {L"Linetype", &Prop<Entity, &Entity::Linetype, &Entity::SetLinetype>},
    {L"Lineweight", &Prop<Entity, &Entity::LineWeight, &Entity::SetLineWeight>},
    {L"Visible", &Prop<Entity, &Entity::Visible, &Entity::SetVisible>},
    {L"GetBoundingBox", &GetBoundingBox},
    {L"Delete", &Action<Entity, &Entity::Erase>},
    {L"Copy", &Copy},
    {L"Move", &Move},
    {L"Update", &Action<Entity, &Entity::Update>},
    {L"GetXData", &GetXData},
    {L"SetXData", &SetXData},
    // Polyline
    {L"Coordinates", &Prop<Polyline, &Polyline::Coordinates>},
    {L"Coordinate", &Coordinate},
    {L"Closed", &Prop<Polyline, &Polyline::Closed, &Polyline::SetClosed>},
    // BlockReference
    {L"Name", &Prop<BlockReference, &BlockReference::Name>},
    {L"EffectiveName", &Prop<BlockReference, &BlockReference::EffectiveName>},
    {L"Rotation", &Prop<BlockReference, &BlockReference::Rotation>},
    {L"XScaleFactor", &Prop<BlockReference, &BlockReference::XScaleFactor>},
    {L"YScaleFactor", &Prop<BlockReference, &BlockReference::YScaleFactor>},
    {L"HasAttributes", &Prop<BlockReference, &BlockReference::HasAttributes>},
    {L"GetAttributes", &Prop<BlockReference, &BlockReference::GetAttributes>},
    {L"GetConstantAttributes",
     &Prop<BlockReference, &BlockReference::GetConstantAttributes>},
    {L"InsertionPoint",
     &AnyKind<&Prop<BlockReference, &BlockReference::InsertionPoint>,
              &Prop<Text, &Text::InsertionPoint, &Text::SetInsertionPoint>,
              &Prop<MText, &MText::InsertionPoint, &MText::SetInsertionPoint>>},
    // Attribute, texts, leaders
    {L"TagString", &Prop<Attribute, &Attribute::TagString>},
    {L"TextString",
     &AnyKind<
         &Prop<Attribute, &Attribute::TextString, &Attribute::SetTextString>,
         &Prop<Text, &Text::TextString, &Text::SetTextString>,
         &Prop<MText, &MText::TextString, &MText::SetTextString>,
         &Prop<MLeader, &MLeader::TextString, &MLeader::SetTextString>>},
    {L"StyleName",
     &AnyKind<&Prop<Text, &Text::StyleName, &Text::SetStyleName>,
              &Prop<MText, &MText::StyleName, &MText::SetStyleName>>},
    {L"AttachmentPoint",
     &Prop<MText, &MText::AttachmentPoint, &MText::SetAttachmentPoint>},
    {L"Height",
     &AnyKind<&Prop<PViewport, &PViewport::Height, &PViewport::SetHeight>,
              &Prop<Text, &Text::Height, &Text::SetHeight>,
              &Prop<MText, &MText::Height, &MText::SetHeight>>},
    {L"Width",
     &AnyKind<&Prop<PViewport, &PViewport::Width, &PViewport::SetWidth>,
              &Prop<MText, &MText::Width, &MText::SetWidth>>},
    // PViewport
    {L"Center", &Prop<PViewport, &PViewport::Center, &PViewport::SetCenter>},
    {L"Direction",
     &Prop<PViewport, &PViewport::Direction, &PViewport::SetDirection>},
    {L"StandardScale",
     &Prop<PViewport, &PViewport::StandardScale, &PViewport::SetStandardScale>},
    {L"CustomScale",
     &Prop<PViewport, &PViewport::CustomScale, &PViewport::SetCustomScale>},
    {L"Display", &Display},
    {L"ViewportOn",
     &Prop<PViewport, &PViewport::ViewportOn, &PViewport::SetViewportOn>},
    {L"TwistAngle",
     &Prop<PViewport, &PViewport::TwistAngle, &PViewport::SetTwistAngle>},
    {L"Target", &Prop<PViewport, &PViewport::Target, &PViewport::SetTarget>},
    {L"DisplayLocked",
     &Prop<PViewport, &PViewport::DisplayLocked, &PViewport::SetDisplayLocked>},
};

}  // namespace

const ClassTable kEntityTable{L"Entity", kMembers};

}  // namespace lmt::automation
