// The building blocks of the dispatch tables: reading a call's arguments as
// host values, writing results, and Prop<>, which turns a host getter and
// setter pair into one table entry. Internal to the server's tables.
#ifndef LMT_AUTOMATION_MEMBERS_H_
#define LMT_AUTOMATION_MEMBERS_H_

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "automation/server_object.h"
#include "comhost/variants.h"
#include "core/status.h"
#include "host/object_model.h"

namespace lmt::automation {

// The object a handler works on, or null (and the call marked as made on
// the wrong kind) when it is another class.
template <typename T>
T* Self(Call& call) {
  T* self = dynamic_cast<T*>(&call.self);
  if (self == nullptr) call.wrong_kind = true;
  return self;
}

inline Status MissingArgument(size_t index) {
  return Status::InvalidArgument("argument " + std::to_string(index + 1) +
                                 " missing");
}

// Argument `index` read as T.
template <typename T>
Result<T> Arg(Call& call, size_t index) {
  if (index >= call.args.size()) return MissingArgument(index);
  const VARIANT& v = *call.args[index];
  if constexpr (std::is_same_v<T, std::string>) {
    return comhost::ReadText(v);
  } else if constexpr (std::is_same_v<T, bool>) {
    return comhost::ReadBool(v);
  } else if constexpr (std::is_same_v<T, int32_t>) {
    return comhost::ReadI4(v);
  } else if constexpr (std::is_same_v<T, int64_t>) {
    return comhost::ReadI8(v);
  } else if constexpr (std::is_same_v<T, uint64_t>) {
    // Object ids travel as VT_I8; their 64 bits are unsigned.
    Result<int64_t> id = comhost::ReadI8(v);
    if (!id.ok()) return id.status();
    return static_cast<uint64_t>(*id);
  } else if constexpr (std::is_same_v<T, double>) {
    return comhost::ReadR8(v);
  } else if constexpr (std::is_same_v<T, host::Point>) {
    return comhost::ReadPoint(v);
  } else if constexpr (std::is_same_v<T, std::vector<double>>) {
    return comhost::ReadDoubles(v);
  } else {
    static_assert(sizeof(T) == 0, "no reader for this argument type");
  }
}

// An optional argument: nullopt when omitted.
template <typename T>
Result<std::optional<T>> OptionalArg(Call& call, size_t index) {
  if (index >= call.args.size() || comhost::IsMissing(*call.args[index])) {
    return std::optional<T>();
  }
  Result<T> value = Arg<T>(call, index);
  if (!value.ok()) return value.status();
  return std::optional<T>(*value);
}

// An object argument that must be one of ours, of class T.
template <typename T>
Result<std::shared_ptr<T>> ObjectArg(Call& call, size_t index) {
  if (index >= call.args.size()) return MissingArgument(index);
  Result<comhost::ComPtr<IDispatch>> d =
      comhost::ReadDispatch(*call.args[index]);
  if (!d.ok()) return d.status();
  std::shared_ptr<T> object =
      std::dynamic_pointer_cast<T>(ServerObject::Unwrap(d->get()));
  if (object == nullptr) {
    return Status::InvalidArgument("argument " + std::to_string(index + 1) +
                                   ": not an object of this drawing");
  }
  return object;
}

// An array of our entities.
Result<std::vector<host::EntityPtr>> EntitiesArg(Call& call, size_t index);

// --- Results.
void SetResult(Call& call, comhost::ScopedVariant value);
// An array of objects (VT_ARRAY | VT_DISPATCH).
void ReturnObjects(Call& call, const std::vector<host::ObjectPtr>& objects);
inline void Return(Call& call, const std::string& v) {
  SetResult(call, comhost::TextVariant(v));
}
inline void Return(Call& call, bool v) {
  SetResult(call, comhost::BoolVariant(v));
}
inline void Return(Call& call, int32_t v) {
  SetResult(call, comhost::I4Variant(v));
}
inline void Return(Call& call, int64_t v) {
  SetResult(call, comhost::I8Variant(v));
}
inline void Return(Call& call, uint64_t v) {
  SetResult(call, comhost::I8Variant(static_cast<int64_t>(v)));
}
inline void Return(Call& call, double v) {
  SetResult(call, comhost::R8Variant(v));
}
inline void Return(Call& call, const host::Point& v) {
  SetResult(call, comhost::PointVariant(v));
}
inline void Return(Call& call, const std::vector<double>& v) {
  SetResult(call, comhost::DoublesVariant(v));
}
template <typename T>
void Return(Call& call, const std::shared_ptr<T>& object) {
  ReturnObject(call, object);
}
template <typename T>
void Return(Call& call, const std::vector<std::shared_ptr<T>>& objects) {
  std::vector<host::ObjectPtr> plain(objects.begin(), objects.end());
  ReturnObjects(call, plain);
}
template <typename T>
Status Returned(Call& call, const Result<T>& value) {
  if (!value.ok()) return value.status();
  Return(call, *value);
  return Status();
}

// --- Prop<>: a property as a getter and an optional setter of class T.
template <typename F>
struct SetterArg;
template <typename T, typename A>
struct SetterArg<Status (T::*)(A)> {
  using Raw = std::remove_cvref_t<A>;
  using type = std::conditional_t<std::is_same_v<Raw, std::string_view>,
                                  std::string, Raw>;
};

template <typename T, auto Get, auto Set = nullptr>
Status Prop(Call& call) {
  T* self = Self<T>(call);
  if (self == nullptr) return Status::NotSupported("another kind of object");
  if (call.put) {
    if constexpr (std::is_same_v<decltype(Set), std::nullptr_t>) {
      return Status::NotSupported("read-only property");
    } else {
      using A = typename SetterArg<decltype(Set)>::type;
      if (call.args.empty()) return MissingArgument(0);
      Result<A> value = Arg<A>(call, call.args.size() - 1);
      if (!value.ok()) return value.status();
      return (self->*Set)(*value);
    }
  }
  return Returned(call, (self->*Get)());
}

// A method without arguments and without a result.
template <typename T, auto Method>
Status Action(Call& call) {
  T* self = Self<T>(call);
  if (self == nullptr) return Status::NotSupported("another kind of object");
  return (self->*Method)();
}

// The first handler made for this object's kind: members of one name that
// several kinds share (TextString, Height, Name ...).
template <MemberFn First, MemberFn... Rest>
Status AnyKind(Call& call) {
  call.wrong_kind = false;
  Status s = First(call);
  if constexpr (sizeof...(Rest) > 0) {
    if (call.wrong_kind) return AnyKind<Rest...>(call);
  }
  return s;
}

// A collection's items as plain objects, for the enumerator.
template <typename T>
Result<std::vector<host::ObjectPtr>> ItemsOf(host::Object& object) {
  T* self = dynamic_cast<T*>(&object);
  if (self == nullptr) return Status::NotSupported("not a collection");
  auto items = self->Items();
  if (!items.ok()) return items.status();
  return std::vector<host::ObjectPtr>(items->begin(), items->end());
}

// Item(index or name) of a collection with both overloads.
template <typename T>
Status NamedItem(Call& call) {
  T* self = Self<T>(call);
  if (self == nullptr) return Status::NotSupported("another kind of object");
  if (call.args.empty()) return MissingArgument(0);
  const VARIANT& key = *call.args[0];
  VARTYPE type = V_VT(&key) & VT_TYPEMASK;
  if (type == VT_BSTR) {
    Result<std::string> name = Arg<std::string>(call, 0);
    if (!name.ok()) return name.status();
    return Returned(call, self->Item(std::string_view(*name)));
  }
  Result<int32_t> index = Arg<int32_t>(call, 0);
  if (!index.ok()) return index.status();
  return Returned(call, self->Item(*index));
}

// Item(index) of a collection with only the index overload.
template <typename T>
Status IndexItem(Call& call) {
  T* self = Self<T>(call);
  if (self == nullptr) return Status::NotSupported("another kind of object");
  Result<int32_t> index = Arg<int32_t>(call, 0);
  if (!index.ok()) return index.status();
  return Returned(call, self->Item(*index));
}

// Add(name).
template <typename T>
Status AddNamed(Call& call) {
  T* self = Self<T>(call);
  if (self == nullptr) return Status::NotSupported("another kind of object");
  Result<std::string> name = Arg<std::string>(call, 0);
  if (!name.ok()) return name.status();
  return Returned(call, self->Add(*name));
}

// ObjectName of the non-entity objects that ObjectIdToObject may give.
template <const char* kName>
Status FixedObjectName(Call& call) {
  Return(call, std::string(kName));
  return Status();
}

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_MEMBERS_H_
