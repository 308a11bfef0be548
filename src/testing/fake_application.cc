#include "testing/fake_application.h"

#include <cctype>
#include <utility>

namespace lmt::testing {

Status FakeViewport::DoSetDirection(const host::Point& d) {
  direction = d;
  return Status::Ok();
}

FakeDocument::FakeDocument(std::shared_ptr<host::CallGate> gate,
                           std::weak_ptr<FakeApplication> application,
                           std::string name)
    : host::Document(gate),
      application_(std::move(application)),
      name_(std::move(name)),
      viewport_(std::make_shared<FakeViewport>(gate)) {
  SetVariableValue("TILEMODE", int16_t{1});
  SetVariableValue("VIEWDIR", host::Point{0, 0, 1});
  SetVariableValue("UCSNAME", std::string());
  SetVariableValue("WORLDUCS", int16_t{1});
}

std::string FakeDocument::Key(std::string_view name) {
  std::string key(name);
  for (char& c : key) c = static_cast<char>(std::toupper(c));
  return key;
}

void FakeDocument::SetVariableValue(std::string_view name,
                                    host::Variant value) {
  variables_[Key(name)] = std::move(value);
}

Result<host::ApplicationPtr> FakeDocument::DoApplication() const {
  std::shared_ptr<FakeApplication> app = application_.lock();
  if (app == nullptr) return Status::NotFound("the application has gone");
  return host::ApplicationPtr(app);
}

Result<host::Variant> FakeDocument::DoGetVariable(std::string_view name) const {
  auto it = variables_.find(Key(name));
  if (it == variables_.end()) {
    return Status::NotFound("no system variable " + std::string(name));
  }
  return it->second;
}

Status FakeDocument::DoSetVariable(std::string_view name,
                                   const host::Variant& value) {
  auto it = variables_.find(Key(name));
  if (it == variables_.end()) {
    return Status::NotFound("no system variable " + std::string(name));
  }
  it->second = value;
  return Status::Ok();
}

Status FakeDocument::DoSendCommand(std::string_view command) {
  commands_.emplace_back(command);
  return Status::Ok();
}

Result<host::ViewportPtr> FakeDocument::DoActiveViewport() const {
  return host::ViewportPtr(viewport_);
}

Status FakeDocument::DoSetActiveViewport(const host::ViewportPtr& viewport) {
  if (viewport == nullptr) return Status::InvalidArgument("no viewport");
  ++viewport_assignments_;
  return Status::Ok();
}

std::shared_ptr<FakeApplication> FakeApplication::Make(std::string version) {
  return std::shared_ptr<FakeApplication>(new FakeApplication(
      std::make_shared<host::CallGate>(), std::move(version)));
}

FakeApplication::FakeApplication(std::shared_ptr<host::CallGate> gate,
                                 std::string version)
    : host::Application(std::move(gate)), version_(std::move(version)) {}

std::shared_ptr<FakeDocument> FakeApplication::OpenDocument(std::string name) {
  active_document_ = std::make_shared<FakeDocument>(
      shared_gate(), weak_from_this(), std::move(name));
  return active_document_;
}

Status FakeApplication::DoSetVisible(bool visible) {
  if (!can_show_) return Status::Refused("the program cannot be shown");
  visible_ = visible;
  return Status::Ok();
}

Result<std::string> FakeApplication::DoCaption() const {
  return "Fake CAD " + version_;
}

Result<host::DocumentPtr> FakeApplication::DoActiveDocument() const {
  if (active_document_ == nullptr) return Status::NotFound("no drawing open");
  return host::DocumentPtr(active_document_);
}

Result<host::DbxDocumentPtr> FakeApplication::DoGetInterfaceObject(
    std::string_view prog_id) {
  interface_requests_.emplace_back(prog_id);
  if (!dbx_available_) {
    return Status::NotFound(std::string(prog_id) + " is not registered");
  }
  return host::DbxDocumentPtr(
      std::make_shared<FakeDbxDocument>(shared_gate(), std::string(prog_id)));
}

}  // namespace lmt::testing
