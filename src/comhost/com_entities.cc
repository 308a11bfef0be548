// Entities over IDispatch: the Entity members once (ComEntityT), each kind's
// own members in its class, and the choice of class by ObjectName.
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "comhost/com_object.h"
#include "host/entity.h"

namespace lmt::comhost {
namespace {

using host::Point;

template <typename Base>
class ComEntityT : public Base, public ComObject {
 public:
  ComEntityT(const Shared& shared, ComPtr<IDispatch> object,
             std::string object_name)
      : Base(shared.gate),
        ComObject(shared, std::move(object), object_name),
        object_name_(std::move(object_name)) {}

 protected:
  // Asked once when the object was wrapped.
  Result<std::string> DoObjectName() const override { return object_name_; }
  Result<uint64_t> DoObjectID() const override { return GetId("ObjectID"); }
  Result<std::string> DoHandle() const override { return GetText("Handle"); }
  Result<uint64_t> DoOwnerID() const override { return GetId("OwnerID"); }
  Result<std::string> DoLayer() const override { return GetText("Layer"); }
  Status DoSetLayer(std::string_view layer) override {
    return Put("Layer", TextVariant(layer));
  }
  Result<int32_t> DoColor() const override { return GetI4("Color"); }
  Status DoSetColor(int32_t color) override {
    return Put("Color", I4Variant(color));
  }
  Result<std::string> DoLinetype() const override {
    return GetText("Linetype");
  }
  Status DoSetLinetype(std::string_view linetype) override {
    return Put("Linetype", TextVariant(linetype));
  }
  Result<int32_t> DoLineWeight() const override { return GetI4("Lineweight"); }
  Status DoSetLineWeight(int32_t line_weight) override {
    return Put("Lineweight", I4Variant(line_weight));
  }
  Result<bool> DoVisible() const override { return GetBool("Visible"); }
  Status DoSetVisible(bool visible) override {
    return Put("Visible", BoolVariant(visible));
  }
  Result<host::BoundingBox> DoGetBoundingBox() const override {
    ScopedVariant min, max;
    std::vector<ScopedVariant> args;
    args.push_back(RefVariant(min));
    args.push_back(RefVariant(max));
    if (Status s = Do("GetBoundingBox", std::move(args)); !s.ok()) return s;
    Result<Point> low = ReadPoint(*min.get());
    if (!low.ok()) return low.status();
    Result<Point> high = ReadPoint(*max.get());
    if (!high.ok()) return high.status();
    return host::BoundingBox{*low, *high};
  }
  Status DoErase() override { return Do("Delete"); }
  Result<host::EntityPtr> DoCopy() override {
    Result<ComPtr<IDispatch>> copy = GetDispatch("Copy");
    if (!copy.ok()) return copy.status();
    // Of this object's class, by the object model's contract.
    return WrapEntityOfKind(shared(), std::move(*copy), object_name_);
  }
  Status DoMove(const Point& from, const Point& to) override {
    std::vector<ScopedVariant> args;
    args.push_back(PointVariant(from));
    args.push_back(PointVariant(to));
    return Do("Move", std::move(args));
  }
  Status DoUpdate() override { return Do("Update"); }
  // Extended data travel as two parallel arrays, VT_I2 group codes and
  // VT_VARIANT values, the application's name first under 1001 and its
  // strings under 1000. SetXData:
  // https://help.autodesk.com/cloudhelp/2016/ENU/AutoCAD-ActiveX/files/GUID-EF0393EC-8446-4989-8C72-F3AE49D81176.htm
  // GetXData fills both arrays through out VARIANTs and leaves them empty
  // when the object has no data of that application:
  // https://help.autodesk.com/cloudhelp/2016/CHS/AutoCAD-ActiveX/files/GUID-330FCA31-A2A9-47F0-972D-6915B6B98426.htm
  Result<std::vector<std::string>> DoGetXData(
      std::string_view application) const override {
    ScopedVariant types, values;
    std::vector<ScopedVariant> args;
    args.push_back(TextVariant(application));
    args.push_back(RefVariant(types));
    args.push_back(RefVariant(values));
    if (Status s = Do("GetXData", std::move(args)); !s.ok()) return s;
    std::vector<std::string> strings;
    if (types.type() == VT_EMPTY && values.type() == VT_EMPTY) return strings;
    Result<host::SelectionFilter> data =
        ReadFilter(*types.get(), *values.get());
    if (!data.ok()) return data.status();
    for (size_t i = 0; i < data->size(); ++i) {
      if (data->codes[i] != 1000) continue;
      if (const auto* text = std::get_if<std::string>(&data->values[i])) {
        strings.push_back(*text);
      }
    }
    return strings;
  }
  // The name alone (no strings) removes the application's data.
  Status DoSetXData(std::string_view application,
                    const std::vector<std::string>& strings) override {
    host::SelectionFilter data;
    data.Add(1001, std::string(application));
    for (const std::string& text : strings) data.Add(1000, text);
    std::vector<ScopedVariant> args(2);
    FilterVariants(data, args[0], args[1]);
    return Do("SetXData", std::move(args));
  }

