// EmbeddedRun: a session of the add-in connected to the embedded DXF host
// playing one host kind, with one drawing open as the active document. For
// the tests of the subsystems that run their routines on real drawings; the
// including test program links the embedded host (lmt_dxfhost).
#ifndef LMT_TESTING_EMBEDDED_RUN_H_
#define LMT_TESTING_EMBEDDED_RUN_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/globals.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "host/host_kind.h"
#include "host/object_model.h"
#include "host/releases.h"
#include "host/session.h"
#include "host/variant.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"

namespace lmt::testing {

class EmbeddedRun {
 public:
  explicit EmbeddedRun(const std::string& path,
                       host::HostKind kind = host::HostKind::kAutoCad)
      : app_(dxfhost::DxfApplication::Create(kind, &user)),
        session(globals, windows, user, runtime) {
    windows.okno_lmt.combo_versia_cad.Select(static_cast<int>(kind));
    runtime.SetRunning(std::string(host::HostProgramId(kind)), app_);
    Result<host::DocumentsPtr> documents = app_->Documents();
    EXPECT_TRUE(documents.ok());
    if (!documents.ok()) return;
    Result<host::DocumentPtr> opened = (*documents)->Open(path);
    EXPECT_TRUE(opened.ok()) << opened.status().ToString();
    if (opened.ok()) document = *opened;
  }

  host::Application& application() { return *app_; }

  // Saves the drawing as `path` in the release it was read in: the DXF save
  // type of its $ACADVER (a fixed type would convert it).
  void SaveAs(const std::string& path) {
    Result<host::Variant> acadver = document->GetVariable("ACADVER");
    ASSERT_TRUE(acadver.ok()) << acadver.status().ToString();
    Result<std::string> release = host::ToText(*acadver);
    ASSERT_TRUE(release.ok()) << release.status().ToString();
    const host::Release* known = host::FindReleaseByAcadver(*release);
    ASSERT_NE(known, nullptr) << *release;
    Status saved = document->SaveAs(path, known->dxf_save_type);
    ASSERT_TRUE(saved.ok()) << saved.ToString();
  }

  core::Globals globals;
  core::Windows windows;
  ScriptedUser user;
  FakeRuntime runtime;

 private:
  std::shared_ptr<dxfhost::DxfApplication> app_;

 public:
  host::Session session;
  host::DocumentPtr document;
};

}  // namespace lmt::testing

#endif  // LMT_TESTING_EMBEDDED_RUN_H_
