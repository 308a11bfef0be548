#include "comserver/class_factory.h"

#include <oleauto.h>

#include <string>

#include "comserver/lmt_view_methods.h"
#include "comserver/module.h"
#include "comserver/view_dispatch.h"
#include "layomats_h.h"  // made by widl from layomats.idl

namespace lmt::comserver {
namespace {

// Static and never freed, so its reference count means nothing; the module
// stays loaded through LockServer and the objects it made.
class ViewFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (out == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
      *out = static_cast<IClassFactory*>(this);
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid,
                                           void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    ITypeInfo* info = LoadViewTypeInfo();
    ViewDispatch* view = ViewDispatch::Create(MakeLmtView(), info);
    if (info != nullptr) info->Release();
    if (view == nullptr) return E_OUTOFMEMORY;
    HRESULT hr = view->QueryInterface(riid, out);
    view->Release();
    return hr;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock) {
      LockModule();
    } else {
      UnlockModule();
    }
    return S_OK;
  }
};

ViewFactory g_factory;

}  // namespace

HRESULT GetLmtViewClassObject(REFCLSID clsid, REFIID riid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (!IsEqualCLSID(clsid, CLSID_LmtView)) return CLASS_E_CLASSNOTAVAILABLE;
  return g_factory.QueryInterface(riid, out);
}

ITypeInfo* LoadViewTypeInfo() {
  std::wstring path = ModulePath();
  ITypeLib* library = nullptr;
  if (path.empty() ||
      FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library))) {
    return nullptr;
  }
  ITypeInfo* info = nullptr;
  if (FAILED(library->GetTypeInfoOfGuid(DIID__LmtView, &info))) info = nullptr;
  library->Release();
  return info;
}

}  // namespace lmt::comserver
