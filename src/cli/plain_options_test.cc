#include "cli/plain_options.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "cli/cli_app.h"
#include "core/file_util.h"
#include "core/ini_unicode.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

// Runs `layomat settings` in-process, so that a test sees every control as
// a command would after the settings file, the plain options and --set.
class PlainOptionsTest : public ::testing::Test {
 protected:
  PlainOptionsTest() {
    std::filesystem::create_directories(dir_ / "bin");
    env_.program_folder = dir_ / "bin";
    env_.get_env = [](std::string_view) { return std::nullopt; };
    env_.format_number = [](double) { return std::string("0.2"); };
    // Start from choices no option makes, so that every write shows.
    std::string block_search = "True";
    std::string sort = "True";
    std::string mode = "True";
    core::WriteIniUnicode(settings_, "OknoLmt", "OptionBlockPoisk2",
                          block_search)
        .IgnoreError();
    core::WriteIniUnicode(settings_, "OknoLmt", "OptionSortirovkaSpisok3", sort)
        .IgnoreError();
    core::WriteIniUnicode(settings_, "OknoSozdatLayout", "OptionSelectMashtab1",
                          mode)
        .IgnoreError();
  }
  int Run(std::vector<std::string> args) {
    out_.str("");
    err_.str("");
    args.insert(args.begin(), {"settings", "--settings", settings_.string()});
    return RunLayomat(args, out_, err_, env_);
  }

