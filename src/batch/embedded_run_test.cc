// Run Script, Run Lisp and Import on the embedded host over real DXF files:
// the commands it knows run and the drawing is saved; any other command is
// refused, that file is left unsaved and counted as failed; Lisp and import
// need a CAD program, and the run says so.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "batch/paths.h"
#include "batch/run_import.h"
#include "batch/run_lisp.h"
#include "batch/run_script.h"
#include "batch/script.h"
#include "core/messages.h"
#include "dxfhost/application.h"
#include "testing/dxf_check.h"
#include "testing/scripted_user.h"
#include "testing/temp_dir.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

class EmbeddedRunTest : public ::testing::Test {
 protected:
  EmbeddedRunTest()
      : app_(dxfhost::DxfApplication::Create(host::HostKind::kAutoCad, &user_)),
        ui_(user_, messages_, "Layomat", "Run script in many files") {
    user_.AllowUnusedAnswers();
  }

  FileEntry Copy(std::string name) {
    fs::copy_file(fs::path(LMT_TESTDATA_DIR) / "batch" / "attributes.dxf",
                  dir_ / name);
    return {name, PathToUtf8(dir_ / name)};
  }

  testing::TempDir dir_;
  testing::ScriptedUser user_;
  core::MessageTable messages_;
  std::shared_ptr<dxfhost::DxfApplication> app_;
  BatchUi ui_;
};

TEST_F(EmbeddedRunTest, KnownCommandsRunAndOthersLeaveTheFileUnsaved) {
  RunScriptSettings good;
  good.script_text = "_Layout\r\n_Set\r\nSheet B";
  good.files = {Copy("a.dxf")};
  good.save_version = 0;  // the embedded host's default is a DXF type
  BatchReport done = RunScriptFiles(*app_, ui_, good);
  EXPECT_TRUE(done.failures.empty());
  ASSERT_EQ(done.written,
            std::vector<std::string>{PathToUtf8(dir_ / "a(1).dxf")});
  // The source was written by ezdxf and carries its own structural count.
  EXPECT_EQ(testing::DxfProblems(
                done.written[0],
                testing::RunDxfCheck(PathToUtf8(dir_ / "a.dxf")).structural),
            "");

  RunScriptSettings bad = good;
  bad.script_text = "_ERASE\r\n_ALL\r\n";
  bad.files = {Copy("b.dxf"), Copy("c.dxf")};
  BatchReport refused = RunScriptFiles(*app_, ui_, bad);
  EXPECT_EQ(refused.processed, 2);
  ASSERT_EQ(refused.failures.size(), 2u);
  EXPECT_NE(refused.failures[0].status.message().find("ERASE"),
            std::string::npos);
  EXPECT_TRUE(refused.written.empty());
  EXPECT_FALSE(fs::exists(dir_ / "b(1).dxf"));
  EXPECT_EQ(app_->documents().size(), 0u);  // every drawing was closed
}

TEST_F(EmbeddedRunTest, LispAndImportSayTheyNeedACadProgram) {
  fs::path lisp = dir_ / "a.lsp";
  std::ofstream(lisp) << "(defun c:GO () (princ))";
  RunLispSettings lisp_run;
  lisp_run.lisp_file = PathToUtf8(lisp);
  lisp_run.start_command = "GO";
  lisp_run.files = {Copy("a.dxf"), Copy("b.dxf")};
  BatchReport report = RunLispFiles(*app_, ui_, lisp_run);
  EXPECT_EQ(report.failures.size(), 1u);
  EXPECT_TRUE(report.written.empty());

  ImportSettings import;
  import.format = ".DXF";
  import.files = {Copy("c.dxf")};
  report = RunImportFiles(*app_, ui_, import, PathToUtf8(dir_ / "a.dxf"));
  EXPECT_EQ(report.failures.size(), 1u);
  EXPECT_TRUE(report.written.empty());

  std::vector<std::string> texts = user_.message_texts();
  ASSERT_EQ(texts.size(), 4u);  // each refusal, then its count
  EXPECT_NE(texts[0].find("runs Lisp"), std::string::npos);
  EXPECT_NE(texts[2].find("imports .DXF files"), std::string::npos);
}

}  // namespace
}  // namespace lmt::batch
