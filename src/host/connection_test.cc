#include "host/connection.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/messages.h"
#include "host/application.h"
#include "testing/failing_host.h"
#include "testing/fake_application.h"
#include "testing/fake_runtime.h"
#include "testing/scripted_user.h"

namespace lmt::host {
namespace {

using ::lmt::testing::FailingHost;
using ::lmt::testing::FakeApplication;
using ::lmt::testing::FakeDocument;
using ::lmt::testing::FakeRuntime;
using ::lmt::testing::ScriptedUser;

const std::string kStartQuestion =
    "CAD программа не открыта !\n\nОткрыть CAD программу ?";

class ConnectHostTest : public ::testing::Test {
 protected:
  // A running program of `version` with one open drawing, under `prog_id`.
  std::shared_ptr<FakeApplication> Run(const std::string& prog_id,
                                       const std::string& version) {
    auto app = FakeApplication::Make(version);
    app->OpenDocument("Drawing1.dwg");
    runtime_.SetRunning(prog_id, app);
    return app;
  }

  void Connect(int kind, std::string release = "Auto",
               std::array<bool, 4> flags = {}) {
    ConnectHost({kind, std::move(release), flags}, runtime_, user_, messages_,
                state_);
  }

  FakeRuntime runtime_;
  ScriptedUser user_;
  core::MessageTable messages_;
  ConnectionState state_;
};

TEST_F(ConnectHostTest, ConnectsToRunningAutoCad) {
  auto app = Run("AutoCAD.Application", "24.0s (LMS Tech)");

  Connect(0);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.application, app);
  EXPECT_EQ(state_.host_name, "AutoCAD");
  ASSERT_NE(state_.active_document, nullptr);
  EXPECT_EQ(state_.active_document->Name().value(), "Drawing1.dwg");
  EXPECT_EQ(state_.host_year, 2020);
  ASSERT_NE(state_.dbx_document, nullptr);
  EXPECT_EQ(app->interface_requests(),
            std::vector<std::string>{"ObjectDBX.AxDbDocument.24"});
  EXPECT_TRUE(user_.messages().empty());
}

TEST_F(ConnectHostTest, IntelliCadReachesProgeCadIdentifier) {
  auto app = Run("Icad.Application", "10.1");

  Connect(6);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.application, app);
  EXPECT_EQ(state_.host_name, "IntelliCAD");
  EXPECT_EQ(state_.host_year, kNewestYear);
  EXPECT_EQ(state_.dbx_document, nullptr);
  EXPECT_TRUE(app->interface_requests().empty());
}

TEST_F(ConnectHostTest, ZwCadFallsBackToZwCadPlus) {
  auto app = Run("ZWcad+.Application", "2.0");

  Connect(2);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.application, app);
  EXPECT_EQ(state_.host_name, "ZWCAD+");
  EXPECT_EQ(runtime_.calls(),
            (std::vector<std::string>{"GetObject ZWCAD.Application",
                                      "GetObject ZWcad+.Application"}));
}

TEST_F(ConnectHostTest, PlainZwCadKeepsItsName) {
  Run("ZWCAD.Application", "2020");

  Connect(2);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.host_name, "ZWCAD");
  EXPECT_EQ(runtime_.calls(),
            std::vector<std::string>{"GetObject ZWCAD.Application"});
}

TEST_F(ConnectHostTest, ReleaseTextLooksOnlyForThatRelease) {
  // Release 18.2 runs and is also the generic registration; "13" asks for
  // release 19 alone, so nothing is found and starting uses the generic id.
  Run("AutoCAD.Application.18.2", "18.2s (LMS Tech)");
  auto running = Run("AutoCAD.Application", "18.2s (LMS Tech)");
  auto started = FakeApplication::Make("19.0s (LMS Tech)");
  started->OpenDocument("Drawing1.dwg");
  runtime_.SetCreatable("AutoCAD.Application", started);
  user_.QueueAnswer(Answer::kYes);

  Connect(0, "13");

  EXPECT_EQ(runtime_.calls(),
            (std::vector<std::string>{"GetObject AutoCAD.Application.19",
                                      "CreateObject AutoCAD.Application"}));
  ASSERT_EQ(user_.messages().size(), 1u);
  EXPECT_EQ(user_.messages()[0],
            (Message{kStartQuestion, MessageIcon::kQuestion,
                     MessageButtons::kYesNo, ""}));
  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.application, started);
  EXPECT_TRUE(started->visible());
  EXPECT_EQ(state_.host_year, 2013);
}

TEST_F(ConnectHostTest, ReleaseTextFindsItsRunningRelease) {
  auto app = Run("AutoCAD.Application.19", "19.0s (LMS Tech)");

  Connect(0, "13");

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.application, app);
  EXPECT_EQ(runtime_.calls(),
            std::vector<std::string>{"GetObject AutoCAD.Application.19"});
}

