#include "testing/fake_runtime.h"

#include <algorithm>
#include <cctype>

namespace lmt::testing {
namespace {

bool SameId(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

}  // namespace

void FakeRuntime::SetRunning(std::string prog_id,
                             host::ApplicationPtr application) {
  running_.emplace_back(std::move(prog_id), std::move(application));
}

void FakeRuntime::SetCreatable(std::string prog_id,
                               host::ApplicationPtr application) {
  creatable_.emplace_back(std::move(prog_id), std::move(application));
}

host::ApplicationPtr FakeRuntime::Lookup(const Table& table,
                                         std::string_view prog_id) {
  // The latest registration wins, as with a program registered last.
  for (auto it = table.rbegin(); it != table.rend(); ++it) {
    if (SameId(it->first, prog_id)) return it->second;
  }
  return nullptr;
}

Result<host::ApplicationPtr> FakeRuntime::GetObject(std::string_view prog_id) {
  calls_.push_back("GetObject " + std::string(prog_id));
  host::ApplicationPtr app = Lookup(running_, prog_id);
  if (app == nullptr) {
    return Status::NotFound("no running " + std::string(prog_id));
  }
  return app;
}

Result<host::ApplicationPtr> FakeRuntime::CreateObject(
    std::string_view prog_id) {
  calls_.push_back("CreateObject " + std::string(prog_id));
  host::ApplicationPtr app = Lookup(creatable_, prog_id);
  if (app == nullptr) {
    return Status::NotFound(std::string(prog_id) + " cannot be started");
  }
  running_.emplace_back(std::string(prog_id), app);
  return app;
}

}  // namespace lmt::testing
