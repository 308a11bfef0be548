// The one seam through which every late-bound call to a CAD program goes:
// names are looked up once per type of object (DISPIDs cached per type key
// in the application's ComContext, never per object, since a lookup is a
// cross-process round trip), arguments are passed in their natural order,
// and every failure, HRESULT or EXCEPINFO, comes back as a Status. Nothing
// throws and a refused call crashes nothing.
//
// A type key names the kind of object whose members share DISPIDs:
// "Document", "Layouts", or an entity's ObjectName ("AcDbViewport"). One
// server never changes a DISPID; a stale one (DISP_E_MEMBERNOTFOUND) is
// looked up again once.
//
// The context also counts what crossed to the server (Invoke,
// GetIDsOfNames, enumerator fetches), so tests can keep the number of round
// trips per frame and per layout in check.
#ifndef LMT_COMHOST_DISPATCH_H_
#define LMT_COMHOST_DISPATCH_H_

#include <oaidl.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "comhost/com_ptr.h"
#include "comhost/variants.h"
#include "core/status.h"

namespace lmt::comhost {

// Round trips to the server.
struct CallStats {
  int64_t invokes = 0;
  int64_t name_lookups = 0;
  int64_t enum_calls = 0;  // _NewEnum queries and IEnumVARIANT::Next
  int64_t total() const { return invokes + name_lookups + enum_calls; }
  // Calls repeated because the program was busy (not in total()).
  int64_t busy_retries = 0;
};

// What every object of one application shares: the DISPID cache and the
// call counts. Single-threaded (apartment-threaded callers).
class ComContext {
 public:
  // The DISPID of `name` on objects of `type_key`, from the cache or asked
  // of `object` (GetIDsOfNames). kNotSupported when the object does not
  // know the name.
  Result<DISPID> DispId(IDispatch* object, std::string_view type_key,
                        std::string_view name);
  void Forget(std::string_view type_key, std::string_view name);
  bool Cached(std::string_view type_key, std::string_view name) const;

  CallStats& stats() { return stats_; }
  const CallStats& stats() const { return stats_; }

  // How long one call is repeated while the program says it is busy
  // (RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER) before the refusal
  // is passed on. A program busy longer than this is treated as refusing.
  std::chrono::milliseconds busy_budget() const { return busy_budget_; }
  void set_busy_budget(std::chrono::milliseconds budget) {
    busy_budget_ = budget;
  }
  // Runs `call` (returning an HRESULT) again while the program is busy,
  // with growing pauses, within the budget.
  template <typename Call>
  HRESULT RetryWhileBusy(Call&& call);
  // Waits `pause` while this thread's windows go on answering.
  static void Pause(std::chrono::milliseconds pause);

 private:
  static std::string Key(std::string_view type_key, std::string_view name);
  static bool IsBusy(HRESULT hr);

  std::map<std::string, DISPID, std::less<>> ids_;
  CallStats stats_;
  std::chrono::milliseconds busy_budget_{60000};
};

template <typename Call>
HRESULT ComContext::RetryWhileBusy(Call&& call) {
  const auto deadline = std::chrono::steady_clock::now() + busy_budget_;
  std::chrono::milliseconds pause{10};
  for (;;) {
    HRESULT hr = call();
    if (!IsBusy(hr) || std::chrono::steady_clock::now() >= deadline) {
      return hr;
    }
    ++stats_.busy_retries;
    Pause(pause);
    pause = std::min(pause * 2, std::chrono::milliseconds{250});
  }
}

// How a member is called: methods and property reads alike as
// DISPATCH_METHOD | DISPATCH_PROPERTYGET (what script clients send, which
// every automation server accepts), property writes as DISPATCH_PROPERTYPUT
// (or PROPERTYPUTREF for an object value).
enum class CallKind { kGet, kPut, kPutRef };

// Calls `name` on `object` with `args` (first argument first). The result
// (VT_EMPTY for none) or the failure as a Status naming the member.
// REQUIRES: object != nullptr.
Result<ScopedVariant> Invoke(ComContext& context, IDispatch* object,
                             std::string_view type_key, std::string_view name,
                             CallKind kind,
                             std::vector<ScopedVariant> args = {});

// A by-reference argument that the server fills (out parameters such as
// GetBoundingBox's corners). `target` must outlive the call.
ScopedVariant RefVariant(ScopedVariant& target);
// A by-reference argument of a declared type (VT_BSTR, VT_BOOL, VT_I4...)
// pointing at `target`, for out-parameters that the type library types:
// the programs refuse a VARIANT reference there as a type mismatch.
ScopedVariant TypedRefVariant(VARTYPE type, void* target);

// Every element of a collection through its enumerator (_NewEnum), fetched
// in large batches so that a walk costs a few round trips, not one per
// element. Elements that are not objects fail the walk (kInvalidArgument).
Result<std::vector<ComPtr<IDispatch>>> Enumerate(ComContext& context,
                                                 IDispatch* collection,
                                                 std::string_view type_key);

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_DISPATCH_H_
