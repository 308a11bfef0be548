// The class factory of LmtView and the type information its objects hand
// out. One factory serves the whole process; it lives as long as the module.
#ifndef LMT_COMSERVER_CLASS_FACTORY_H_
#define LMT_COMSERVER_CLASS_FACTORY_H_

#include <oaidl.h>
#include <windows.h>

namespace lmt::comserver {

// What DllGetClassObject answers: the factory's `riid` interface for
// CLSID_LmtView, CLASS_E_CLASSNOTAVAILABLE for any other class.
HRESULT GetLmtViewClassObject(REFCLSID clsid, REFIID riid, void** out);

// The description of _LmtView from the type library inside the module, or
// null when the module holds none (a test program). The caller releases it.
ITypeInfo* LoadViewTypeInfo();

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_CLASS_FACTORY_H_
