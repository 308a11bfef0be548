// The embedded CAD host: an Application over the DXF engine that plays one of
// the host kinds, so that each kind's own path of the add-in runs on it. The
// kind fixes Version, Caption and the ObjectDBX identifiers it answers:
//
//   AutoCAD    "24.0s (LMS Tech)"       (release year 2020)
//   nanoCAD    "23.0.6360.6019"         (version 23.0)
//   ZWCAD      "2023.0.1"               BricsCAD "23.2.06"
//   GstarCAD   "2023"                   progeCAD "22.0"    IntelliCAD "11.1"
//
// Documents opens DXF files (any release the engine reads); the last one
// opened is the active document. Picks, points and distances go to the
// host::User given at construction (nullptr: every pick is cancelled).
// Usage:
//   std::shared_ptr<DxfApplication> app =
//       DxfApplication::Create(host::HostKind::kAutoCad, &user);
//   Result<host::DocumentPtr> doc = (*app->Documents())->Open("plan.dxf");
#ifndef LMT_DXFHOST_APPLICATION_H_
#define LMT_DXFHOST_APPLICATION_H_

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/application.h"
#include "host/document.h"
#include "host/host_kind.h"
#include "host/user.h"

namespace lmt::dxf {
class Document;
}

namespace lmt::dxfhost {

class DxfApplication : public host::Application,
                       public std::enable_shared_from_this<DxfApplication> {
 public:
  // `user` must outlive the application.
  static std::shared_ptr<DxfApplication> Create(host::HostKind kind,
                                                host::User* user);
  ~DxfApplication() override;

  host::HostKind kind() const { return kind_; }
  // Drawings opened from now on are recovered, as a CAD program's recover
  // command reads them.
  void set_recover(bool recover) { recover_ = recover; }

  // Draws the layout named `layout` of `doc` into the new file `path` for
  // Plot.PlotToFile (`device` as the caller named it). The engine draws
  // nothing itself: a front end with a renderer sets one, and without it a
  // drawing has no plot interface (Document.Plot is not supported).
  using Plotter =
      std::function<Status(dxf::Document& doc, std::string_view layout,
                           const std::string& path, std::string_view device)>;
  void set_plotter(Plotter plotter) { plotter_ = std::move(plotter); }
  const Plotter& plotter() const { return plotter_; }

  // For Documents: open and bookkeeping.
  Result<host::DocumentPtr> OpenDocument(std::string_view path);
  const std::vector<host::DocumentPtr>& documents() const { return documents_; }
  void Forget(const void* drawing);

 protected:
  Result<std::string> DoVersion() const override;
  Result<bool> DoVisible() const override { return visible_; }
  Status DoSetVisible(bool visible) override;
  Result<std::string> DoCaption() const override;
  Result<host::DocumentPtr> DoActiveDocument() const override;
  Result<host::DocumentsPtr> DoDocuments() const override;
  Result<host::PreferencesPtr> DoPreferences() const override;
  Result<host::DbxDocumentPtr> DoGetInterfaceObject(
      std::string_view prog_id) override;
  Status DoZoomExtents() override;

 private:
  DxfApplication(std::shared_ptr<host::CallGate> gate, host::HostKind kind,
                 host::User* user);

  host::HostKind kind_;
  host::User* user_;
  bool recover_ = false;
  Plotter plotter_;
  bool visible_ = true;
  std::vector<host::DocumentPtr> documents_;  // opening order, last active
  host::PreferencesPtr preferences_;
};

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_APPLICATION_H_
