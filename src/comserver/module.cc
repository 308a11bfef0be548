#include "comserver/module.h"

#include <atomic>

namespace lmt::comserver {
namespace {

HMODULE g_module = nullptr;
std::atomic<long> g_locks{0};

}  // namespace

void SetModule(HMODULE module) { g_module = module; }
HMODULE Module() { return g_module; }

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    DWORD n = GetModuleFileNameW(g_module, path.data(),
                                 static_cast<DWORD>(path.size()));
    if (n == 0) return {};
    if (n < path.size()) {
      path.resize(n);
      return path;
    }
    path.resize(path.size() * 2);  // truncated: try a larger buffer
  }
}

void LockModule() { ++g_locks; }
void UnlockModule() { --g_locks; }
bool ModuleInUse() { return g_locks.load() != 0; }

}  // namespace lmt::comserver