  static std::vector<ScopedVariant> Args(ScopedVariant a) {
    std::vector<ScopedVariant> args;
    args.push_back(std::move(a));
    return args;
  }

 private:
  std::string object_name_;
};

class ComPolyline : public ComEntityT<host::Polyline> {
 public:
  using ComEntityT::ComEntityT;

 protected:
  Result<std::vector<double>> DoCoordinates() const override {
    Result<ScopedVariant> v = Call("Coordinates");
    if (!v.ok()) return v.status();
    return ReadDoubles(*v->get());
  }
  Result<Point> DoCoordinate(int32_t index) const override {
    Result<ScopedVariant> v = Call("Coordinate", Args(I4Variant(index)));
    if (!v.ok()) return v.status();
    return ReadPoint(*v->get());
  }
  Result<bool> DoClosed() const override { return GetBool("Closed"); }
  Status DoSetClosed(bool closed) override {
    return Put("Closed", BoolVariant(closed));
  }
};

class ComBlockReference : public ComEntityT<host::BlockReference> {
 public:
  using ComEntityT::ComEntityT;

 protected:
  Result<std::string> DoName() const override { return GetText("Name"); }
  Result<std::string> DoEffectiveName() const override {
    return GetText("EffectiveName");
  }
  Result<double> DoRotation() const override { return GetR8("Rotation"); }
  Result<double> DoXScaleFactor() const override {
    return GetR8("XScaleFactor");
  }
  Result<double> DoYScaleFactor() const override {
    return GetR8("YScaleFactor");
  }
  Result<Point> DoInsertionPoint() const override {
    return GetPoint("InsertionPoint");
  }
  Result<bool> DoHasAttributes() const override {
    return GetBool("HasAttributes");
  }
  Result<std::vector<host::AttributePtr>> DoGetAttributes() const override {
    return Attributes("GetAttributes");
  }
  Result<std::vector<host::AttributePtr>> DoGetConstantAttributes()
      const override {
    return Attributes("GetConstantAttributes");
  }

 private:
  // An array of attribute objects; an empty result (no attributes) is an
  // empty list.
  Result<std::vector<host::AttributePtr>> Attributes(
      std::string_view member) const {
    Result<ScopedVariant> v = Call(member);
    if (!v.ok()) return v.status();
    Result<std::vector<ComPtr<IDispatch>>> items = ReadDispatchArray(*v->get());
    if (!items.ok()) return items.status();
    std::vector<host::AttributePtr> out;
    for (ComPtr<IDispatch>& item : *items) {
      host::AttributePtr a =
          host::As<host::Attribute>(WrapEntity(shared(), std::move(item)));
      if (a != nullptr) out.push_back(std::move(a));
    }
    return out;
  }
};

class ComAttribute : public ComEntityT<host::Attribute> {
 public:
  using ComEntityT::ComEntityT;

 protected:
  Result<std::string> DoTagString() const override {
    return GetText("TagString");
  }
  Result<std::string> DoTextString() const override {
    return GetText("TextString");
  }
  Status DoSetTextString(std::string_view text) override {
    return Put("TextString", TextVariant(text));
  }
};

class ComPViewport : public ComEntityT<host::PViewport> {
 public:
  using ComEntityT::ComEntityT;

 protected:
  Result<Point> DoCenter() const override { return GetPoint("Center"); }
  Status DoSetCenter(const Point& p) override {
    return Put("Center", PointVariant(p));
  }
  Result<double> DoWidth() const override { return GetR8("Width"); }
  Status DoSetWidth(double w) override { return Put("Width", R8Variant(w)); }
  Result<double> DoHeight() const override { return GetR8("Height"); }
  Status DoSetHeight(double h) override { return Put("Height", R8Variant(h)); }
  Result<Point> DoDirection() const override { return GetPoint("Direction"); }
  Status DoSetDirection(const Point& d) override {
    return Put("Direction", PointVariant(d));
  }
  Result<int32_t> DoStandardScale() const override {
    return GetI4("StandardScale");
  }
  Status DoSetStandardScale(int32_t s) override {
    return Put("StandardScale", I4Variant(s));
  }
  Result<double> DoCustomScale() const override { return GetR8("CustomScale"); }
  Status DoSetCustomScale(double s) override {
    return Put("CustomScale", R8Variant(s));
  }
  Status DoDisplay(bool on) override {
    return Do("Display", Args(BoolVariant(on)));
  }
  Result<bool> DoViewportOn() const override { return GetBool("ViewportOn"); }
  Status DoSetViewportOn(bool on) override {
    return Put("ViewportOn", BoolVariant(on));
  }
  Result<double> DoTwistAngle() const override { return GetR8("TwistAngle"); }
  Status DoSetTwistAngle(double a) override {
    return Put("TwistAngle", R8Variant(a));
  }
  Result<Point> DoTarget() const override { return GetPoint("Target"); }
  Status DoSetTarget(const Point& t) override {
    return Put("Target", PointVariant(t));
  }
  Result<bool> DoDisplayLocked() const override {
    return GetBool("DisplayLocked");
  }
  Status DoSetDisplayLocked(bool locked) override {
    return Put("DisplayLocked", BoolVariant(locked));
  }
};

// Text, MText and MLeader share the text members.
template <typename Base>
class ComTextT : public ComEntityT<Base> {
 public:
  using ComEntityT<Base>::ComEntityT;

