// The object model of a CAD program reached through IDispatch, late-bound:
// wrap the program's Application object and every object reached from it is
// a host:: object whose members are automation calls (see com_object.h and
// dispatch.h for how calls, names and failures travel).
#ifndef LMT_COMHOST_COM_APPLICATION_H_
#define LMT_COMHOST_COM_APPLICATION_H_

#include <oaidl.h>

#include <memory>

#include "comhost/com_ptr.h"
#include "comhost/dispatch.h"
#include "host/application.h"

namespace lmt::comhost {

// The application object as the host model sees it, with a gate and a
// DISPID cache of its own shared by everything reached from it.
// REQUIRES: application is not null.
host::ApplicationPtr WrapApplication(ComPtr<IDispatch> application);
// The same with a gate and a context that outlive this wrapping, so that a
// program connected to anew keeps its refusal rules, counts and DISPIDs.
// REQUIRES: all three not null.
host::ApplicationPtr WrapApplication(ComPtr<IDispatch> application,
                                     std::shared_ptr<host::CallGate> gate,
                                     std::shared_ptr<ComContext> context);

// The round trips made so far by the application `object` belongs to; null
// for an object of another host.
const CallStats* CallStatsOf(const host::Object& object);

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_COM_APPLICATION_H_
