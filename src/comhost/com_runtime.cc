#include "comhost/com_runtime.h"

#include <objbase.h>
#include <oleauto.h>

#include <cctype>
#include <string>

#include "comhost/com_application.h"
#include "comhost/dispatch.h"
#include "comhost/variants.h"
#undef GetObject

namespace lmt::comhost {
namespace {

Result<CLSID> ClassOf(std::string_view prog_id) {
  std::wstring wide = Utf8ToWide(prog_id);
  CLSID clsid{};
  HRESULT hr = CLSIDFromProgID(wide.c_str(), &clsid);
  if (FAILED(hr)) {
    return Status::NotFound(std::string(prog_id) + ": not registered");
  }
  return clsid;
}

}  // namespace

ComRuntime::PerProgram& ComRuntime::For(std::string_view prog_id) {
  std::string key(prog_id);
  for (char& c : key)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  PerProgram& p = programs_[key];
  if (p.gate == nullptr) {
    p.gate = std::make_shared<host::CallGate>();
    p.context = std::make_shared<ComContext>();
  }
  return p;
}

Result<host::ApplicationPtr> ComRuntime::Wrap(void* raw,
                                              std::string_view prog_id) {
  ComPtr<IUnknown> owned = ComPtr<IUnknown>::Adopt(static_cast<IUnknown*>(raw));
  ComPtr<IDispatch> dispatch;
  HRESULT hr = owned->QueryInterface(IID_IDispatch,
                                     reinterpret_cast<void**>(dispatch.Out()));
  if (FAILED(hr) || !dispatch) {
    return Status::Refused(std::string(prog_id) + ": no automation object");
  }
  PerProgram& p = For(prog_id);
  return WrapApplication(std::move(dispatch), p.gate, p.context);
}

Result<host::ApplicationPtr> ComRuntime::GetObject(std::string_view prog_id) {
  Result<CLSID> clsid = ClassOf(prog_id);
  if (!clsid.ok()) return clsid.status();
  IUnknown* unknown = nullptr;
  HRESULT hr = GetActiveObject(*clsid, nullptr, &unknown);
  if (FAILED(hr) || unknown == nullptr) {
    return Status::NotFound(std::string(prog_id) + ": not running");
  }
  return Wrap(unknown, prog_id);
}

Result<host::ApplicationPtr> ComRuntime::CreateObject(
    std::string_view prog_id) {
  Result<CLSID> clsid = ClassOf(prog_id);
  if (!clsid.ok()) return clsid.status();
  IUnknown* unknown = nullptr;
  HRESULT hr =
      CoCreateInstance(*clsid, nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown,
                       reinterpret_cast<void**>(&unknown));
  if (FAILED(hr) || unknown == nullptr) {
    if (hr == REGDB_E_CLASSNOTREG) {
      return Status::NotFound(std::string(prog_id) + ": no server registered");
    }
    return Status::Refused(std::string(prog_id) + ": cannot start");
  }
  return Wrap(unknown, prog_id);
}

std::unique_ptr<host::AutomationRuntime> MakeComRuntime() {
  return std::make_unique<ComRuntime>();
}

}  // namespace lmt::comhost
