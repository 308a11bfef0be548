// The drawing's registered applications as the object model shows them:
// Add registers a name for extended data. The server also remembers which
// names the client registered, as the programs refuse extended data of any
// other.
#include <memory>
#include <string>

#include "automation/members.h"
#include "automation/server.h"
#include "automation/tables.h"

namespace lmt::automation {
namespace {

class RegisteredApps : public host::Object {
 public:
  explicit RegisteredApps(host::DatabasePtr database)
      : host::Object(database->shared_gate()), database_(std::move(database)) {}
  host::Database& database() const { return *database_; }

 private:
  host::DatabasePtr database_;
};

class RegisteredApp : public host::Object {
 public:
  RegisteredApp(std::shared_ptr<host::CallGate> gate, std::string name)
      : host::Object(std::move(gate)), name_(std::move(name)) {}
  const std::string& name() const { return name_; }

 private:
  std::string name_;
};

Status AppName(Call& call) {
  RegisteredApp* self = Self<RegisteredApp>(call);
  if (self == nullptr) return Status::NotSupported("not an application");
  if (call.put) return Status::NotSupported("read-only property");
  Return(call, self->name());
  return Status();
}

constexpr Member kApp[] = {{L"Name", &AppName}};
const ClassTable kAppTable{L"RegisteredApplication", kApp};

// Add(Name): a name already registered is given back as it is.
Status AddApp(Call& call) {
  RegisteredApps* self = Self<RegisteredApps>(call);
  if (self == nullptr) return Status::NotSupported("not a collection");
  Result<std::string> name = Arg<std::string>(call, 0);
  if (!name.ok()) return name.status();
  if (Status s = self->database().RegisterApplication(*name); !s.ok()) {
    return s;
  }
  call.server.RegisterApplication(*name);
  ReturnObject(call,
               std::make_shared<RegisteredApp>(self->shared_gate(), *name),
               &kAppTable);
  return Status();
}

constexpr Member kApps[] = {{L"Add", &AddApp}};
const ClassTable kAppsTable{L"RegisteredApplications", kApps};

}  // namespace

Status RegisteredApplications(Call& call) {
  auto database = std::dynamic_pointer_cast<host::Database>(call.self_ptr);
  if (database == nullptr) {
    call.wrong_kind = true;
    return Status::NotSupported("not a drawing");
  }
  if (call.put) return Status::NotSupported("read-only property");
  ReturnObject(call, std::make_shared<RegisteredApps>(database), &kAppsTable);
  return Status();
}

}  // namespace lmt::automation
