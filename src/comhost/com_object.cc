#include "comhost/com_object.h"

#include <utility>

namespace lmt::comhost {

ComObject::ComObject(Shared shared, ComPtr<IDispatch> dispatch,
                     std::string type_key)
    : shared_(std::move(shared)),
      dispatch_(std::move(dispatch)),
      type_key_(std::move(type_key)) {
  LMT_CHECK(dispatch_);
  LMT_CHECK(shared_.gate != nullptr && shared_.context != nullptr);
}

Result<ScopedVariant> ComObject::Call(std::string_view name,
                                      std::vector<ScopedVariant> args) const {
  return Invoke(*shared_.context, dispatch_.get(), type_key_, name,
                CallKind::kGet, std::move(args));
}

Status ComObject::Put(std::string_view name, ScopedVariant value) const {
  std::vector<ScopedVariant> args;
  args.push_back(std::move(value));
  return Invoke(*shared_.context, dispatch_.get(), type_key_, name,
                CallKind::kPut, std::move(args))
      .status();
}

Status ComObject::Do(std::string_view name,
                     std::vector<ScopedVariant> args) const {
  return Call(name, std::move(args)).status();
}

namespace {

template <typename T, typename Reader>
Result<T> ReadResult(Result<ScopedVariant> value, Reader reader) {
  if (!value.ok()) return value.status();
  return reader(*value->get());
}

}  // namespace

Result<std::string> ComObject::GetText(std::string_view name) const {
  return ReadResult<std::string>(Call(name), ReadText);
}
Result<bool> ComObject::GetBool(std::string_view name) const {
  return ReadResult<bool>(Call(name), ReadBool);
}
Result<int32_t> ComObject::GetI4(std::string_view name) const {
  return ReadResult<int32_t>(Call(name), ReadI4);
}
Result<int64_t> ComObject::GetI8(std::string_view name) const {
  return ReadResult<int64_t>(Call(name), ReadI8);
}
Result<uint64_t> ComObject::GetId(std::string_view name) const {
  Result<int64_t> v = GetI8(name);
  if (!v.ok()) return v.status();
  return static_cast<uint64_t>(*v);
}
Result<double> ComObject::GetR8(std::string_view name) const {
  return ReadResult<double>(Call(name), ReadR8);
}
Result<host::Point> ComObject::GetPoint(std::string_view name) const {
  return ReadResult<host::Point>(Call(name), ReadPoint);
}

Result<ComPtr<IDispatch>> ComObject::GetDispatch(
    std::string_view name, std::vector<ScopedVariant> args) const {
  Result<ScopedVariant> value = Call(name, std::move(args));
  if (!value.ok()) return value.status();
  Result<ComPtr<IDispatch>> object = ReadDispatch(*value->get());
  if (!object.ok()) return object.status();
  if (!*object) {
    return Status::NotFound(type_key_ + "." + std::string(name) +
                            ": no object");
  }
  return object;
}

IDispatch* DispatchOf(const host::Object* object) {
  const ComObject* com = dynamic_cast<const ComObject*>(object);
  return com != nullptr ? com->dispatch() : nullptr;
}

Result<std::vector<IDispatch*>> DispatchesOf(
    const std::vector<host::EntityPtr>& objects) {
  std::vector<IDispatch*> out;
  out.reserve(objects.size());
  for (const host::EntityPtr& object : objects) {
    IDispatch* d = DispatchOf(object.get());
    if (d == nullptr) {
      return Status::InvalidArgument("an object of another host");
    }
    out.push_back(d);
  }
  return out;
}

ScopedVariant IndexVariant(int32_t index) { return I4Variant(index); }

}  // namespace lmt::comhost
