// The host loop of Run Script, Run Lisp and Import on a recording host: what
// reaches the host in which order, the interrupt polls, the shared
// close-retry budget, and the refusals of a host without Lisp or import.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "batch/batch_messages.h"
#include "batch/lisp_commands.h"
#include "batch/paths.h"
#include "batch/run_import.h"
#include "batch/run_lisp.h"
#include "batch/run_script.h"
#include "batch/script.h"
#include "core/messages.h"
#include "host/object_model.h"
#include "testing/failing_host.h"
#include "testing/scripted_user.h"
#include "testing/temp_dir.h"

namespace lmt::batch {
namespace {

// A CAD program that opens any path, records what each drawing receives
// ("open P", "set NAME=V", "send TEXT", "saveas P TYPE", "close"), and
// refuses to close the first `failing_closes` times it is asked. Like the
// programs, it refuses a system variable value that is neither a 16-bit
// integer nor a text: every variable the runs set is one of the two.
struct Recorder {
  std::vector<std::string> log;
  int failing_closes = 0;
  bool refuse_send = false;
};

class RecDocument : public host::Document {
 public:
  RecDocument(std::shared_ptr<host::CallGate> gate, Recorder& rec,
              std::vector<host::DocumentPtr>& open)
      : host::Document(std::move(gate)), rec_(rec), open_(open) {}

 protected:
  Result<host::Variant> DoGetVariable(std::string_view name) const override {
    if (name == "DRAWORDERCTL") return host::Variant(int16_t{3});
    return Status::NotFound(std::string(name));
  }
  Status DoSetVariable(std::string_view name,
                       const host::Variant& value) override {
    if (!std::holds_alternative<int16_t>(value) &&
        !std::holds_alternative<std::string>(value)) {
      return Status::InvalidArgument("type mismatch setting " +
                                     std::string(name));
    }
    rec_.log.push_back("set " + std::string(name) + "=" +
                       host::ToText(value).value_or("?"));
    return Status();
  }
  Status DoSendCommand(std::string_view text) override {
    if (rec_.refuse_send) return Status::NotSupported("no such command");
    rec_.log.push_back("send " + std::string(text));
    return Status();
  }
  Status DoSaveAs(std::string_view path, int32_t type) override {
    rec_.log.push_back("saveas " + std::string(path) + " " +
                       std::to_string(type));
    return Status();
  }
  Status DoClose(bool) override {
    rec_.log.push_back("close");
    if (rec_.failing_closes > 0) {
      --rec_.failing_closes;
      return Status::Refused("busy");
    }
    std::erase_if(
        open_, [this](const host::DocumentPtr& d) { return d.get() == this; });
    return Status();
  }

 private:
  Recorder& rec_;
  std::vector<host::DocumentPtr>& open_;
};

class RecApplication;

class RecDocuments : public host::Documents {
 public:
  RecDocuments(std::shared_ptr<host::CallGate> gate, Recorder& rec,
               std::vector<host::DocumentPtr>& open)
      : host::Documents(std::move(gate)), rec_(rec), open_(open) {}

 protected:
  Result<int32_t> DoCount() const override {
    return static_cast<int32_t>(open_.size());
  }
  Result<std::vector<host::DocumentPtr>> DoItems() const override {
    return open_;
  }
  Result<host::DocumentPtr> DoOpen(std::string_view path) override {
    rec_.log.push_back("open " + std::string(path));
    if (path.find("missing") != std::string_view::npos) {
      return Status::NotFound("no such file");
    }
    open_.push_back(std::make_shared<RecDocument>(shared_gate(), rec_, open_));
    return open_.back();
  }

 private:
  Recorder& rec_;
  std::vector<host::DocumentPtr>& open_;
};

class RecPreferences : public host::Preferences {
 public:
  explicit RecPreferences(std::shared_ptr<host::CallGate> gate)
      : host::Preferences(std::move(gate)) {}

 protected:
  Result<int32_t> DoSaveAsType() const override { return 36; }
};

class RecApplication : public host::Application {
 public:
  explicit RecApplication(Recorder& rec)
      : host::Application(std::make_shared<host::CallGate>()), rec_(rec) {}
  std::vector<host::DocumentPtr> open;

