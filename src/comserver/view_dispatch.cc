#include "comserver/view_dispatch.h"

#include <oleauto.h>

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "comserver/module.h"
#include "comserver/wide_text.h"
#include "layomats_h.h"  // made by widl from layomats.idl

namespace lmt::comserver {
namespace {

struct Member {
  const wchar_t* name;
  DISPID id;
  UINT arg_count;
};

constexpr Member kMembers[] = {
    {L"LmtStartDLL", kDispLmtStartDLL, 0},
    {L"LmtGetProg", kDispLmtGetProg, 0},
    {L"LmtPutFileINIform", kDispLmtPutFileINIform, 0},
    {L"LmtParent", kDispLmtParent, 0},
    {L"LmtResize", kDispLmtResize, 2},
    {L"LmtStartProg", kDispLmtStartProg, 0},
    {L"LmtExit", kDispLmtExit, 1},
    {L"FunctionCommands", kDispFunctionCommands, 1},
};

const Member* FindMember(DISPID id) {
  for (const Member& m : kMembers) {
    if (m.id == id) return &m;
  }
  return nullptr;
}

// A converted copy of one argument; the caller clears `out`. By-reference
// arguments (script variables) are read through first.
HRESULT ConvertArg(VARIANT& in, VARTYPE type, VARIANT* out) {
  VariantInit(out);
  VARIANT direct;
  VariantInit(&direct);
  HRESULT hr = VariantCopyInd(&direct, &in);
  if (SUCCEEDED(hr)) hr = VariantChangeType(out, &direct, 0, type);
  VariantClear(&direct);
  return hr;
}

void SetBool(VARIANT* result, bool value) {
  if (result == nullptr) return;
  V_VT(result) = VT_BOOL;
  V_BOOL(result) = value ? VARIANT_TRUE : VARIANT_FALSE;
}

HRESULT SetText(VARIANT* result, const std::string& text) {
  if (result == nullptr) return S_OK;
  BSTR b = Utf8ToBstr(text);
  if (b == nullptr) return E_OUTOFMEMORY;
  V_VT(result) = VT_BSTR;
  V_BSTR(result) = b;
  return S_OK;
}

}  // namespace

ViewDispatch* ViewDispatch::Create(std::unique_ptr<LmtViewMethods> view,
                                   ITypeInfo* type_info) {
  return new (std::nothrow) ViewDispatch(std::move(view), type_info);
}

ViewDispatch::ViewDispatch(std::unique_ptr<LmtViewMethods> view,
                           ITypeInfo* type_info)
    : view_(std::move(view)), type_info_(type_info) {
  if (type_info_ != nullptr) type_info_->AddRef();
  LockModule();
}

ViewDispatch::~ViewDispatch() {
  if (type_info_ != nullptr) type_info_->Release();
  UnlockModule();
}

HRESULT ViewDispatch::QueryInterface(REFIID riid, void** out) {
  if (out == nullptr) return E_POINTER;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) ||
      IsEqualIID(riid, DIID__LmtView)) {
    *out = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  *out = nullptr;
  return E_NOINTERFACE;
}

ULONG ViewDispatch::AddRef() { return ++refs_; }

ULONG ViewDispatch::Release() {
  ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT ViewDispatch::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = type_info_ != nullptr ? 1 : 0;
  return S_OK;
}

HRESULT ViewDispatch::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (index != 0 || type_info_ == nullptr) return DISP_E_BADINDEX;
  type_info_->AddRef();
  *out = type_info_;
  return S_OK;
}

HRESULT ViewDispatch::GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count,
                                    LCID, DISPID* ids) {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return S_OK;
  HRESULT hr = S_OK;
  ids[0] = DISPID_UNKNOWN;
  for (const Member& m : kMembers) {
    // Ordinal, not linguistic: the names are ASCII and must not depend on
    // the user's locale.
    if (names[0] != nullptr &&
        CompareStringOrdinal(names[0], -1, m.name, -1, TRUE) == CSTR_EQUAL) {
      ids[0] = m.id;
      break;
    }
  }
  if (ids[0] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
  for (UINT i = 1; i < count; ++i) {
    ids[i] = DISPID_UNKNOWN;
    hr = DISP_E_UNKNOWNNAME;
  }
  return hr;
}

HRESULT ViewDispatch::Invoke(DISPID id, REFIID riid, LCID, WORD flags,
                             DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                             UINT* arg_err) {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  const Member* member = FindMember(id);
  if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
  if ((flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) {
    return DISP_E_MEMBERNOTFOUND;
  }
  if (params == nullptr) return E_INVALIDARG;
  if (params->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  if (params->cArgs != member->arg_count) return DISP_E_BADPARAMCOUNT;
  if (result != nullptr) VariantInit(result);

  // Arguments arrive last first; `position` counts from the first.
  auto arg_index = [params](UINT position) {
    return params->cArgs - 1 - position;
  };
  auto convert = [&](UINT position, VARTYPE type, VARIANT* out) {
    HRESULT hr = ConvertArg(params->rgvarg[arg_index(position)], type, out);
    if (FAILED(hr) && arg_err != nullptr) *arg_err = arg_index(position);
    return hr;
  };

  switch (id) {
    case kDispLmtStartDLL:
      SetBool(result, view_->LmtStartDLL());
      return S_OK;
    case kDispLmtGetProg:
      return SetText(result, view_->LmtGetProg());
    case kDispLmtPutFileINIform:
      return SetText(result, view_->LmtPutFileINIform());
    case kDispLmtParent:
      if (result != nullptr) {
        V_VT(result) = VT_I4;
        V_I4(result) = view_->LmtParent();
      } else {
        view_->LmtParent();
      }
      return S_OK;
    case kDispLmtResize: {
      VARIANT width, height;
      HRESULT hr = convert(0, VT_I4, &width);
      if (FAILED(hr)) return hr;
      hr = convert(1, VT_I4, &height);
      if (FAILED(hr)) return hr;
      view_->LmtResize(V_I4(&width), V_I4(&height));
      return S_OK;  // the result stays empty
    }
    case kDispLmtStartProg:
      SetBool(result, view_->LmtStartProg());
      return S_OK;
    case kDispLmtExit: {
      VARIANT save;
      std::int16_t value = 0;  // what does not convert is not true
      if (SUCCEEDED(ConvertArg(params->rgvarg[0], VT_I2, &save))) {
        value = V_I2(&save);
      }
      SetBool(result, view_->LmtExit(value));
      return S_OK;
    }
    case kDispFunctionCommands: {
      VARIANT command;
      HRESULT hr = convert(0, VT_BSTR, &command);
      if (FAILED(hr)) return hr;
      std::string text = WideToUtf8(
          std::wstring_view(V_BSTR(&command), SysStringLen(V_BSTR(&command))));
      VariantClear(&command);
      SetBool(result, view_->FunctionCommands(text));
      return S_OK;
    }
  }
  return DISP_E_MEMBERNOTFOUND;
}

}  // namespace lmt::comserver
