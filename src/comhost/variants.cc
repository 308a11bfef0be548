#include "comhost/variants.h"

#include <oleauto.h>

#include <type_traits>
#include <utility>

namespace lmt::comhost {
namespace {

Status Mismatch(const char* wanted, VARTYPE got) {
  return Status::InvalidArgument(std::string("expected ") + wanted +
                                 ", got variant type " + std::to_string(got));
}

// The value itself: by-reference variants (script variables, out
// parameters) point at the real one.
const VARIANT& Direct(const VARIANT& value) {
  if (V_VT(&value) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&value)) {
    return *V_VARIANTREF(&value);
  }
  return value;
}

// A scalar converted to `type` with the automation rules (which also read
// through VT_BYREF scalars and parse numbers held as text).
Result<ScopedVariant> Coerce(const VARIANT& value, VARTYPE type,
                             const char* wanted) {
  ScopedVariant out;
  HRESULT hr =
      VariantChangeType(out.get(), const_cast<VARIANT*>(&value), 0, type);
  if (FAILED(hr)) return Mismatch(wanted, V_VT(&value));
  return out;
}

SAFEARRAY* ArrayOf(const VARIANT& value) {
  if ((V_VT(&value) & VT_ARRAY) == 0) return nullptr;
  return (V_VT(&value) & VT_BYREF) != 0 ? *V_ARRAYREF(&value) : V_ARRAY(&value);
}

// Every element of a one-dimensional array as a VARIANT of its own.
Result<std::vector<ScopedVariant>> Elements(const VARIANT& value) {
  SAFEARRAY* array = ArrayOf(value);
  if (array == nullptr || SafeArrayGetDim(array) != 1) {
    return Mismatch("an array", V_VT(&value));
  }
  // The variant names the element type; an array that crossed processes
  // may no longer carry it itself (Wine drops FADF_HAVEVARTYPE).
  VARTYPE element_type = V_VT(&value) & VT_TYPEMASK;
  if (element_type == VT_EMPTY &&
      FAILED(SafeArrayGetVartype(array, &element_type))) {
    return Status::InvalidArgument("array without element type");
  }
  LONG lower = 0, upper = -1;
  SafeArrayGetLBound(array, 1, &lower);
  SafeArrayGetUBound(array, 1, &upper);
  std::vector<ScopedVariant> out;
  for (LONG i = lower; i <= upper; ++i) {
    ScopedVariant element;
    HRESULT hr = S_OK;
    if (element_type == VT_VARIANT) {
      hr = SafeArrayGetElement(array, &i, element.get());
    } else {
      switch (element_type) {
        case VT_R8:
        case VT_R4:
        case VT_I2:
        case VT_I4:
        case VT_I8:
        case VT_BOOL:
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
          break;
        default:
          return Mismatch("an array of numbers, texts or objects",
                          element_type);
      }
      // Every member of the value union starts at the same address; the
      // copy owns what it holds (BSTRs copied, interfaces AddRef'ed).
      hr = SafeArrayGetElement(array, &i, &V_I8(element.get()));
      if (SUCCEEDED(hr)) V_VT(element.get()) = element_type;
    }
    if (FAILED(hr)) return Status::InvalidArgument("unreadable array element");
    out.push_back(std::move(element));
  }
  return out;
}

template <typename T>
ScopedVariant ArrayVariant(VARTYPE type, const std::vector<T>& values) {
  ScopedVariant out;
  SAFEARRAY* array =
      SafeArrayCreateVector(type, 0, static_cast<ULONG>(values.size()));
  if (array == nullptr) return out;
  for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
    T copy = values[i];
    // Interfaces are passed as themselves (and AddRef'ed), values by
    // address.
    if constexpr (std::is_pointer_v<T>) {
      SafeArrayPutElement(array, &i, copy);
    } else {
      SafeArrayPutElement(array, &i, &copy);
    }
  }
  V_VT(out.get()) = VT_ARRAY | type;
  V_ARRAY(out.get()) = array;
  return out;
}

}  // namespace

ScopedVariant TextVariant(std::string_view text) {
  ScopedVariant out;
  std::wstring wide = Utf8ToWide(text);
  V_VT(out.get()) = VT_BSTR;
  V_BSTR(out.get()) =
      SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  return out;
}

ScopedVariant BoolVariant(bool value) {
  ScopedVariant out;
  V_VT(out.get()) = VT_BOOL;
  V_BOOL(out.get()) = value ? VARIANT_TRUE : VARIANT_FALSE;
  return out;
}

ScopedVariant I2Variant(int16_t value) {
  ScopedVariant out;
  V_VT(out.get()) = VT_I2;
  V_I2(out.get()) = value;
  return out;
}

ScopedVariant I4Variant(int32_t value) {
  ScopedVariant out;
  V_VT(out.get()) = VT_I4;
  V_I4(out.get()) = value;
  return out;
}