 protected:
  Result<host::DocumentPtr> DoActiveDocument() const override {
    if (open.empty()) return Status::NotFound("no drawing");
    return open.back();
  }
  Result<host::DocumentsPtr> DoDocuments() const override {
    auto* self = const_cast<RecApplication*>(this);
    return host::DocumentsPtr(
        std::make_shared<RecDocuments>(shared_gate(), rec_, self->open));
  }
  Result<host::PreferencesPtr> DoPreferences() const override {
    return host::PreferencesPtr(
        std::make_shared<RecPreferences>(shared_gate()));
  }

 private:
  Recorder& rec_;
};

class HostBatchTest : public ::testing::Test {
 protected:
  HostBatchTest()
      : ui_(user_, messages_, "Layomat", "Run script in many files") {
    user_.AllowUnusedAnswers();
  }

  RunScriptSettings Script(std::string text, int files) {
    RunScriptSettings s;
    s.script_text = std::move(text);
    s.save = true;
    s.save_version = 0;
    for (int i = 1; i <= files; ++i) {
      std::string name = "plan" + std::to_string(i) + ".dwg";
      s.files.push_back({name, PathToUtf8(dir_ / name)});
    }
    return s;
  }
  std::vector<std::string> Sends() const {
    std::vector<std::string> out;
    for (const std::string& e : rec_.log) {
      if (e.starts_with("send ")) out.push_back(e.substr(5));
    }
    return out;
  }
  int Count(std::string_view prefix) const {
    int n = 0;
    for (const std::string& e : rec_.log) n += e.starts_with(prefix);
    return n;
  }

