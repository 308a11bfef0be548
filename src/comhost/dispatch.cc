#include "comhost/dispatch.h"

#include <oleauto.h>

#include <algorithm>
#include <utility>

#include "comhost/hresult_status.h"

namespace lmt::comhost {
namespace {

// Elements asked for per IEnumVARIANT::Next: large enough that model space
// comes over in a few round trips.
constexpr ULONG kEnumBatch = 512;

std::string MemberName(std::string_view type_key, std::string_view name) {
  return std::string(type_key) + "." + std::string(name);
}

}  // namespace

bool ComContext::IsBusy(HRESULT hr) {
  return hr == RPC_E_CALL_REJECTED || hr == RPC_E_SERVERCALL_RETRYLATER;
}

// Keeps this thread's windows answering while the program is busy.
void ComContext::Pause(std::chrono::milliseconds pause) {
  MsgWaitForMultipleObjects(0, nullptr, FALSE,
                            static_cast<DWORD>(pause.count()), QS_ALLINPUT);
  MSG msg;
  while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
}

std::string ComContext::Key(std::string_view type_key, std::string_view name) {
  return MemberName(type_key, name);
}

Result<DISPID> ComContext::DispId(IDispatch* object, std::string_view type_key,
                                  std::string_view name) {
  std::string key = Key(type_key, name);
  if (auto it = ids_.find(key); it != ids_.end()) return it->second;
  std::wstring wide = Utf8ToWide(name);
  LPOLESTR names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  ++stats_.name_lookups;
  HRESULT hr = RetryWhileBusy([&] {
    return object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  });
  if (FAILED(hr)) return StatusFromHresult(hr, nullptr, key);
  ids_.emplace(std::move(key), id);
  return id;
}

void ComContext::Forget(std::string_view type_key, std::string_view name) {
  if (auto it = ids_.find(Key(type_key, name)); it != ids_.end()) {
    ids_.erase(it);
  }
}

bool ComContext::Cached(std::string_view type_key,
                        std::string_view name) const {
  return ids_.find(Key(type_key, name)) != ids_.end();
}

ScopedVariant RefVariant(ScopedVariant& target) {
  ScopedVariant out;
  V_VT(out.get()) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(out.get()) = target.get();
  return out;
}

ScopedVariant TypedRefVariant(VARTYPE type, void* target) {
  LMT_CHECK(target != nullptr);
  ScopedVariant out;
  V_VT(out.get()) = static_cast<VARTYPE>(VT_BYREF | type);
  V_BYREF(out.get()) = target;
  return out;
}

Result<ScopedVariant> Invoke(ComContext& context, IDispatch* object,
                             std::string_view type_key, std::string_view name,
                             CallKind kind, std::vector<ScopedVariant> args) {
  LMT_CHECK(object != nullptr);
  // DISPPARAMS holds the arguments last first.
  std::vector<VARIANT> reversed;
  reversed.reserve(args.size());
  for (auto it = args.rbegin(); it != args.rend(); ++it) {
    reversed.push_back(*it->get());
  }
  DISPID put_id = DISPID_PROPERTYPUT;
  DISPPARAMS params{};
  params.cArgs = static_cast<UINT>(reversed.size());
  params.rgvarg = reversed.empty() ? nullptr : reversed.data();
  WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  if (kind != CallKind::kGet) {
    flags =
        kind == CallKind::kPut ? DISPATCH_PROPERTYPUT : DISPATCH_PROPERTYPUTREF;
    params.cNamedArgs = 1;
    params.rgdispidNamedArgs = &put_id;
  }

  for (int attempt = 0; attempt < 2; ++attempt) {
    const bool from_cache = context.Cached(type_key, name);
    Result<DISPID> id = context.DispId(object, type_key, name);
    if (!id.ok()) return id.status();
    ScopedVariant result;
    EXCEPINFO excep{};
    UINT arg_err = 0;
    HRESULT hr = context.RetryWhileBusy([&] {
      ++context.stats().invokes;
      return object->Invoke(*id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                            kind == CallKind::kGet ? result.get() : nullptr,
                            &excep, &arg_err);
    });
    if (SUCCEEDED(hr)) return result;
    if (hr == DISP_E_MEMBERNOTFOUND && from_cache && attempt == 0) {
      // Another class of object behind the same type key: ask anew once.
      context.Forget(type_key, name);
      continue;
    }
    return StatusFromHresult(hr, &excep, MemberName(type_key, name));
  }
  return Status::NotSupported(MemberName(type_key, name));
}

Result<std::vector<ComPtr<IDispatch>>> Enumerate(ComContext& context,
                                                 IDispatch* collection,
                                                 std::string_view type_key) {
  LMT_CHECK(collection != nullptr);
  const std::string member = MemberName(type_key, "_NewEnum");
  DISPPARAMS none{};
  ScopedVariant result;
  EXCEPINFO excep{};
  HRESULT hr = context.RetryWhileBusy([&] {
    ++context.stats().enum_calls;
    return collection->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                              DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                              result.get(), &excep, nullptr);
  });
  if (FAILED(hr)) return StatusFromHresult(hr, &excep, member);
  IUnknown* unknown = V_VT(result.get()) == VT_UNKNOWN ? V_UNKNOWN(result.get())
                      : V_VT(result.get()) == VT_DISPATCH
                          ? static_cast<IUnknown*>(V_DISPATCH(result.get()))
                          : nullptr;
  if (unknown == nullptr) {
    return Status::InvalidArgument(member + ": no enumerator");
  }
  ComPtr<IEnumVARIANT> enumerator;
  ++context.stats().enum_calls;
  hr = unknown->QueryInterface(IID_IEnumVARIANT,
                               reinterpret_cast<void**>(enumerator.Out()));
  if (FAILED(hr)) return StatusFromHresult(hr, nullptr, member);

  std::vector<ComPtr<IDispatch>> items;
  std::vector<VARIANT> batch(kEnumBatch);
  for (;;) {
    for (VARIANT& v : batch) VariantInit(&v);
    ULONG fetched = 0;
    ++context.stats().enum_calls;
    hr = enumerator->Next(kEnumBatch, batch.data(), &fetched);
    if (FAILED(hr)) return StatusFromHresult(hr, nullptr, member);
    Status bad;
    for (ULONG i = 0; i < fetched; ++i) {
      if (bad.ok()) {
        Result<ComPtr<IDispatch>> item = ReadDispatch(batch[i]);
        if (item.ok() && *item) {
          items.push_back(std::move(*item));
        } else {
          bad = Status::InvalidArgument(member + ": an element is no object");
        }
      }
      VariantClear(&batch[i]);
    }
    if (!bad.ok()) return bad;
    if (hr == S_FALSE || fetched < kEnumBatch) break;
  }
  return items;
}

}  // namespace lmt::comhost
