// Process-wide state of Layomats.dll: its module handle and the count of live
// objects and server locks that DllCanUnloadNow answers from.
#ifndef LMT_COMSERVER_MODULE_H_
#define LMT_COMSERVER_MODULE_H_

#include <windows.h>

#include <string>

namespace lmt::comserver {

// Set once by DllMain; null in a program that links the library statically.
void SetModule(HMODULE module);
HMODULE Module();
// The full path of the module (of the program when there is no DLL); empty
// when the system cannot tell.
std::wstring ModulePath();

// Every live automation object and every IClassFactory::LockServer(TRUE)
// holds one lock.
void LockModule();
void UnlockModule();
bool ModuleInUse();

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_MODULE_H_
