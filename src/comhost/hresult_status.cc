#include "comhost/hresult_status.h"

#include <oleauto.h>

#include <cstdio>
#include <string>

#include "comhost/variants.h"

namespace lmt::comhost {
namespace {

constexpr int kScodeBase = 0x0200;
constexpr StatusCode kLastCode = StatusCode::kCorruption;

std::string HexCode(HRESULT hr) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(hr));
  return text;
}

StatusCode CodeOf(HRESULT hr) {
  if (HRESULT_FACILITY(hr) == FACILITY_ITF) {
    int n = HRESULT_CODE(hr) - kScodeBase;
    if (n > 0 && n <= static_cast<int>(kLastCode)) {
      return static_cast<StatusCode>(n);
    }
  }
  switch (hr) {
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
    case E_NOTIMPL:
    case E_NOINTERFACE:
      return StatusCode::kNotSupported;
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADPARAMCOUNT:
    case DISP_E_PARAMNOTOPTIONAL:
    case DISP_E_OVERFLOW:
    case DISP_E_BADVARTYPE:
    case DISP_E_NONAMEDARGS:
    case E_INVALIDARG:
      return StatusCode::kInvalidArgument;
    case REGDB_E_CLASSNOTREG:
    case CO_E_CLASSSTRING:
    case MK_E_UNAVAILABLE:
      return StatusCode::kNotFound;
    default:
      return StatusCode::kRefused;
  }
}

}  // namespace

HRESULT ScodeForStatus(StatusCode code) {
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF,
                      kScodeBase + static_cast<int>(code));
}

Status StatusFromHresult(HRESULT hr, EXCEPINFO* excep,
                         std::string_view member) {
  if (SUCCEEDED(hr)) return Status();
  std::string message(member);
  HRESULT code_source = hr;
  if (hr == DISP_E_EXCEPTION && excep != nullptr) {
    // A server may fill EXCEPINFO lazily.
    if (excep->pfnDeferredFillIn != nullptr) excep->pfnDeferredFillIn(excep);
    if (excep->scode != 0) code_source = excep->scode;
    if (excep->bstrDescription != nullptr) {
      message += ": " + WideToUtf8(std::wstring_view(
                            excep->bstrDescription,
                            SysStringLen(excep->bstrDescription)));
    }
    SysFreeString(excep->bstrDescription);
    SysFreeString(excep->bstrSource);
    SysFreeString(excep->bstrHelpFile);
    excep->bstrDescription = excep->bstrSource = excep->bstrHelpFile = nullptr;
  }
  if (message.size() == member.size()) message += ": " + HexCode(code_source);
  return Status(CodeOf(code_source), std::move(message));
}

}  // namespace lmt::comhost
