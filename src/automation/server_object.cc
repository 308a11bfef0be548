#include "automation/server_object.h"

#include <oleauto.h>

#include <new>
#include <string>
#include <utility>

#include "automation/server.h"
#include "comhost/hresult_status.h"
#include "comhost/variants.h"

namespace lmt::automation {
namespace {

// Asked of an object to learn whether it is one of ours; answered only in
// this process (there is no proxy for it), which is where our objects come
// back to when a client passes them as arguments.
// {B7E2D1C4-5A63-4F0E-9C1D-7E4A2B9F3C10}
constexpr GUID kIidServerObject = {
    0xb7e2d1c4,
    0x5a63,
    0x4f0e,
    {0x9c, 0x1d, 0x7e, 0x4a, 0x2b, 0x9f, 0x3c, 0x10}};

HRESULT Fail(const Status& status, EXCEPINFO* excep) {
  if (excep != nullptr) {
    *excep = EXCEPINFO{};
    excep->scode = comhost::ScodeForStatus(status.code());
    excep->bstrSource = SysAllocString(L"layomat-automation");
    std::wstring text = comhost::Utf8ToWide(status.message());
    excep->bstrDescription =
        SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  return DISP_E_EXCEPTION;
}

// IEnumVARIANT over a fixed list of objects.
class EnumVariant final : public IEnumVARIANT {
 public:
  explicit EnumVariant(std::vector<comhost::ScopedVariant> items,
                       size_t next = 0)
      : items_(std::make_shared<std::vector<comhost::ScopedVariant>>(
            std::move(items))),
        next_(next) {}
  EnumVariant(std::shared_ptr<std::vector<comhost::ScopedVariant>> items,
              size_t next)
      : items_(std::move(items)), next_(next) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (out == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IEnumVARIANT)) {
      *out = static_cast<IEnumVARIANT*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out,
                                 ULONG* fetched) override {
    if (out == nullptr) return E_POINTER;
    ULONG n = 0;
    while (n < count && next_ < items_->size()) {
      VariantInit(&out[n]);
      VariantCopy(&out[n], (*items_)[next_].get());
      ++n;
      ++next_;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    next_ += count;
    if (next_ > items_->size()) {
      next_ = items_->size();
      return S_FALSE;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
    if (out == nullptr) return E_POINTER;
    *out = new (std::nothrow) EnumVariant(items_, next_);
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
  }

 private:
  std::atomic<ULONG> refs_{1};
  std::shared_ptr<std::vector<comhost::ScopedVariant>> items_;
  size_t next_;
};

}  // namespace

ServerObject* ServerObject::Create(host::ObjectPtr object,
                                   const ClassTable& table, Server& server) {
  LMT_CHECK(object != nullptr);
  return new (std::nothrow) ServerObject(std::move(object), table, server);
}

ServerObject::ServerObject(host::ObjectPtr object, const ClassTable& table,
                           Server& server)
    : object_(std::move(object)), table_(table), server_(server) {}

ServerObject::~ServerObject() = default;

host::ObjectPtr ServerObject::Unwrap(IUnknown* unknown) {
  if (unknown == nullptr) return nullptr;
  void* raw = nullptr;
  if (FAILED(unknown->QueryInterface(kIidServerObject, &raw)) ||
      raw == nullptr) {
    return nullptr;
  }
  ServerObject* self = static_cast<ServerObject*>(raw);
  host::ObjectPtr object = self->object_;
  self->Release();
  return object;
}

HRESULT ServerObject::QueryInterface(REFIID riid, void** out) {
  if (out == nullptr) return E_POINTER;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch)) {
    *out = static_cast<IDispatch*>(this);
  } else if (IsEqualIID(riid, kIidServerObject)) {
    *out = this;
  } else {
    *out = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG ServerObject::AddRef() { return ++refs_; }

ULONG ServerObject::Release() {
  ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT ServerObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT ServerObject::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
  if (out != nullptr) *out = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT ServerObject::GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count,
                                    LCID, DISPID* ids) {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  HRESULT hr = S_OK;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  if (count == 0) return S_OK;
  for (size_t m = 0; m < table_.members.size(); ++m) {
    if (names[0] != nullptr &&
        CompareStringOrdinal(names[0], -1, table_.members[m].name, -1, TRUE) ==
            CSTR_EQUAL) {
      ids[0] = static_cast<DISPID>(m + 1);
      break;
    }
  }
  if (ids[0] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
  // Parameter names (named arguments) are not known.
  if (count > 1) hr = DISP_E_UNKNOWNNAME;
  return hr;
}

HRESULT ServerObject::NewEnum(VARIANT* result, EXCEPINFO* excep) {
  if (table_.items == nullptr) return DISP_E_MEMBERNOTFOUND;
  Result<std::vector<host::ObjectPtr>> items = table_.items(*object_);
  if (!items.ok()) return Fail(items.status(), excep);
  std::vector<comhost::ScopedVariant> values;
  values.reserve(items->size());
  for (const host::ObjectPtr& item : *items) {
    comhost::ScopedVariant v;
    if (item != nullptr) {
      V_VT(v.get()) = VT_DISPATCH;
      V_DISPATCH(v.get()) = Create(item, TableFor(*item), server_);
    }
    values.push_back(std::move(v));
  }
  EnumVariant* enumerator = new (std::nothrow) EnumVariant(std::move(values));
  if (enumerator == nullptr) return E_OUTOFMEMORY;
  if (result != nullptr) {
    V_VT(result) = VT_UNKNOWN;
    V_UNKNOWN(result) = enumerator;
  } else {
    enumerator->Release();
  }
  return S_OK;
}

HRESULT ServerObject::Invoke(DISPID id, REFIID riid, LCID, WORD flags,
                             DISPPARAMS* params, VARIANT* result,
                             EXCEPINFO* excep, UINT* arg_err) {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (params == nullptr) return E_INVALIDARG;
  // A busy program answers before it looks at the call; the two codes are
  // what the programs return while a command or a dialog runs.
  if (server_.RejectAsBusy()) {
    return server_.calls() % 2 == 0 ? RPC_E_CALL_REJECTED
                                    : RPC_E_SERVERCALL_RETRYLATER;
  }
  server_.CountCall();
  server_.RunQueuedCommands(/*waiting=*/false);
  if (result != nullptr) VariantInit(result);
  if (id == DISPID_NEWENUM) return NewEnum(result, excep);
  if (id < 1 || static_cast<size_t>(id) > table_.members.size()) {
    return DISP_E_MEMBERNOTFOUND;
  }
  const bool put =
      (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  // A property write carries its value as the one named argument.
  UINT named = params->cNamedArgs;
  if (put) {
    if (named != 1 || params->rgdispidNamedArgs == nullptr ||
        params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
      return DISP_E_PARAMNOTOPTIONAL;
    }
  } else if (named != 0) {
    return DISP_E_NONAMEDARGS;
  }
  VARIANT scratch;
  VariantInit(&scratch);
  Call call{*object_, object_, {}, put, result != nullptr ? result : &scratch,
            server_};
  // rgvarg holds the arguments last first; a put's value is at index 0, so
  // it comes out last, after any index arguments.
  for (UINT i = params->cArgs; i > 0; --i) {
    call.args.push_back(&params->rgvarg[i - 1]);
  }
  Status status = table_.members[id - 1].run(call);
  VariantClear(&scratch);
  if (call.wrong_kind) return DISP_E_MEMBERNOTFOUND;
  if (!status.ok()) {
    if (status.code() == StatusCode::kInvalidArgument && arg_err != nullptr) {
      *arg_err = 0;
    }
    if (result != nullptr) VariantClear(result);
    return Fail(status, excep);
  }
  return S_OK;
}

void ReturnObject(Call& call, const host::ObjectPtr& object,
                  const ClassTable* table) {
  VariantClear(call.result);
  if (object == nullptr) return;
  V_VT(call.result) = VT_DISPATCH;
  V_DISPATCH(call.result) = ServerObject::Create(
      object, table != nullptr ? *table : TableFor(*object), call.server);
}

}  // namespace lmt::automation