  testing::TempDir dir_;
  Recorder rec_;
  RecApplication app_{rec_};
  testing::ScriptedUser user_;
  core::MessageTable messages_;
  BatchUi ui_;
};

TEST_F(HostBatchTest, SampleScriptIsOneCommandCallPerDrawing) {
  BatchReport report =
      RunScriptFiles(app_, ui_, Script(std::string(kSampleScript), 2));
  EXPECT_EQ(report.processed, 2);
  EXPECT_TRUE(report.failures.empty());
  const std::string expected = "(command \"_Layout\"\"_Set\"\"Layout1\")\r";
  EXPECT_EQ(Sends(), (std::vector<std::string>{expected, expected}));
  // Host default 36 is a DWG type: saved beside the source as plan1 + .dwg.
  std::vector<std::string> file1(rec_.log.begin(), rec_.log.begin() + 7);
  EXPECT_EQ(file1,
            (std::vector<std::string>{
                "open " + PathToUtf8(dir_ / "plan1.dwg"), "set PEDITACCEPT=1",
                "set DRAWORDERCTL=0", "send " + expected, "set DRAWORDERCTL=3",
                "saveas " + PathToUtf8(dir_ / "plan1") + " 36", "close"}));
  EXPECT_EQ(report.written.back(), PathToUtf8(dir_ / "plan2.dwg"));
  EXPECT_EQ(user_.message_texts(), std::vector<std::string>{"2"});
  EXPECT_EQ(user_.messages().back().title, "Run script in many files");
}

TEST_F(HostBatchTest, QuotedTokensAndBackslashesReachTheHost) {
  std::ofstream(dir_ / "s.scr") << "_-INSERT \"C:\\blocks\\a b.dwg\" 0,0\n";
  Result<std::string> text = LoadScriptFile(dir_ / "s.scr");
  ASSERT_TRUE(text.ok());
  RunScriptFiles(app_, ui_, Script(*text, 1));
  EXPECT_EQ(Sends(), std::vector<std::string>{
                         "(command \"_-INSERT\"\"C:\\\\blocks\\\\a b.dwg\""
                         "\"0,0\"\"\")\r"});
}

TEST_F(HostBatchTest, EmptyScriptStillOpensSavesAndCloses) {
  RunScriptFiles(app_, ui_, Script("", 1));
  EXPECT_TRUE(Sends().empty());
  EXPECT_EQ(Count("saveas"), 1);
  EXPECT_EQ(Count("close"), 1);
}

TEST_F(HostBatchTest, InterruptFinishesTheFileAtHandThenShowsMessageFive) {
  // Stop pressed while file 2 opens: it is run, saved and closed, but not
  // counted, and file 3 is never opened.
  testing::FailingHost stop(app_);
  stop.InterruptAt("Documents.Open", 2, user_);
  BatchReport report = RunScriptFiles(app_, ui_, Script("_Line", 3));
  EXPECT_TRUE(report.interrupted);
  EXPECT_EQ(report.processed, 1);
  EXPECT_EQ(Count("open"), 2);
  EXPECT_EQ(Count("close"), 2);
  EXPECT_EQ(
      user_.message_texts(),
      (std::vector<std::string>{messages_.Get(core::kMsgInterrupted), "1"}));
  EXPECT_FALSE(user_.interrupted());
  EXPECT_FALSE(ui_.running);
}

TEST_F(HostBatchTest, CloseRetryBudgetIsSharedByTheWholeRun) {
  rec_.failing_closes = 1000;  // the host never lets go
  BatchReport report = RunScriptFiles(app_, ui_, Script("_Line", 2));
  EXPECT_EQ(report.processed, 2);
  // File 1 spends the budget of 100 closes; file 2 gets one attempt; the
  // drawing is saved once however often its close is retried.
  EXPECT_EQ(Count("close"), 101);
  EXPECT_EQ(Count("saveas"), 2);
  EXPECT_EQ(user_.total_wait().count(), (2 + 101) * 1000);
}

TEST_F(HostBatchTest, OpenFailureCountsAndSendsNothing) {
  RunScriptSettings s = Script("_Line", 2);
  s.files[0] = {"missing.dwg", PathToUtf8(dir_ / "missing.dwg")};
  BatchReport report = RunScriptFiles(app_, ui_, s);
  EXPECT_EQ(report.processed, 2);
  ASSERT_EQ(report.failures.size(), 1u);
  EXPECT_EQ(report.failures[0].path, PathToUtf8(dir_ / "missing.dwg"));
  EXPECT_EQ(Sends().size(), 1u);
}

TEST_F(HostBatchTest, RefusedCommandLeavesFileUnsavedAndFailed) {
  rec_.refuse_send = true;
  BatchReport report = RunScriptFiles(app_, ui_, Script("_Line", 2));
  EXPECT_EQ(report.processed, 2);
  EXPECT_EQ(report.failures.size(), 2u);
  EXPECT_EQ(Count("saveas"), 0);
  EXPECT_EQ(Count("close"), 2);
}

// A host that will not set a system variable still runs the script on
// every file; each refusal is named, under its file, in the run's report.
TEST_F(HostBatchTest, RefusedVariablesAreSkippedAndReported) {
  testing::FailingHost refuse(app_);
  refuse.Refuse("Document.SetVariable", 1, 2);  // file 1's DRAWORDERCTL, both
  BatchReport report = RunScriptFiles(app_, ui_, Script("_Line", 2));
  EXPECT_EQ(report.processed, 2);
  EXPECT_TRUE(report.failures.empty());
  EXPECT_EQ(Count("saveas"), 2);
  ASSERT_EQ(report.skips.skips().size(), 2u);
  EXPECT_EQ(report.skips.skips()[0].object, PathToUtf8(dir_ / "plan1.dwg"));
  EXPECT_EQ(report.skips.Count("set DRAWORDERCTL"), 2);
  EXPECT_EQ(Count("set "), 4);  // file 1's PEDITACCEPT, file 2's three
}

TEST_F(HostBatchTest, LispRefusalsBeforeTheRun) {
  RunLispSettings s;
  s.lisp_file = PathToUtf8(dir_ / "none.lsp");
  s.start_command = "GO";
  EXPECT_FALSE(RunLispFiles(app_, ui_, s).started);
  std::ofstream(dir_ / "a.lsp") << "(defun c:GO () (princ))";
  s.lisp_file = PathToUtf8(dir_ / "a.lsp");
  s.start_command = "";
  EXPECT_FALSE(RunLispFiles(app_, ui_, s).started);
  EXPECT_EQ(user_.message_texts(),
            (std::vector<std::string>{std::string(kLispFileNotFound),
                                      std::string(kEnterLispStartCommand)}));
  EXPECT_TRUE(rec_.log.empty());
}

TEST_F(HostBatchTest, LispLoadsStartsAndStopsBeforeClosing) {
  std::ofstream(dir_ / "a.lsp") << "(defun c:GO () (princ))";
  RunLispSettings s;
  s.lisp_file = PathToUtf8(dir_ / "a.lsp");
  s.start_command = "GO";
  s.stop_before_close = true;
  s.save = false;
  s.files = Script("", 1).files;
  BatchReport report = RunLispFiles(app_, ui_, s);
  EXPECT_EQ(report.processed, 1);
  EXPECT_EQ(Sends(),
            (std::vector<std::string>{LispLoadCommand(s.lisp_file), "GO\r"}));
  EXPECT_EQ(user_.message_texts(),
            (std::vector<std::string>{
                messages_.Get(core::kMsgStopBeforeClosing), "1"}));
  EXPECT_EQ(rec_.log.back(), "close");
}

TEST_F(HostBatchTest, HostWithoutLispEndsTheRunSayingSo) {
  std::ofstream(dir_ / "a.lsp") << "(defun c:GO () (princ))";
  rec_.refuse_send = true;
  RunLispSettings s;
  s.lisp_file = PathToUtf8(dir_ / "a.lsp");
  s.start_command = "GO";
  s.files = Script("", 3).files;
  BatchReport report = RunLispFiles(app_, ui_, s);
  EXPECT_EQ(report.processed, 1);
  EXPECT_EQ(report.failures.size(), 1u);
  EXPECT_EQ(Count("saveas"), 0);
  ASSERT_EQ(user_.messages().size(), 2u);
  EXPECT_NE(user_.messages()[0].text.find("needs a CAD program that runs Lisp"),
            std::string::npos);
  EXPECT_EQ(user_.messages()[0].icon, host::MessageIcon::kCritical);
}

TEST_F(HostBatchTest, PdfPagesAreImportedOneByOneIntoTheTemplate) {
  std::ofstream(dir_ / "doc.pdf")
      << "%PDF-1.4 1 0 obj <</Type /Pages /Count 2>> 2 0 obj <</Type /Page>> "
         "3 0 obj <</Type/Page>>";
  ImportSettings s;
  s.files = {{"doc.pdf", PathToUtf8(dir_ / "doc.pdf")}};
  s.format = ".PDF";
  s.save_version = 0;
  BatchReport report =
      RunImportFiles(app_, ui_, s, PathToUtf8(dir_ / "template.dwg"));
  EXPECT_EQ(report.processed, 1);
  EXPECT_TRUE(report.skips.empty()) << report.skips.skips()[0].status.message();
  EXPECT_EQ(Count("set PDFIMPORT"), 4);
  EXPECT_EQ(rec_.log.front(), "open " + PathToUtf8(dir_ / "template.dwg"));
  std::vector<std::string> sends = Sends();
  ASSERT_EQ(sends.size(), 2u);
  EXPECT_EQ(sends[0], PdfImportCommand(s.files[0].path, 1, 0, 0, "1", "0"));
  EXPECT_EQ(report.written,
            std::vector<std::string>{PathToUtf8(dir_ / "doc.dwg")});
}

TEST_F(HostBatchTest, ImportKeepsTheTemplateOpenWhenACopyFailsToOpen) {
  ImportSettings s;
  s.files = {{"x.dxf", PathToUtf8(dir_ / "x.dxf")}};
  s.format = ".DXF";
  ASSERT_TRUE((*app_.Documents())->Open("template.dwg").ok());
  BatchReport report = RunImportFiles(app_, ui_, s, "missing.dwg");
  EXPECT_EQ(report.failures.size(), 1u);
  EXPECT_EQ(Count("close"), 0);
  EXPECT_EQ(app_.open.size(), 1u);
}

TEST(CountPdfPagesTest, CountsPageObjectsNotThePageTree) {
  EXPECT_EQ(CountPdfPages("<</Type /Pages>> <</Type /Page>>"), 1);
  EXPECT_EQ(CountPdfPages("<</Type/Page>> <</Type\n/Page /X>>"), 2);
  EXPECT_EQ(CountPdfPages("garbage"), 1);
}

}  // namespace
}  // namespace lmt::batch
