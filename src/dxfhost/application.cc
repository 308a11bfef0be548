#include "dxfhost/application.h"

#include <algorithm>

#include "dxfhost/document.h"
#include "dxfhost/drawing.h"

namespace lmt::dxfhost {
namespace {

// Options of the session. LayoutCreateViewport is kept for the layout code
// (new layouts are made without a viewport either way until the engine can
// make one); SaveAsType starts at 2018 DXF, an odd number, so the batch
// runs' "host default" picks the ".dxf" family.
class DxfPreferences : public host::Preferences {
 public:
  explicit DxfPreferences(std::shared_ptr<host::CallGate> gate)
      : host::Preferences(std::move(gate)) {}

 protected:
  Result<bool> DoLayoutCreateViewport() const override {
    return create_viewport_;
  }
  Status DoSetLayoutCreateViewport(bool create) override {
    create_viewport_ = create;
    return Status();
  }
  Result<int32_t> DoSaveAsType() const override { return save_type_; }
  Status DoSetSaveAsType(int32_t save_type) override {
    Result<std::string> release = ReleaseOfSaveType(save_type);
    if (!release.ok()) return release.status();
    save_type_ = save_type;
    return Status();
  }

 private:
  bool create_viewport_ = true;
  int32_t save_type_ = 65;
};

class DxfDocuments : public host::Documents {
 public:
  explicit DxfDocuments(std::shared_ptr<DxfApplication> app)
      : host::Documents(app->shared_gate()), app_(std::move(app)) {}

 protected:
  Result<int32_t> DoCount() const override {
    return static_cast<int32_t>(app_->documents().size());
  }
  Result<host::DocumentPtr> DoItemAt(int32_t index) const override {
    const auto& docs = app_->documents();
    if (index < 0 || static_cast<size_t>(index) >= docs.size()) {
      return Status::NotFound("index " + std::to_string(index) +
                              " is out of range");
    }
    return docs[index];
  }
  Result<std::vector<host::DocumentPtr>> DoItems() const override {
    return app_->documents();
  }
  Result<host::DocumentPtr> DoOpen(std::string_view path) override {
    return app_->OpenDocument(path);
  }

 private:
  std::shared_ptr<DxfApplication> app_;
};

}  // namespace

std::shared_ptr<DxfApplication> DxfApplication::Create(host::HostKind kind,
                                                       host::User* user) {
  return std::shared_ptr<DxfApplication>(
      new DxfApplication(std::make_shared<host::CallGate>(), kind, user));
}

DxfApplication::DxfApplication(std::shared_ptr<host::CallGate> gate,
                               host::HostKind kind, host::User* user)
    : host::Application(gate), kind_(kind), user_(user) {
  preferences_ = std::make_shared<DxfPreferences>(std::move(gate));
}

DxfApplication::~DxfApplication() = default;

Result<host::DocumentPtr> DxfApplication::OpenDocument(std::string_view path) {
  Result<std::shared_ptr<Drawing>> d =
      ReadDrawing(std::string(path), shared_gate(), user_, kind_, recover_);
  if (!d.ok()) return d.status();
  std::weak_ptr<DxfApplication> self = weak_from_this();
  host::DocumentPtr doc = MakeDocument(*d, self, [self](const Drawing* closed) {
    if (auto app = self.lock()) app->Forget(closed);
  });
  documents_.push_back(doc);
  return doc;
}

void DxfApplication::Forget(const void* drawing) {
  std::erase_if(documents_, [drawing](const host::DocumentPtr& doc) {
    return DrawingOf(*doc) == drawing;
  });
}

Result<std::string> DxfApplication::DoVersion() const {
  switch (kind_) {
    case host::HostKind::kAutoCad:
      return std::string("24.0s (LMS Tech)");
    case host::HostKind::kNanoCad:
      return std::string("23.0.6360.6019");
    case host::HostKind::kZwCad:
      return std::string("2023.0.1");
    case host::HostKind::kBricsCad:
      return std::string("23.2.06");
    case host::HostKind::kGstarCad:
      return std::string("2023");
    case host::HostKind::kProgeCad:
      return std::string("22.0");
    case host::HostKind::kIntelliCad:
      return std::string("11.1");
  }
  return std::string("1.0");
}

Status DxfApplication::DoSetVisible(bool visible) {
  visible_ = visible;
  return Status();
}

Result<std::string> DxfApplication::DoCaption() const {
  std::string caption(host::HostKindName(kind_));
  if (!documents_.empty()) {
    Result<std::string> name = documents_.back()->Name();
    if (name.ok()) caption += " - [" + *name + "]";
  }
  return caption;
}

Result<host::DocumentPtr> DxfApplication::DoActiveDocument() const {
  if (documents_.empty()) return Status::NotFound("no drawing is open");
  return documents_.back();
}

Result<host::DocumentsPtr> DxfApplication::DoDocuments() const {
  auto self = std::const_pointer_cast<DxfApplication>(shared_from_this());
  return host::DocumentsPtr(std::make_shared<DxfDocuments>(self));
}

Result<host::PreferencesPtr> DxfApplication::DoPreferences() const {
  return preferences_;
}

Result<host::DbxDocumentPtr> DxfApplication::DoGetInterfaceObject(
    std::string_view prog_id) {
  constexpr std::string_view kDbx = "ObjectDBX.AxDbDocument";
  std::string upper(prog_id), want(kDbx);
  if (!prog_id.starts_with(kDbx) &&
      !dxf::EqualsNoCase(
          prog_id.substr(0, std::min(prog_id.size(), kDbx.size())), kDbx)) {
    return Status::NotSupported("GetInterfaceObject: \"" +
                                std::string(prog_id) +
                                "\" is not served by the embedded host");
  }
  return MakeDbxDocument(shared_gate(), kind_);
}

Status DxfApplication::DoZoomExtents() {
  // Nothing to show: the embedded host has no screen.
  if (documents_.empty()) return Status::NotFound("no drawing is open");
  return Status();
}

}  // namespace lmt::dxfhost