 protected:
  Result<std::string> DoTextString() const override {
    return this->GetText("TextString");
  }
  Status DoSetTextString(std::string_view text) override {
    return this->Put("TextString", TextVariant(text));
  }
};

template <typename Base>
class ComPlacedTextT : public ComTextT<Base> {
 public:
  using ComTextT<Base>::ComTextT;

 protected:
  Result<Point> DoInsertionPoint() const override {
    return this->GetPoint("InsertionPoint");
  }
  Status DoSetInsertionPoint(const Point& p) override {
    return this->Put("InsertionPoint", PointVariant(p));
  }
  Result<double> DoHeight() const override { return this->GetR8("Height"); }
  Status DoSetHeight(double h) override {
    return this->Put("Height", R8Variant(h));
  }
  Result<std::string> DoStyleName() const override {
    return this->GetText("StyleName");
  }
  Status DoSetStyleName(std::string_view s) override {
    return this->Put("StyleName", TextVariant(s));
  }
};

using ComText = ComPlacedTextT<host::Text>;
using ComMLeader = ComTextT<host::MLeader>;

class ComMText : public ComPlacedTextT<host::MText> {
 public:
  using ComPlacedTextT::ComPlacedTextT;

 protected:
  Result<int32_t> DoAttachmentPoint() const override {
    return GetI4("AttachmentPoint");
  }
  Status DoSetAttachmentPoint(int32_t a) override {
    return Put("AttachmentPoint", I4Variant(a));
  }
  Result<double> DoWidth() const override { return GetR8("Width"); }
  Status DoSetWidth(double w) override { return Put("Width", R8Variant(w)); }
};

using ComPlainEntity = ComEntityT<host::Entity>;

}  // namespace

host::EntityPtr WrapEntity(const Shared& shared, ComPtr<IDispatch> object) {
  if (!object) return nullptr;
  // An object whose name cannot be read is still an entity; it answers
  // what it can.
  Result<ScopedVariant> name = Invoke(*shared.context, object.get(), "Entity",
                                      "ObjectName", CallKind::kGet);
  std::string kind;
  if (name.ok()) kind = ReadText(*name->get()).value_or(std::string());
  return WrapEntityOfKind(shared, std::move(object), std::move(kind));
}

host::EntityPtr WrapEntityOfKind(const Shared& shared, ComPtr<IDispatch> object,
                                 std::string kind) {
  if (!object) return nullptr;
  if (kind == "AcDbPolyline") {
    return std::make_shared<ComPolyline>(shared, std::move(object), kind);
  }
  if (kind == "AcDbBlockReference" || kind == "AcDbExternalReference" ||
      kind == "AcDbMInsertBlock") {
    return std::make_shared<ComBlockReference>(shared, std::move(object), kind);
  }
  if (kind == "AcDbAttribute" || kind == "AcDbAttributeDefinition") {
    return std::make_shared<ComAttribute>(shared, std::move(object), kind);
  }
  if (kind == "AcDbViewport") {
    return std::make_shared<ComPViewport>(shared, std::move(object), kind);
  }
  if (kind == "AcDbText") {
    return std::make_shared<ComText>(shared, std::move(object), kind);
  }
  if (kind == "AcDbMText") {
    return std::make_shared<ComMText>(shared, std::move(object), kind);
  }
  if (kind == "AcDbMLeader") {
    return std::make_shared<ComMLeader>(shared, std::move(object), kind);
  }
  if (kind.empty()) kind = "Entity";
  return std::make_shared<ComPlainEntity>(shared, std::move(object), kind);
}

host::ObjectPtr WrapAnyObject(const Shared& shared, ComPtr<IDispatch> object) {
  if (!object) return nullptr;
  Result<ScopedVariant> name = Invoke(*shared.context, object.get(), "Object",
                                      "ObjectName", CallKind::kGet);
  std::string kind;
  if (name.ok()) kind = ReadText(*name->get()).value_or(std::string());
  if (kind == "AcDbBlockTableRecord") return WrapBlock(shared, object);
  if (kind == "AcDbLayout") return WrapLayout(shared, object);
  if (kind == "AcDbLayerTableRecord") return WrapLayer(shared, object);
  if (kind == "AcDbTextStyleTableRecord") return WrapTextStyle(shared, object);
  return WrapEntityOfKind(shared, std::move(object), std::move(kind));
}

}  // namespace lmt::comhost