ScopedVariant I8Variant(int64_t value) {
  ScopedVariant out;
  V_VT(out.get()) = VT_I8;
  V_I8(out.get()) = value;
  return out;
}

ScopedVariant R8Variant(double value) {
  ScopedVariant out;
  V_VT(out.get()) = VT_R8;
  V_R8(out.get()) = value;
  return out;
}

ScopedVariant PointVariant(const host::Point& point) {
  return DoublesVariant({point.x, point.y, point.z});
}

ScopedVariant DoublesVariant(const std::vector<double>& values) {
  return ArrayVariant<double>(VT_R8, values);
}

ScopedVariant DispatchVariant(IDispatch* object) {
  ScopedVariant out;
  if (object != nullptr) object->AddRef();
  V_VT(out.get()) = VT_DISPATCH;
  V_DISPATCH(out.get()) = object;
  return out;
}

ScopedVariant DispatchArrayVariant(const std::vector<IDispatch*>& objects) {
  // SafeArrayPutElement AddRefs each interface it stores.
  return ArrayVariant<IDispatch*>(VT_DISPATCH, objects);
}

ScopedVariant VariantArrayVariant(std::vector<ScopedVariant> elements) {
  ScopedVariant out;
  SAFEARRAY* array =
      SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
  if (array == nullptr) return out;
  for (LONG i = 0; i < static_cast<LONG>(elements.size()); ++i) {
    SafeArrayPutElement(array, &i, elements[i].get());  // copies
  }
  V_VT(out.get()) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(out.get()) = array;
  return out;
}

ScopedVariant MissingVariant() {
  ScopedVariant out;
  V_VT(out.get()) = VT_ERROR;
  V_ERROR(out.get()) = DISP_E_PARAMNOTFOUND;
  return out;
}

bool IsMissing(const VARIANT& value) {
  const VARIANT& v = Direct(value);
  return V_VT(&v) == VT_EMPTY ||
         (V_VT(&v) == VT_ERROR && V_ERROR(&v) == DISP_E_PARAMNOTFOUND);
}

ScopedVariant HostVariant(const host::Variant& value) {
  struct Visitor {
    ScopedVariant operator()(int16_t v) { return I2Variant(v); }
    ScopedVariant operator()(int32_t v) { return I4Variant(v); }
    ScopedVariant operator()(double v) { return R8Variant(v); }
    ScopedVariant operator()(const std::string& v) { return TextVariant(v); }
    ScopedVariant operator()(const host::Point& v) { return PointVariant(v); }
  };
  return std::visit(Visitor{}, value);
}

void FilterVariants(const host::SelectionFilter& filter, ScopedVariant& codes,
                    ScopedVariant& values) {
  codes = ArrayVariant<int16_t>(VT_I2, filter.codes);
  std::vector<ScopedVariant> elements;
  for (const host::FilterValue& value : filter.values) {
    struct Visitor {
      ScopedVariant operator()(int16_t v) { return I2Variant(v); }
      ScopedVariant operator()(int32_t v) { return I4Variant(v); }
      ScopedVariant operator()(double v) { return R8Variant(v); }
      ScopedVariant operator()(const std::string& v) { return TextVariant(v); }
    };
    elements.push_back(std::visit(Visitor{}, value));
  }
  values = VariantArrayVariant(std::move(elements));
}

Result<std::string> ReadText(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_BSTR, "text");
  if (!v.ok()) return v.status();
  BSTR b = V_BSTR(v->get());
  return WideToUtf8(std::wstring_view(b, SysStringLen(b)));
}

Result<bool> ReadBool(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_BOOL, "a boolean");
  if (!v.ok()) return v.status();
  return V_BOOL(v->get()) != VARIANT_FALSE;
}

Result<int16_t> ReadI2(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_I2, "a 16-bit integer");
  if (!v.ok()) return v.status();
  return static_cast<int16_t>(V_I2(v->get()));
}

Result<int32_t> ReadI4(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_I4, "an integer");
  if (!v.ok()) return v.status();
  return static_cast<int32_t>(V_I4(v->get()));
}

Result<int64_t> ReadI8(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_I8, "a 64-bit integer");
  if (!v.ok()) return v.status();
  return static_cast<int64_t>(V_I8(v->get()));
}

Result<double> ReadR8(const VARIANT& value) {
  Result<ScopedVariant> v = Coerce(value, VT_R8, "a number");
  if (!v.ok()) return v.status();
  return V_R8(v->get());
}

Result<std::vector<double>> ReadDoubles(const VARIANT& value) {
  Result<std::vector<ScopedVariant>> elements = Elements(Direct(value));
  if (!elements.ok()) return elements.status();
  std::vector<double> out;
  out.reserve(elements->size());
  for (const ScopedVariant& e : *elements) {
    Result<double> d = ReadR8(*e.get());
    if (!d.ok()) return d.status();
    out.push_back(*d);
  }
  return out;
}

