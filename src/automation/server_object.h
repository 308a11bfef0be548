// ServerObject: one automation object of layomat-automation.exe, an
// IDispatch over one host:: object of the embedded host, driven by the
// dispatch table of its class (member names as the CAD object model spells
// them; DISPIDs are the table positions, from 1). Collections also answer
// DISPID_NEWENUM with an IEnumVARIANT over their items.
//
// A member that the host refuses returns DISP_E_EXCEPTION with an EXCEPINFO
// whose scode carries the StatusCode (comhost/hresult_status.h) and whose
// description is the host's message; nothing throws out of Invoke.
//
// Apartment-threaded: every call comes on the server's one thread.
#ifndef LMT_AUTOMATION_SERVER_OBJECT_H_
#define LMT_AUTOMATION_SERVER_OBJECT_H_

#include <oaidl.h>
#include <windows.h>

#include <atomic>
#include <span>
#include <vector>

#include "core/status.h"
#include "host/object.h"

namespace lmt::automation {

class Server;

// One call of a member, as its handler sees it.
struct Call {
  host::Object& self;
  const host::ObjectPtr& self_ptr;
  // The arguments, first first, by-reference ones read through.
  std::vector<VARIANT*> args;
  bool put = false;  // DISPATCH_PROPERTYPUT / PUTREF
  VARIANT* result;   // never null (a scratch one when the caller
                     // wants none)
  Server& server;
  bool wrong_kind = false;  // set by a handler for another kind of object
};

using MemberFn = Status (*)(Call&);

struct Member {
  const wchar_t* name;
  MemberFn run;
};

struct ClassTable {
  const wchar_t* name;
  std::span<const Member> members;
  // The items a For Each walk gives; null for no collection.
  Result<std::vector<host::ObjectPtr>> (*items)(host::Object&) = nullptr;
};

class ServerObject final : public IDispatch {
 public:
  // A new object with one reference, which the caller owns. REQUIRES:
  // object is not null.
  static ServerObject* Create(host::ObjectPtr object, const ClassTable& table,
                              Server& server);
  // The host object behind one of our own objects; null for anything else
  // (a foreign object, null).
  static host::ObjectPtr Unwrap(IUnknown* unknown);

  ServerObject(const ServerObject&) = delete;
  ServerObject& operator=(const ServerObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
  // Names match without regard to case (ordinal: the names are ASCII).
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names,
                                          UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID, WORD flags,
                                   DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* excep, UINT* arg_err) override;

 private:
  ServerObject(host::ObjectPtr object, const ClassTable& table, Server& server);
  ~ServerObject();
  HRESULT NewEnum(VARIANT* result, EXCEPINFO* excep);

  std::atomic<ULONG> refs_{1};
  host::ObjectPtr object_;
  const ClassTable& table_;
  Server& server_;
};

// The table of `object`'s class, chosen by its most derived host class.
const ClassTable& TableFor(const host::Object& object);
// Tables that are not chosen by class: the two option groups of
// Preferences.
const ClassTable& PreferencesDisplayTable();
// The AcadState object of GetAcadState, played by the application itself.
const ClassTable& AcadStateTable();
const ClassTable& PreferencesOpenSaveTable();

// A VT_DISPATCH result over `object` (VT_EMPTY for null).
void ReturnObject(Call& call, const host::ObjectPtr& object,
                  const ClassTable* table = nullptr);

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_SERVER_OBJECT_H_
