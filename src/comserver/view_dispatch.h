// The automation face of LmtView: a hand-written IDispatch over
// LmtViewMethods. Names are matched ignoring case, arguments are converted
// with VariantChangeType (so "800" passes for a long, and by-reference
// arguments from script variables are read through), and refusals are the
// usual DISP_E_* results. Apartment-threaded: all calls come on the thread
// that created the object, so there is no locking beyond the reference count.
#ifndef LMT_COMSERVER_VIEW_DISPATCH_H_
#define LMT_COMSERVER_VIEW_DISPATCH_H_

#include <oaidl.h>
#include <windows.h>

#include <atomic>
#include <memory>

#include "comserver/lmt_view_methods.h"

namespace lmt::comserver {

// DISPIDs of the type library (layomats.idl), in the interface's order.
enum ViewDispId : DISPID {
  kDispLmtStartDLL = 1,
  kDispLmtGetProg = 2,
  kDispLmtPutFileINIform = 3,
  kDispLmtParent = 4,
  kDispLmtResize = 5,
  kDispLmtStartProg = 6,
  kDispLmtExit = 7,
  kDispFunctionCommands = 8,
};

class ViewDispatch final : public IDispatch {
 public:
  // A new object with one reference, which the caller owns. `type_info`
  // describes the interface for GetTypeInfo and may be null (then
  // GetTypeInfoCount reports none); the object keeps its own reference.
  // Holds a module lock while alive.
  static ViewDispatch* Create(std::unique_ptr<LmtViewMethods> view,
                              ITypeInfo* type_info);

  ViewDispatch(const ViewDispatch&) = delete;
  ViewDispatch& operator=(const ViewDispatch&) = delete;

  // IUnknown: answers IUnknown, IDispatch and the dispinterface _LmtView.
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID lcid,
                                        ITypeInfo** out) override;
  // Only member names are known; parameter names (named arguments) are not:
  // their ids come back DISPID_UNKNOWN with DISP_E_UNKNOWNNAME.
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names,
                                          UINT count, LCID lcid,
                                          DISPID* ids) override;
  // Accepts DISPATCH_METHOD and DISPATCH_PROPERTYGET (scripts read a method
  // without arguments like a property). Positional arguments only. An
  // argument that does not convert gives DISP_E_TYPEMISMATCH or
  // DISP_E_OVERFLOW with its index in *arg_err, except LmtExit's `save`,
  // which then counts as false, as any other value but true does.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID lcid,
                                   WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* excep,
                                   UINT* arg_err) override;

 private:
  ViewDispatch(std::unique_ptr<LmtViewMethods> view, ITypeInfo* type_info);
  ~ViewDispatch();

  std::atomic<ULONG> refs_{1};
  std::unique_ptr<LmtViewMethods> view_;
  ITypeInfo* type_info_;  // owned reference, may be null
};

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_VIEW_DISPATCH_H_