Result<host::Point> ReadPoint(const VARIANT& value) {
  Result<std::vector<double>> d = ReadDoubles(value);
  if (!d.ok()) return d.status();
  if (d->size() == 2) return host::Point{(*d)[0], (*d)[1], 0};
  if (d->size() != 3) {
    return Status::InvalidArgument("a point needs three coordinates, got " +
                                   std::to_string(d->size()));
  }
  return host::Point{(*d)[0], (*d)[1], (*d)[2]};
}

Result<ComPtr<IDispatch>> ReadDispatch(const VARIANT& value) {
  const VARIANT& v = Direct(value);
  IUnknown* unknown = nullptr;
  switch (V_VT(&v)) {
    case VT_DISPATCH:
      unknown = V_DISPATCH(&v);
      break;
    case VT_DISPATCH | VT_BYREF:
      unknown = V_DISPATCHREF(&v) ? *V_DISPATCHREF(&v) : nullptr;
      break;
    case VT_UNKNOWN:
      unknown = V_UNKNOWN(&v);
      break;
    case VT_EMPTY:
    case VT_NULL:
      return ComPtr<IDispatch>();
    default:
      return Mismatch("an object", V_VT(&v));
  }
  if (unknown == nullptr) return ComPtr<IDispatch>();
  ComPtr<IDispatch> out;
  if (FAILED(unknown->QueryInterface(IID_IDispatch,
                                     reinterpret_cast<void**>(out.Out())))) {
    return Status::InvalidArgument("object without IDispatch");
  }
  return out;
}

Result<std::vector<ComPtr<IDispatch>>> ReadDispatchArray(const VARIANT& value) {
  const VARIANT& v = Direct(value);
  if (IsMissing(v)) return std::vector<ComPtr<IDispatch>>();
  Result<std::vector<ScopedVariant>> elements = Elements(v);
  if (!elements.ok()) return elements.status();
  std::vector<ComPtr<IDispatch>> out;
  for (const ScopedVariant& e : *elements) {
    Result<ComPtr<IDispatch>> d = ReadDispatch(*e.get());
    if (!d.ok()) return d.status();
    out.push_back(std::move(*d));
  }
  return out;
}

Result<host::Variant> ReadHostVariant(const VARIANT& value) {
  const VARIANT& v = Direct(value);
  if ((V_VT(&v) & VT_ARRAY) != 0) {
    Result<host::Point> p = ReadPoint(v);
    if (!p.ok()) return p.status();
    return host::Variant(*p);
  }
  switch (V_VT(&v) & VT_TYPEMASK) {
    case VT_I2:
    case VT_BOOL:
    case VT_UI1:
    case VT_I1: {
      Result<int16_t> i = ReadI2(v);
      if (!i.ok()) return i.status();
      return host::Variant(*i);
    }
    case VT_I4:
    case VT_INT:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_I8: {
      Result<int32_t> i = ReadI4(v);
      if (!i.ok()) return i.status();
      return host::Variant(*i);
    }
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL: {
      Result<double> d = ReadR8(v);
      if (!d.ok()) return d.status();
      return host::Variant(*d);
    }
    case VT_BSTR: {
      Result<std::string> t = ReadText(v);
      if (!t.ok()) return t.status();
      return host::Variant(*t);
    }
    default:
      return Mismatch("a system-variable value", V_VT(&v));
  }
}

Result<host::SelectionFilter> ReadFilter(const VARIANT& codes,
                                         const VARIANT& values) {
  host::SelectionFilter filter;
  if (IsMissing(codes) && IsMissing(values)) return filter;
  Result<std::vector<ScopedVariant>> c = Elements(Direct(codes));
  if (!c.ok()) return c.status();
  Result<std::vector<ScopedVariant>> d = Elements(Direct(values));
  if (!d.ok()) return d.status();
  if (c->size() != d->size()) {
    return Status::InvalidArgument("filter arrays differ in length");
  }
  for (size_t i = 0; i < c->size(); ++i) {
    Result<int16_t> code = ReadI2(*(*c)[i].get());
    if (!code.ok()) return code.status();
    const VARIANT& raw = Direct(*(*d)[i].get());
    host::FilterValue value;
    switch (V_VT(&raw)) {
      case VT_I2:
        value = static_cast<int16_t>(V_I2(&raw));
        break;
      case VT_I4:
        value = static_cast<int32_t>(V_I4(&raw));
        break;
      case VT_R4:
      case VT_R8: {
        Result<double> r = ReadR8(raw);
        if (!r.ok()) return r.status();
        value = *r;
        break;
      }
      default: {
        Result<std::string> t = ReadText(raw);
        if (!t.ok()) return t.status();
        value = *t;
      }
    }
    filter.Add(*code, std::move(value));
  }
  return filter;
}

}  // namespace lmt::comhost
