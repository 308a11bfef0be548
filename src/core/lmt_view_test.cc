#include "core/lmt_view.h"

#include <gtest/gtest.h>

#include "core/core_test_env.h"
#include "core/file_util.h"
#include "core/private_profile.h"

namespace lmt::core {
namespace {

class LmtViewTest : public ::testing::Test {
 protected:
  testing::TempDir dir_;
  TestInstallation install_;
};

TEST_F(LmtViewTest, ProtocolWithoutLanguageFile) {
  LmtView view(install_.env());
  EXPECT_TRUE(view.LmtStartDLL());
  EXPECT_EQ(view.LmtGetProg(), "Лайомат");
  EXPECT_EQ(view.LmtPutFileINIform(),
            PathToUtf8(install_.settings_folder() / "FormViewport.ini"));
  EXPECT_FALSE(FileExists(install_.settings_folder() / "FormViewport.ini"));
  EXPECT_TRUE(HasUtf16Bom(install_.settings_file()));
  EXPECT_TRUE(view.LmtStartProg());
  EXPECT_TRUE(view.addin().globals().started);
  EXPECT_TRUE(view.addin().windows().okno_lmt.visible());
  EXPECT_TRUE(install_.sink().shown.empty());
}

TEST_F(LmtViewTest, LanguageFileMakesAnInternationalInstallation) {
  ASSERT_TRUE(CreateUnicodeFile(install_.addin_folder() / "Lang.ini").ok());
  LmtView view(install_.env());
  view.LmtStartDLL();
  EXPECT_EQ(view.LmtGetProg(), "Layomat");
  EXPECT_EQ(view.addin().globals().language_mode, "Multi");
}

TEST_F(LmtViewTest, ParentBeforeStartGivesAHiddenMainWindow) {
  LmtView view(install_.env());
  view.LmtStartDLL();
  const std::int32_t handle = view.LmtParent();
  EXPECT_NE(handle, 0);
  const Window& main = view.addin().windows().okno_lmt;
  EXPECT_TRUE(main.loaded());
  EXPECT_FALSE(main.visible());
  view.LmtResize(6000, 4000);
  view.LmtStartProg();
  EXPECT_EQ(view.LmtParent(), handle);  // the same window, shown now
  EXPECT_TRUE(main.visible());
}

TEST_F(LmtViewTest, ExitActsOnlyOnCanonicalTrue) {
  LmtView view(install_.env());
  view.LmtStartDLL();
  view.LmtStartProg();
  view.addin().windows().okno_lmt.text_stroka_name_file.set_text("10/20");
  const std::string empty_file =
      ReadFileBytes(install_.settings_file()).value();
  for (std::int16_t not_true : {kVariantFalse, std::int16_t{1}}) {
    EXPECT_TRUE(view.LmtExit(not_true));
    EXPECT_EQ(ReadFileBytes(install_.settings_file()).value(), empty_file);
    EXPECT_TRUE(view.addin().windows().okno_lmt.loaded());
    EXPECT_FALSE(view.addin().globals().exiting);
  }
  EXPECT_TRUE(view.LmtExit(kVariantTrue));
  EXPECT_TRUE(view.addin().globals().exiting);
  EXPECT_FALSE(view.addin().windows().okno_lmt.loaded());
  EXPECT_FALSE(view.addin().windows().okno_filter.loaded());
  EXPECT_EQ(GetProfileString(install_.settings_file(), "OknoLmt",
                             "TextStrokaNameFile", ""),
            ":;:10/20:;:");
}

TEST_F(LmtViewTest, FunctionCommandsAcceptsAnythingAndDoesNothing) {
  LmtView view(install_.env());
  EXPECT_TRUE(view.FunctionCommands(""));
  EXPECT_TRUE(view.FunctionCommands("_Anything"));
  EXPECT_FALSE(view.addin().windows().okno_lmt.loaded());
}

TEST_F(LmtViewTest, StartAppliesSavedSettingsAndLocale) {
  TestInstallation comma_locale(/*decimal_comma=*/true);
  std::filesystem::create_directories(comma_locale.settings_folder());
  ASSERT_TRUE(WriteProfileString(comma_locale.settings_file(), "VersiaCAD",
                                 "VersiaCAD", ":;:3:;:")
                  .ok());
  LmtView view(comma_locale.env());
  view.LmtStartDLL();
  view.LmtStartProg();
  const OknoLmt& main = view.addin().windows().okno_lmt;
  EXPECT_EQ(main.combo_versia_cad.selected(), 3);
  EXPECT_FALSE(main.combo_nomer_autocad.enabled());
  EXPECT_TRUE(view.addin().globals().decimal_comma);
}

TEST_F(LmtViewTest, UnusableSettingsFolderShowsErrorAndStartGoesOn) {
  // The settings home is a file, so the folder cannot be made.
  ASSERT_TRUE(WriteFileAtomically(install_.dir() / "home", "x").ok());
  LmtView view(install_.env());
  EXPECT_TRUE(view.LmtStartDLL());
  EXPECT_EQ(install_.sink().shown,
            std::vector<std::string>{"Лайомат: Error159753"});
  EXPECT_TRUE(view.LmtStartProg());
  EXPECT_TRUE(view.LmtExit(kVariantTrue));
}

TEST_F(LmtViewTest, StartupRoutinesRunAfterTheLanguage) {
  ASSERT_TRUE(CreateUnicodeFile(install_.addin_folder() / "Lang.ini").ok());
  LmtView view(install_.env());
  std::vector<std::string> seen;
  view.addin().AddStartupRoutine([&](AddIn& addin) {
    seen.push_back(addin.windows().okno_lmt.caption("mnuComand"));
  });
  view.addin().AddSearchStateReset([&](AddIn&) { seen.push_back("reset"); });
  view.LmtStartDLL();
  view.LmtStartProg();
  EXPECT_EQ(seen, (std::vector<std::string>{"Commands", "reset"}));
}

}  // namespace
}  // namespace lmt::core
