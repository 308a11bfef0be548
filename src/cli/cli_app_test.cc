#include "cli/cli_app.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/registry.h"
#include "core/file_util.h"
#include "core/ini_unicode.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

// A command that records what the models held when it ran.
struct Seen {
  std::string scale_model;
  std::string layer;
  int host_kind = -1;
  std::string product;
  std::string first_message;
} seen;

int RunProbe(CommandContext& context) {
  core::Windows& w = context.addin.windows();
  seen.scale_model = w.okno_sozdat_layout.text_mashtab_model.text();
  seen.host_kind = w.okno_lmt.combo_versia_cad.selected();
  seen.product = context.addin.globals().product_name;
  w.okno_filter.combo_sloy_linii.set_text("captured");
  context.ReapplyFilterSets();
  seen.layer = w.okno_filter.combo_sloy_linii.text();
  context.addin.ShowMessage(core::kMsgNoObjects, core::MessageIcon::kCritical);
  return context.options.yes ? kExitOk : kExitRefused;
}

const CommandRegistration kProbe({"probe-for-tests", "layomat probe-for-tests",
                                  "test only", &RunProbe});

class CliAppTest : public ::testing::Test {
 protected:
  CliAppTest() {
    std::filesystem::create_directories(dir_ / "bin");
    env_.program_folder = dir_ / "bin";
    const std::filesystem::path home = dir_ / "home";
    env_.get_env = [home](std::string_view name) -> std::optional<std::string> {
      if (name == "XDG_CONFIG_HOME" || name == "APPDATA") return home.string();
      return std::nullopt;
    };
    env_.format_number = [](double) { return std::string("0,2"); };
    seen = Seen{};
  }
  int Run(std::vector<std::string> args) {
    out_.str("");
    err_.str("");
    return RunLayomat(args, out_, err_, env_);
  }