TEST_F(ConnectHostTest, AnsweringNoEndsWithNoDrawingMessage) {
  user_.QueueAnswer(Answer::kNo);

  Connect(3);

  EXPECT_FALSE(state_.connected);
  EXPECT_EQ(state_.application, nullptr);
  EXPECT_EQ(
      user_.message_texts(),
      (std::vector<std::string>{
          kStartQuestion, "Нет отрытого чертежа ! Остановка программы."}));
  EXPECT_EQ(user_.messages()[1].icon, MessageIcon::kCritical);
  EXPECT_EQ(runtime_.calls(),
            std::vector<std::string>{"GetObject BricscadApp.AcadApplication"});
}

TEST_F(ConnectHostTest, StartFailureShowsCannotConnect) {
  user_.QueueAnswer(Answer::kYes);

  Connect(4);

  EXPECT_FALSE(state_.connected);
  EXPECT_EQ(user_.message_texts(),
            (std::vector<std::string>{
                kStartQuestion,
                "Невозможно открыть и подключиться к CAD программе !"}));
  EXPECT_EQ(user_.messages()[1].icon, MessageIcon::kCritical);
}

TEST_F(ConnectHostTest, StartedProgramThatCannotBeShownShowsCannotConnect) {
  auto started = FakeApplication::Make("23.0");
  started->set_can_show(false);
  runtime_.SetCreatable("nanoCAD.Application", started);
  user_.QueueAnswer(Answer::kYes);

  Connect(1);

  EXPECT_FALSE(state_.connected);
  EXPECT_EQ(user_.message_texts().back(),
            "Невозможно открыть и подключиться к CAD программе !");
}

TEST_F(ConnectHostTest, StartingZwCadFallsBackToZwCadPlus) {
  auto started = FakeApplication::Make("2.0");
  started->OpenDocument("Drawing1.dwg");
  runtime_.SetCreatable("ZWcad+.Application", started);
  user_.QueueAnswer(Answer::kYes);

  Connect(2);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.host_name, "ZWCAD+");
}

TEST_F(ConnectHostTest, NoOpenDrawingShowsMessageFour) {
  auto app = Run("GCAD.Application", "2023");
  app->CloseDocuments();

  Connect(4);

  EXPECT_FALSE(state_.connected);
  EXPECT_EQ(state_.active_document, nullptr);
  EXPECT_EQ(
      user_.message_texts(),
      std::vector<std::string>{"Нет отрытого чертежа ! Остановка программы."});
}

TEST_F(ConnectHostTest, RefusedActiveDocumentCountsAsNoDrawing) {
  auto app = Run("AutoCAD.Application", "24.0");
  FailingHost failing(*app);
  failing.Refuse("Application.ActiveDocument");

  Connect(0);

  EXPECT_FALSE(state_.connected);
  EXPECT_EQ(user_.message_texts().size(), 1u);
  EXPECT_EQ(failing.CallCount("Application.ActiveDocument"), 1);
}

TEST_F(ConnectHostTest, SearchFlagKeepsTheActiveDocument) {
  auto app = Run("AutoCAD.Application", "24.0");
  auto searched = app->OpenDocument("Searched.dwg");
  Connect(0);
  ASSERT_EQ(state_.active_document, searched);
  app->OpenDocument("Other.dwg");
  FailingHost counting(*app);

  Connect(0, "Auto", {false, false, true, false});

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.active_document, searched);
  EXPECT_EQ(counting.CallCount("Application.ActiveDocument"), 0);
}

TEST_F(ConnectHostTest, IndexOutsideListFindsNothingAndAsksNothing) {
  Connect(-1);

  EXPECT_FALSE(state_.connected);
  EXPECT_TRUE(runtime_.calls().empty());
  EXPECT_EQ(state_.host_name, "");
  EXPECT_EQ(user_.message_texts().size(), 1u);
}

TEST_F(ConnectHostTest, EnglishInstallationAsksInEnglish) {
  messages_.LoadEnglish();
  user_.QueueAnswer(Answer::kNo);

  Connect(5);

  EXPECT_EQ(user_.message_texts()[0],
            "CAD software is not open!\n\nOpen CAD program ?");
}

TEST_F(ConnectHostTest, NanoCadYearComesFromItsVersion) {
  Run("nanoCAD.Application", "23.0.6360.6019");

  Connect(1);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.host_name, "NanoCAD");
  EXPECT_DOUBLE_EQ(state_.host_year, 23.0);
  EXPECT_EQ(state_.dbx_document, nullptr);
}

TEST_F(ConnectHostTest, AutoCadWithoutObjectDbxStillConnects) {
  auto app = Run("AutoCAD.Application", "24.0");
  app->set_dbx_available(false);

  Connect(0);

  EXPECT_TRUE(state_.connected);
  EXPECT_EQ(state_.dbx_document, nullptr);
}

