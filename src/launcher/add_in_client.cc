#include "launcher/add_in_client.h"

#include <oleauto.h>

#include <algorithm>
#include <vector>

namespace lmt::launcher {

AddInClient::~AddInClient() {
  if (object_ != nullptr) object_->Release();
}

HRESULT AddInClient::Create() {
  CLSID clsid;
  HRESULT hr = CLSIDFromProgID(kAddInProgId, &clsid);
  if (FAILED(hr)) return hr;
  return CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                          reinterpret_cast<void**>(&object_));
}

std::optional<VARIANT> AddInClient::Call(const wchar_t* name, VARIANT* args,
                                         int count) {
  if (object_ == nullptr) return std::nullopt;
  DISPID id;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  if (FAILED(object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT,
                                    &id))) {
    return std::nullopt;
  }
  // IDispatch takes the arguments last first.
  std::vector<VARIANT> reversed(args, args + count);
  std::reverse(reversed.begin(), reversed.end());
  DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(count), 0};
  VARIANT result;
  VariantInit(&result);
  if (FAILED(object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                             &params, &result, nullptr, nullptr))) {
    return std::nullopt;
  }
  return result;
}

namespace {

bool IsTrue(const std::optional<VARIANT>& v) {
  return v && v->vt == VT_BOOL && v->boolVal == VARIANT_TRUE;
}

std::optional<std::wstring> Text(std::optional<VARIANT> v) {
  if (!v) return std::nullopt;
  if (v->vt != VT_BSTR) {
    VariantClear(&*v);
    return std::nullopt;
  }
  std::wstring text(v->bstrVal, SysStringLen(v->bstrVal));
  VariantClear(&*v);
  return text;
}

}  // namespace

bool AddInClient::LmtStartDLL() {
  return IsTrue(Call(L"LmtStartDLL", nullptr, 0));
}

std::optional<std::wstring> AddInClient::LmtGetProg() {
  return Text(Call(L"LmtGetProg", nullptr, 0));
}

std::optional<std::wstring> AddInClient::LmtPutFileINIform() {
  return Text(Call(L"LmtPutFileINIform", nullptr, 0));
}

bool AddInClient::LmtStartProg() {
  return IsTrue(Call(L"LmtStartProg", nullptr, 0));
}

HWND AddInClient::LmtParent() {
  std::optional<VARIANT> v = Call(L"LmtParent", nullptr, 0);
  if (!v || FAILED(VariantChangeType(&*v, &*v, 0, VT_I4))) return nullptr;
  // Window handles fit in 32 bits, also in a 64-bit process.
  return reinterpret_cast<HWND>(static_cast<INT_PTR>(v->lVal));
}

bool AddInClient::LmtResize(long width_twips, long height_twips) {
  VARIANT args[2];
  args[0].vt = VT_I4;
  args[0].lVal = width_twips;
  args[1].vt = VT_I4;
  args[1].lVal = height_twips;
  std::optional<VARIANT> v = Call(L"LmtResize", args, 2);
  if (v) VariantClear(&*v);
  return v.has_value();
}

bool AddInClient::LmtExit(bool save) {
  VARIANT arg;
  arg.vt = VT_BOOL;
  arg.boolVal = save ? VARIANT_TRUE : VARIANT_FALSE;
  return IsTrue(Call(L"LmtExit", &arg, 1));
}

long PixelsToTwipsX(int pixels) {
  HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
  ReleaseDC(nullptr, dc);
  return MulDiv(pixels, 1440, dpi);
}

long PixelsToTwipsY(int pixels) {
  HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSY);
  ReleaseDC(nullptr, dc);
  return MulDiv(pixels, 1440, dpi);
}

void EmbedWindow(HWND child, HWND parent) {
  LONG_PTR style = GetWindowLongPtrW(child, GWL_STYLE);
  style &= ~static_cast<LONG_PTR>(WS_POPUP | WS_CAPTION | WS_THICKFRAME |
                                  WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
  style |= WS_CHILD;
  SetWindowLongPtrW(child, GWL_STYLE, style);
  SetParent(child, parent);
  SetWindowPos(child, nullptr, 0, 0, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED | SWP_SHOWWINDOW);
}

}  // namespace lmt::launcher