  testing::TempDir dir_;
  CliEnvironment env_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(CliAppTest, SettingsFileThenSetsInOrder) {
  const auto file = dir_ / "s.ini";
  std::string value = "250";
  ASSERT_TRUE(
      core::WriteIniUnicode(file, "OknoSozdatLayout", "TextMashtabModel", value)
          .ok());
  EXPECT_EQ(Run({"probe-for-tests", "--settings", file.string(), "--set",
                 "VersiaCAD.VersiaCAD=4", "--set",
                 "OknoFilter.ComboSloyLinii=Frames", "--yes"}),
            kExitOk);
  EXPECT_EQ(seen.scale_model, "250");
  EXPECT_EQ(seen.host_kind, 4);
  EXPECT_EQ(seen.layer, "Frames");  // wins over the capture
  EXPECT_EQ(seen.product, "Лайомат");
  EXPECT_EQ(err_.str(), "Лайомат: Нет объектов для обработки !\n");
  EXPECT_FALSE(core::FolderExists(dir_ / "home" / "Layomat"));  // no writes
}

TEST_F(CliAppTest, UsersSettingsFileIsReadWhenPresent) {
  std::filesystem::create_directories(dir_ / "home" / "Layomat");
  std::string value = "7";
  ASSERT_TRUE(
      core::WriteIniUnicode(dir_ / "home" / "Layomat" / "LayomatNas.ini",
                            "OknoSozdatLayout", "TextMashtabModel", value)
          .ok());
  const std::string before =
      core::ReadFileBytes(dir_ / "home" / "Layomat" / "LayomatNas.ini").value();
  EXPECT_EQ(Run({"probe-for-tests"}), kExitRefused);
  EXPECT_EQ(seen.scale_model, "7");
  EXPECT_EQ(
      core::ReadFileBytes(dir_ / "home" / "Layomat" / "LayomatNas.ini").value(),
      before);
}

TEST_F(CliAppTest, LanguageFileBesideTheProgramOrGiven) {
  ASSERT_TRUE(core::CreateUnicodeFile(dir_ / "bin" / "Lang.ini").ok());
  Run({"probe-for-tests"});
  EXPECT_EQ(seen.product, "Layomat");
  EXPECT_EQ(err_.str(), "Layomat: There are no objects to process!\n");
  std::filesystem::remove(dir_ / "bin" / "Lang.ini");

  std::string text = "Keine Objekte";
  ASSERT_TRUE(
      core::WriteIniUnicode(dir_ / "de.ini", "MSG", "MSG0009", text).ok());
  Run({"probe-for-tests", "--lang", (dir_ / "de.ini").string()});
  EXPECT_EQ(err_.str(), "Layomat: Keine Objekte\n");
}

TEST_F(CliAppTest, LanguageWordsChooseTheBuiltInTexts) {
  Run({"probe-for-tests", "--lang", "en"});
  EXPECT_EQ(err_.str(), "Layomat: There are no objects to process!\n");
  // A Lang.ini beside the program makes an international installation;
  // "ru" still asks for the Russian texts, whatever case it is typed in.
  ASSERT_TRUE(core::CreateUnicodeFile(dir_ / "bin" / "Lang.ini").ok());
  Run({"probe-for-tests", "--lang", "RU"});
  EXPECT_EQ(seen.product, "Лайомат");
  EXPECT_EQ(err_.str().rfind("Лайомат: ", 0), 0u) << err_.str();
  EXPECT_EQ(err_.str().find("objects"), std::string::npos) << err_.str();
}

TEST_F(CliAppTest, SetErrorsNameTheCulprit) {
  struct Case {
    const char* set;
    const char* message;
  } cases[] = {
      {"Nowhere.Key=1", "unknown section Nowhere"},
      {"OknoLmt.TextNope=1", "unknown key TextNope in section OknoLmt"},
      {"OknoFunctionReplaceAtribut.Option_ValueAtribut10=True",
       "unknown key Option_ValueAtribut10"},
      {"OknoLmt.OptionSortPoint1=perhaps", "not a boolean"},
      {"OknoSozdatLayout.CheckCopyViewport=5", "0 or 1"},
      {"VersiaCAD.VersiaCAD=six", "not a whole number"},
      {"VersiaCAD.VersiaCAD=7", "index 7 outside 0..6"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Run({"probe-for-tests", "--set", c.set}), kExitUsage) << c.set;
    EXPECT_NE(err_.str().find(c.message), std::string::npos) << err_.str();
    EXPECT_EQ(seen.host_kind, -1) << "the command must not run";
  }
}

TEST_F(CliAppTest, ReachesControlsTheFileDoesNotStore) {
  EXPECT_EQ(Run({"settings", "OknoFunctionReplaceAtribut", "--set",
                 "OknoFunctionReplaceAtribut.ComboSaveAsDWGorDXF=2"}),
            kExitOk);
  EXPECT_NE(out_.str().find("OknoFunctionReplaceAtribut.ComboSaveAsDWGorDXF=2"),
            std::string::npos);
  EXPECT_EQ(out_.str().find("OknoLmt."), std::string::npos);
}

TEST_F(CliAppTest, CommandLineMistakesAndFiles) {
  EXPECT_EQ(Run({}), kExitUsage);
  EXPECT_EQ(Run({"no-such-command"}), kExitUsage);
  EXPECT_EQ(Run({"--bogus"}), kExitUsage);
  EXPECT_EQ(Run({"probe-for-tests", "--settings", "/no/such.ini"}),
            kExitFileError);
  EXPECT_NE(err_.str().find("/no/such.ini"), std::string::npos);
  EXPECT_EQ(Run({"probe-for-tests", "--lang", "/no/lang.ini"}), kExitFileError);
  EXPECT_EQ(Run({"--help"}), kExitOk);
  EXPECT_NE(out_.str().find("layomat settings"), std::string::npos);
  EXPECT_EQ(Run({"--version"}), kExitOk);
  EXPECT_EQ(out_.str(), "layomat 1.9.2\n");
}

}  // namespace
}  // namespace lmt::cli