TEST(CreateDbxDocumentTest, IdentifierFollowsMajorRelease) {
  struct Case {
    const char* version;
    const char* expected;
  };
  for (const Case& c : {Case{"24.0s (LMS Tech)", "ObjectDBX.AxDbDocument.24"},
                        Case{"16.2s", "ObjectDBX.AxDbDocument.16"},
                        Case{"15.0s", "ObjectDBX.AxDbDocument"},
                        Case{"9.0", "ObjectDBX.AxDbDocument"}}) {
    auto app = FakeApplication::Make(c.version);
    Result<DbxDocumentPtr> dbx = CreateDbxDocument(*app);
    ASSERT_TRUE(dbx.ok()) << c.version;
    EXPECT_EQ(As<testing::FakeDbxDocument>(*dbx)->prog_id, c.expected)
        << c.version;
  }
}

TEST(CreateDbxDocumentTest, UnreadableVersionAsksForGenericDocument) {
  auto app = FakeApplication::Make("24.0");
  FailingHost failing(*app);
  failing.Refuse("Application.Version");

  ASSERT_TRUE(CreateDbxDocument(*app).ok());
  EXPECT_EQ(app->interface_requests(),
            std::vector<std::string>{"ObjectDBX.AxDbDocument"});
}

class ViewChecksTest : public ::testing::Test {
 protected:
  std::shared_ptr<FakeApplication> app_ = FakeApplication::Make("24.0");
  std::shared_ptr<FakeDocument> doc_ = app_->OpenDocument("Drawing1.dwg");
};

TEST_F(ViewChecksTest, WorldUcsCommandOnlyWhenNeeded) {
  struct Case {
    const char* host_name;
    std::string ucs_name;
    int16_t world;
    bool sends;
  };
  for (const Case& c : {
           Case{"AutoCAD", "", 0, true},
           Case{"autocad", "MYUCS", 0, true},
           Case{"AutoCAD", "", 1, false},
           Case{"AutoCAD", "*TOPVIEW*", 0, false},
           Case{"AutoCAD", "*ВЕРХНЯЯ*", 0, false},
           Case{"BricsCAD", "", 0, false},
           Case{"ZWCAD+", "", 0, false},
       }) {
    auto doc = app_->OpenDocument("d.dwg");
    doc->SetVariableValue("UCSNAME", c.ucs_name);
    doc->SetVariableValue("WORLDUCS", c.world);

    EXPECT_EQ(EnsureWorldUcs(c.host_name, *doc), c.sends)
        << c.host_name << " " << c.ucs_name << " " << c.world;
    EXPECT_EQ(doc->commands(), c.sends
                                   ? std::vector<std::string>{"_UCS\r_World\r"}
                                   : std::vector<std::string>{});
  }
}

TEST_F(ViewChecksTest, UnreadableUcsVariablesCountAsNotWorld) {
  FailingHost failing(*app_);
  failing.Refuse("Document.GetVariable");

  EXPECT_TRUE(EnsureWorldUcs("AutoCAD", *doc_));
  EXPECT_EQ(doc_->commands().size(), 1u);
}

TEST_F(ViewChecksTest, PlanViewResetInModelSpace) {
  doc_->SetVariableValue("VIEWDIR", Point{1, -1, 1});

  EXPECT_TRUE(EnsurePlanView(*doc_));
  EXPECT_EQ(doc_->viewport()->direction, (Point{0, 0, 1}));
  EXPECT_EQ(doc_->viewport_assignments(), 1);
}

TEST_F(ViewChecksTest, PlanViewLeftAloneInPaperSpace) {
  doc_->SetVariableValue("TILEMODE", int16_t{0});
  doc_->SetVariableValue("VIEWDIR", Point{1, -1, 1});
  doc_->viewport()->direction = Point{1, -1, 1};

  EXPECT_FALSE(EnsurePlanView(*doc_));
  EXPECT_EQ(doc_->viewport()->direction, (Point{1, -1, 1}));
  EXPECT_EQ(doc_->viewport_assignments(), 0);
}

TEST_F(ViewChecksTest, PlanViewAlreadyPlanChangesNothing) {
  EXPECT_FALSE(EnsurePlanView(*doc_));
  EXPECT_EQ(doc_->viewport_assignments(), 0);
}

TEST_F(ViewChecksTest, PlanViewStopsWhenDirectionIsRefused) {
  doc_->SetVariableValue("VIEWDIR", Point{0, 0, -1});
  FailingHost failing(*app_);
  failing.Refuse("Viewport.SetDirection");

  EXPECT_FALSE(EnsurePlanView(*doc_));
  EXPECT_EQ(doc_->viewport_assignments(), 0);
}

}  // namespace
}  // namespace lmt::host
