// How a failed automation call becomes a Status and back. Our own server
// reports a refused member as DISP_E_EXCEPTION with an EXCEPINFO whose scode
// carries the StatusCode (FACILITY_ITF, 0x0200 + code), so the client gets
// back exactly the code the server's host gave; any other server's failure
// maps by its HRESULT: unknown members are kNotSupported, bad arguments
// kInvalidArgument, everything else (a CAD program that refuses, a server
// process that died) kRefused.
#ifndef LMT_COMHOST_HRESULT_STATUS_H_
#define LMT_COMHOST_HRESULT_STATUS_H_

#include <oaidl.h>
#include <windows.h>

#include <string_view>

#include "core/status.h"

namespace lmt::comhost {

// The scode our server puts into EXCEPINFO for `code` (not kOk).
HRESULT ScodeForStatus(StatusCode code);

// The Status of a call to `member` that returned `hr`; `excep` is read when
// hr is DISP_E_EXCEPTION (its BSTRs are freed). Ok for a success.
Status StatusFromHresult(HRESULT hr, EXCEPINFO* excep, std::string_view member);

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_HRESULT_STATUS_H_
