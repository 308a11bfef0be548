// VARIANT values as the CAD object model passes them, both ways: text as
// BSTR (UTF-8 on our side), 16-bit booleans (true is -1), points as a
// SAFEARRAY of three doubles, coordinate lists as a SAFEARRAY of doubles,
// object lists as a SAFEARRAY of VT_DISPATCH, and selection filters as two
// parallel arrays (VT_I2 group codes, VT_VARIANT values). Readers accept
// what late-bound servers really send: by-reference values, arrays of
// VT_VARIANT holding numbers, numbers as text; they fail with
// kInvalidArgument instead of guessing.
//
// ScopedVariant owns its VARIANT and clears it (BSTRs, arrays and interface
// references with it) when it goes.
#ifndef LMT_COMHOST_VARIANTS_H_
#define LMT_COMHOST_VARIANTS_H_

#include <oaidl.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "comhost/com_ptr.h"
#include "core/status.h"
#include "core/text_encoding.h"
#include "host/point.h"
#include "host/selection_filter.h"
#include "host/variant.h"

namespace lmt::comhost {

class ScopedVariant {
 public:
  ScopedVariant() { VariantInit(&v_); }
  ScopedVariant(const ScopedVariant&) = delete;
  ScopedVariant& operator=(const ScopedVariant&) = delete;
  ScopedVariant(ScopedVariant&& other) noexcept : v_(other.v_) {
    VariantInit(&other.v_);
  }
  ScopedVariant& operator=(ScopedVariant&& other) noexcept {
    if (this != &other) {
      VariantClear(&v_);
      v_ = other.v_;
      VariantInit(&other.v_);
    }
    return *this;
  }
  ~ScopedVariant() { VariantClear(&v_); }

  VARIANT* get() { return &v_; }
  const VARIANT* get() const { return &v_; }
  VARTYPE type() const { return V_VT(&v_); }
  // Hands the value over (the caller clears it); this becomes empty.
  VARIANT Release() {
    VARIANT out = v_;
    VariantInit(&v_);
    return out;
  }

 private:
  VARIANT v_;
};

// UTF-8 <-> UTF-16. Invalid sequences become U+FFFD rather than failing.
using core::Utf8ToWide;
using core::WideToUtf8;

// --- Building arguments and results.
ScopedVariant TextVariant(std::string_view text);
ScopedVariant BoolVariant(bool value);  // VT_BOOL, true = -1
ScopedVariant I2Variant(int16_t value);
ScopedVariant I4Variant(int32_t value);
ScopedVariant I8Variant(int64_t value);
ScopedVariant R8Variant(double value);
// VT_ARRAY | VT_R8 of three.
ScopedVariant PointVariant(const host::Point& point);
// VT_ARRAY | VT_R8 of any length (flat coordinate lists).
ScopedVariant DoublesVariant(const std::vector<double>& values);
// VT_DISPATCH holding its own reference (null gives VT_DISPATCH null).
ScopedVariant DispatchVariant(IDispatch* object);
// VT_ARRAY | VT_DISPATCH, each element with its own reference.
ScopedVariant DispatchArrayVariant(const std::vector<IDispatch*>& objects);
// VT_ARRAY | VT_VARIANT of the given elements (taken over).
ScopedVariant VariantArrayVariant(std::vector<ScopedVariant> elements);
// An omitted optional argument (VT_ERROR, DISP_E_PARAMNOTFOUND).
ScopedVariant MissingVariant();
bool IsMissing(const VARIANT& value);
// A system-variable value: VT_I2, VT_I4, VT_R8, VT_BSTR or a point.
ScopedVariant HostVariant(const host::Variant& value);
// The two filter arrays (VT_ARRAY|VT_I2 codes, VT_ARRAY|VT_VARIANT values).
void FilterVariants(const host::SelectionFilter& filter, ScopedVariant& codes,
                    ScopedVariant& values);

// --- Reading. By-reference values are read through.
Result<std::string> ReadText(const VARIANT& value);
Result<bool> ReadBool(const VARIANT& value);
Result<int16_t> ReadI2(const VARIANT& value);
Result<int32_t> ReadI4(const VARIANT& value);
Result<int64_t> ReadI8(const VARIANT& value);
Result<double> ReadR8(const VARIANT& value);
// An array of exactly three numbers (two are taken as x, y with z = 0).
Result<host::Point> ReadPoint(const VARIANT& value);
// An array of numbers, in order.
Result<std::vector<double>> ReadDoubles(const VARIANT& value);
// An object reference (AddRef'ed for the caller); null stays null.
Result<ComPtr<IDispatch>> ReadDispatch(const VARIANT& value);
// An array of object references (VT_DISPATCH, VT_UNKNOWN or VT_VARIANT
// elements).
Result<std::vector<ComPtr<IDispatch>>> ReadDispatchArray(const VARIANT& value);
// VT_I2 / VT_BOOL -> int16_t, VT_I4 and other integers -> int32_t, VT_R4 /
// VT_R8 -> double, VT_BSTR -> text, a numeric array -> point.
Result<host::Variant> ReadHostVariant(const VARIANT& value);
// The two filter arrays; both empty or missing is the empty filter.
Result<host::SelectionFilter> ReadFilter(const VARIANT& codes,
                                         const VARIANT& values);

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_VARIANTS_H_
