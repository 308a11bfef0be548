// The Start buttons through a session: the window's controls become the
// run (group modes, prefix and suffix, scope, save options), and a host
// whose connection made no ObjectDBX document is asked for one.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "batch/paths.h"
#include "batch/replace_run.h"
#include "batch/run_script.h"
#include "core/globals.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "host/session.h"
#include "testing/dxf_check.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

class SessionRunTest : public ::testing::TestWithParam<host::HostKind> {
 protected:
  SessionRunTest()
      : app_(dxfhost::DxfApplication::Create(GetParam(), &user_)),
        session_(globals_, windows_, user_, runtime_),
        ui_(user_, globals_.messages, "Layomat", "title") {
    user_.AllowUnusedAnswers();
    windows_.okno_lmt.combo_versia_cad.Select(static_cast<int>(GetParam()));
    runtime_.SetRunning(std::string(host::HostProgramId(GetParam())), app_);
    fs::copy_file(fs::path(LMT_TESTDATA_DIR) / "batch" / "attributes.dxf",
                  dir_ / "open.dxf");
    fs::copy_file(fs::path(LMT_TESTDATA_DIR) / "batch" / "attributes.dxf",
                  dir_ / "a.dxf");
    LMT_CHECK((*app_->Documents())->Open(PathToUtf8(dir_ / "open.dxf")).ok());
  }

  std::string Values(const fs::path& file) {
    fs::path out = dir_ / "values.txt";
    std::string command = testing::PythonCommand() +
                          "'" LMT_TESTDATA_DIR "/batch/read_values.py' '" +
                          file.string() + "' > '" + out.string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ifstream in(out);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  testing::TempDir dir_;
  testing::ScriptedUser user_;
  std::shared_ptr<dxfhost::DxfApplication> app_;
  core::Globals globals_;
  core::Windows windows_;
  testing::FakeRuntime runtime_;
  host::Session session_;
  BatchUi ui_;
};

TEST_P(SessionRunTest, ReplaceAttributesReadsTheWindow) {
  LMT_SKIP_WITHOUT_EZDXF();
  core::OknoFunctionReplaceAtribut& w = windows_.okno_function_replace_atribut;
  w.files = {{"a.dxf", PathToUtf8(dir_ / "a.dxf")}, {"", "ignored.dxf"}};
  w.option_name_layouts.Select(2);  // layouts only
  w.atribut1.uni_text_name_atribut.set_text("name");
  w.atribut1.option_value_atribut.Select(1);
  w.atribut1.uni_text_zam_sh_to_atribut.set_text("LAYOUT");
  w.atribut1.uni_text_zam_na_atribut.set_text("Tab");
  w.atribut1.check_prefix_atribut.set_checked(true);
  w.atribut1.uni_text_prefix_atribut.set_text("<");
  w.atribut2.check_atribut.set_checked(true);
  w.atribut2.uni_text_name_atribut.set_text("DATE");
  w.atribut2.option_value_atribut.Select(0);
  w.atribut2.uni_text_value_atribut.set_text("2024");
  w.option_save_kuda.Select(1);
  fs::create_directory(dir_ / "to");
  w.uni_text_put_save_kuda.set_text(PathToUtf8(dir_ / "to"));
  w.combo_save_as_dwg_or_dxf.Select(2);

  BatchReport report = ReplaceAttributes(session_, ui_);
  ASSERT_TRUE(report.started);
  EXPECT_EQ(report.processed, 1);
  std::string values = Values(dir_ / "to" / "a.dxf");
  EXPECT_NE(values.find("attrib Sheet A|TITLE|NAME=<Tab A1\n"),
            std::string::npos)
      << values;
  EXPECT_NE(values.find("attrib Sheet B|TITLE|DATE=2024\n"), std::string::npos);
  EXPECT_NE(values.find("attrib Model|TITLE|NAME=Aa plan\n"),
            std::string::npos);
  EXPECT_NE(values.find("audit 0\n"), std::string::npos);
}

TEST_P(SessionRunTest, RunScriptClosesTheOpenDrawingsFirst) {
  core::OknoFunctionRunScript& w = windows_.okno_function_run_script;
  w.files = {{"a.dxf", PathToUtf8(dir_ / "a.dxf")}};
  BatchReport report = RunScript(session_, ui_);
  EXPECT_EQ(report.processed, 1);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_TRUE(fs::exists(dir_ / "a(1).dxf"));
  EXPECT_TRUE(app_->documents().empty());
}

INSTANTIATE_TEST_SUITE_P(Hosts, SessionRunTest,
                         ::testing::Values(host::HostKind::kAutoCad,
                                           host::HostKind::kNanoCad));

}  // namespace
}  // namespace lmt::batch