  testing::TempDir dir_;
  std::filesystem::path settings_ = dir_ / "s.ini";
  CliEnvironment env_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(PlainOptionsTest, EachOptionSetsItsControls) {
  struct Case {
    std::vector<std::string> args;
    std::vector<std::string> lines;  // "Window.Key=word" printed afterwards
  };
  const std::vector<Case> cases = {
      {{"--scale", "2:75"},
       {"OknoSozdatLayout.OptionSelectMashtab0=True",
        "OknoSozdatLayout.TextMashtabBumaga=2",
        "OknoSozdatLayout.TextMashtabModel=75"}},
      {{"--scale=1:20,5"}, {"OknoSozdatLayout.TextMashtabModel=20,5"}},
      {{"--scale", "from-width", "--paper-length", "594"},
       {"OknoSozdatLayout.OptionSelectMashtab1=True",
        "OknoSozdatLayout.TextAutoMashtabRamka=594"}},
      {{"--layer", "Vp"}, {"OknoSozdatLayout.TextNameSloiViewport=Vp"}},
      {{"--names", "Sheet-", "--numbering", "10/20"},
       {"OknoLmt.UniTextLeyoutName0=Sheet-",
        "OknoLmt.TextStrokaNameFile=10/20"}},
      {{"--pattern-layout", "Pattern"},
       {"OknoLmt.OptionVidSozdatLayout1=True",
        "OknoLmt.UniTextNameObrazecLayout=Pattern"}},
      {{"--template-file", "t.dxf", "A4"},
       {"OknoLmt.OptionVidSozdatLayout2=True",
        "OknoLmt.UniTextNameObrazecPutFileLayout=t.dxf",
        "OknoLmt.UniTextNameObrazecLayout=A4"}},
      {{"--order", "columns"}, {"OknoLmt.OptionSortirovkaSpisok0=True"}},
      {{"--order", "Rows"}, {"OknoLmt.OptionSortirovkaSpisok2=True"}},
      {{"--order", "start", "--start", "1,2"},
       {"OknoLmt.OptionSortirovkaSpisok4=True"}},
      {{"--order", "polyline"}, {"OknoLmt.OptionSortirovkaSpisok6=True"}},
      {{"--by-inner-polyline"}, {"OknoLmt.OptionBlockPoisk0=True"}},
      {{"--by-size"}, {"OknoLmt.OptionBlockPoisk1=True"}},
      {{"--by-size-unrotated"}, {"OknoLmt.OptionBlockPoisk2=True"}},
      {{"--text", "Sheet ##1 scale ##4", "--text-at", "300,-20.5",
        "--text-height", "2,5"},
       {"OknoDeistvie.CheckSozdatText=1",
        "OknoDeistvie.TextTextStroka=Sheet ##1 scale ##4",
        "OknoDeistvie.TextTextCoordX=300", "OknoDeistvie.TextTextCoordY=-20.5",
        "OknoDeistvie.TextTextVisota=2,5"}},
      {{"--attribute-block", "Stamp", "--attribute", "A=1", "--attribute",
        "B=", "--attribute", "C=x=y"},
       {"OknoDeistvie.TextNameBlock=Stamp",
        "OknoDeistvie.CheckIzmenitAtribut=1", "OknoDeistvie.TextImiaAtribut1=A",
        "OknoDeistvie.TextValueAtribut1=1", "OknoDeistvie.TextImiaAtribut2=B",
        "OknoDeistvie.TextValueAtribut2=", "OknoDeistvie.TextImiaAtribut3=C",
        "OknoDeistvie.TextValueAtribut3=x=y"}},
      // A drawing file by its extension or a folder; anything else names a
      // block of the drawing.
      {{"--insert", "stamps/Stamp.DXF", "--insert-at", "400,-5",
        "--insert-scale", "0,5", "--insert-rotation", "-90", "--insert-layer",
        "STAMP"},
       {"OknoLmt.CheckVstavitObject=1",
        "OknoVstavitObject.OptionIstochnikVstavki1=True",
        "OknoVstavitObject.UniTextPutFileVstavki=stamps/Stamp.DXF",
        "OknoVstavitObject.TextVstavkaCoordX=400",
        "OknoVstavitObject.TextVstavkaCoordY=-5",
        "OknoVstavitObject.TextVstavkaMashtab=0,5",
        "OknoVstavitObject.TextVstavkaPovorot=-90",
        "OknoVstavitObject.TextVstavkaSloi=STAMP"}},
      {{"--insert", "TitleBlock.v2"},
       {"OknoLmt.CheckVstavitObject=1",
        "OknoVstavitObject.OptionIstochnikVstavki0=True",
        "OknoVstavitObject.UniTextNameBlockVstavki=TitleBlock.v2"}},
      {{"--plotter", "DWG To PDF.pc3", "--paper", "auto", "--paper-tolerance",
        "2,5", "--plot-style", "acad.ctb"},
       {"OknoLmt.CheckIzmenitPrinter=1",
        "OknoIzmenitPrinter.TextNamePrinter=DWG To PDF.pc3",
        "OknoIzmenitPrinter.OptionVidBumaga0=True",
        "OknoIzmenitPrinter.TextDopuskBumaga=2,5",
        "OknoIzmenitPrinter.TextStilPechati=acad.ctb"}},
      {{"--paper", "ISO_A1_(841.00_x_594.00_MM)"},
       {"OknoIzmenitPrinter.OptionVidBumaga1=True",
        "OknoIzmenitPrinter.TextNameBumaga=ISO_A1_(841.00_x_594.00_MM)"}},
  };
  std::set<std::string> covered;
  for (const Case& c : cases) {
    ASSERT_EQ(Run(c.args), kExitOk) << c.args[0] << ": " << err_.str();
    const std::string printed = "\n" + out_.str();
    for (const std::string& line : c.lines) {
      EXPECT_NE(printed.find("\n" + line + "\n"), std::string::npos)
          << c.args[0] << " should give " << line;
    }
    for (const std::string& arg : c.args) {
      covered.insert(arg.substr(0, arg.find('=')));
    }
  }
  for (const PlainOption& option : PlainOptions()) {
    EXPECT_TRUE(covered.count(std::string(option.name)))
        << option.name << " has no case here";
  }
}

TEST_F(PlainOptionsTest, ContradictionsAreUsageErrors) {
  struct Case {
    std::vector<std::string> args;
    std::string first, second;  // both named in the message
  };
  const std::vector<Case> contradictions = {
      {{"--scale", "1:100", "--set", "OknoSozdatLayout.TextMashtabModel=50"},
       "--scale 1:100",
       "--set OknoSozdatLayout.TextMashtabModel=50"},
      {{"--set", "OknoSozdatLayout.OptionSelectMashtab1=True", "--scale",
        "1:100"},
       "--scale 1:100",
       "OptionSelectMashtab1=True"},
      {{"--order", "rows", "--set", "OknoLmt.OptionSortirovkaSpisok2=False"},
       "--order rows",
       "OptionSortirovkaSpisok2=False"},
      {{"--text", "A", "--set", "OknoDeistvie.CheckSozdatText=0"},
       "--text A",
       "CheckSozdatText=0"},
      {{"--by-size", "--by-inner-polyline"},
       "--by-inner-polyline",
       "--by-size"},
      {{"--layer", "A", "--layer", "B"}, "--layer B", "--layer A"},
      {{"--pattern-layout", "P", "--template-file", "f.dxf", "P"},
       "--template-file f.dxf P",
       "--pattern-layout P"},
  };
  for (const Case& c : contradictions) {
    EXPECT_EQ(Run(c.args), kExitUsage) << c.first;
    EXPECT_NE(err_.str().find(c.first), std::string::npos) << err_.str();
    EXPECT_NE(err_.str().find(c.second), std::string::npos) << err_.str();
    EXPECT_EQ(out_.str(), "") << "the command must not run";
  }
  // The same value in other words, or a button the option does not select
  // cleared, is no contradiction.
  const std::vector<std::vector<std::string>> agreements = {
      {"--scale", "1:100", "--set", "OknoSozdatLayout.TextMashtabModel=100"},
      {"--scale", "1:100", "--set", "OknoSozdatLayout.OptionSelectMashtab1=0"},
      {"--order", "rows", "--set", "OknoLmt.OptionSortirovkaSpisok2=true"},
      {"--text", "A", "--set", "OknoDeistvie.CheckSozdatText=1"},
      {"--layer", "A", "--layer", "A"},
  };
  for (const auto& args : agreements) {
    EXPECT_EQ(Run(args), kExitOk)
        << args[0] << " " << args[1] << ": " << err_.str();
  }
}

TEST(PlainOptionsParseTest, BadValuesNameTheOption) {
  const std::vector<std::vector<std::string>> bad = {
      {"--scale", "1:0"},
      {"--scale", "100"},
      {"--scale", "-1:100"},
      {"--paper-length", "0"},
      {"--text-at", "3"},
      {"--text-at", "1,5,2"},
      {"--text-height", "0"},
      {"--numbering", "10-20"},
      {"--order", "diagonal"},
      {"--attribute", "=v"},
      {"--attribute", "A=1", "--attribute", "B=2", "--attribute", "C=3",
       "--attribute", "D=4"},
      {"--layer", ""},
      {"--template-file", "only.dxf"},
      {"--by-size=1"},
      {"--insert", ""},
      {"--insert-scale", "-2"},
      {"--insert-rotation", "quarter"},
  };
  for (const auto& args : bad) {
    Result<CliOptions> o = ParseCommandLine(args);
    ASSERT_FALSE(o.ok()) << args[0] << " " << args.back();
    const std::string name = args[0].substr(0, args[0].find('='));
    EXPECT_NE(o.status().message().find(name), std::string::npos)
        << o.status().message();
  }
}

TEST_F(PlainOptionsTest, HelpTableIsTheReadmeTable) {
  const std::string table = PlainOptionsMarkdown();
  out_.str("");
  ASSERT_EQ(RunLayomat({"help", "options"}, out_, err_, env_), kExitOk);
  EXPECT_NE(out_.str().find(table), std::string::npos);
  Result<std::string> readme =
      core::ReadFileBytes(LMT_TESTDATA_DIR "/../README.md");
  ASSERT_TRUE(readme.ok());
  EXPECT_NE(readme->find(table), std::string::npos)
      << "README.md must carry the table 'layomat help options' prints:\n"
      << table;
}

}  // namespace
}  // namespace lmt::cli
