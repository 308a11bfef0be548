// A small in-memory CAD application for the tests of the connection and of
// code that only talks to the application and document level: Version,
// Visible, Caption, ActiveDocument, GetInterfaceObject (ObjectDBX), the
// document's Application, system variables, recorded SendCommand texts and the
// active tiled viewport's Direction. It has no drawing content: logic that
// walks entities is tested on the DXF-engine host instead. Every other member
// answers kNotSupported, as the object model's defaults do.
#ifndef LMT_TESTING_FAKE_APPLICATION_H_
#define LMT_TESTING_FAKE_APPLICATION_H_

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/application.h"
#include "host/call_gate.h"
#include "host/document.h"
#include "host/object.h"
#include "host/point.h"
#include "host/variant.h"

namespace lmt::testing {

class FakeApplication;

class FakeViewport : public host::Viewport {
 public:
  explicit FakeViewport(std::shared_ptr<host::CallGate> gate)
      : host::Viewport(std::move(gate)) {}

  host::Point direction{0, 0, 1};

 protected:
  Result<host::Point> DoDirection() const override { return direction; }
  Status DoSetDirection(const host::Point& d) override;
};

class FakeDocument : public host::Document {
 public:
  FakeDocument(std::shared_ptr<host::CallGate> gate,
               std::weak_ptr<FakeApplication> application, std::string name);

  // System variables by name, without regard to case. Starts as a drawing in
  // model space in plan view with the world UCS: TILEMODE 1, VIEWDIR
  // (0, 0, 1), UCSNAME "" and WORLDUCS 1.
  void SetVariableValue(std::string_view name, host::Variant value);
  // Texts sent with SendCommand, in order.
  const std::vector<std::string>& commands() const { return commands_; }
  // The viewport ActiveViewport answers, and how often it was assigned back.
  const std::shared_ptr<FakeViewport>& viewport() const { return viewport_; }
  int viewport_assignments() const { return viewport_assignments_; }

 protected:
  Result<std::string> DoName() const override { return name_; }
  Result<host::ApplicationPtr> DoApplication() const override;
  Result<host::Variant> DoGetVariable(std::string_view name) const override;
  Status DoSetVariable(std::string_view name,
                       const host::Variant& value) override;
  Status DoSendCommand(std::string_view command) override;
  Result<host::ViewportPtr> DoActiveViewport() const override;
  Status DoSetActiveViewport(const host::ViewportPtr& viewport) override;

 private:
  static std::string Key(std::string_view name);

  std::weak_ptr<FakeApplication> application_;
  std::string name_;
  std::map<std::string, host::Variant> variables_;
  std::vector<std::string> commands_;
  std::shared_ptr<FakeViewport> viewport_;
  int viewport_assignments_ = 0;
};

class FakeDbxDocument : public host::DbxDocument {
 public:
  FakeDbxDocument(std::shared_ptr<host::CallGate> gate, std::string prog_id)
      : host::DbxDocument(std::move(gate)), prog_id(std::move(prog_id)) {}

  const std::string prog_id;  // what GetInterfaceObject was asked for
};

class FakeApplication : public host::Application,
                        public std::enable_shared_from_this<FakeApplication> {
 public:
  // A program of release `version` with no drawing open, not visible.
  static std::shared_ptr<FakeApplication> Make(std::string version);

  // Opens a new empty drawing and makes it the active document.
  std::shared_ptr<FakeDocument> OpenDocument(std::string name);
  // Closes every drawing: ActiveDocument then fails.
  void CloseDocuments() { active_document_ = nullptr; }
  // Whether GetInterfaceObject serves ObjectDBX documents (default true).
  void set_dbx_available(bool available) { dbx_available_ = available; }
  // Whether SetVisible succeeds (default true).
  void set_can_show(bool can_show) { can_show_ = can_show; }

  bool visible() const { return visible_; }
  // Every identifier GetInterfaceObject was asked for.
  const std::vector<std::string>& interface_requests() const {
    return interface_requests_;
  }

 protected:
  FakeApplication(std::shared_ptr<host::CallGate> gate, std::string version);

  Result<std::string> DoVersion() const override { return version_; }
  Result<bool> DoVisible() const override { return visible_; }
  Status DoSetVisible(bool visible) override;
  Result<std::string> DoCaption() const override;
  Result<host::DocumentPtr> DoActiveDocument() const override;
  Result<host::DbxDocumentPtr> DoGetInterfaceObject(
      std::string_view prog_id) override;

 private:
  std::string version_;
  bool visible_ = false;
  bool can_show_ = true;
  bool dbx_available_ = true;
  std::shared_ptr<FakeDocument> active_document_;
  std::vector<std::string> interface_requests_;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_FAKE_APPLICATION_H_
