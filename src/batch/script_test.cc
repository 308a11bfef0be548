#include "batch/script.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "batch/import_commands.h"
#include "batch/lisp_commands.h"
#include "testing/temp_dir.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

TEST(ScriptExpressionTest, BuildsOneCommandCall) {
  struct Case {
    const char* text;
    const char* expression;
  };
  const Case cases[] = {
      {"_Layout\r\n_Set\r\nLayout1",
       "(command \"_Layout\"\"_Set\"\"Layout1\")\r"},
      {"_Line\r\n0,0\r\n10,10\r\n",
       "(command \"_Line\"\"0,0\"\"10,10\"\"\")\r"},
      {"\"A B\"\r\nx", "(command \"A B\"\"x\")\r"},  // quotes removed
      {"_Open\r\nC:\\x\\plan.dwg",
       "(command \"_Open\"\"C:\\\\x\\\\plan.dwg\")\r"},
      {"", "(command )\r"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ScriptExpression(c.text), c.expression) << c.text;
  }
  EXPECT_EQ(ScriptExpression(kSampleScript),
            "(command \"_Layout\"\"_Set\"\"Layout1\")\r");
}

TEST(ScriptExpressionTest, SendsOnlyWhenThereAreArguments) {
  EXPECT_FALSE(ScriptSendsCommand(ScriptArguments("")));
  EXPECT_FALSE(ScriptSendsCommand(" "));
  EXPECT_TRUE(ScriptSendsCommand(ScriptArguments("\r\n")));  // Enter
}

TEST(ScriptLoadingTest, BlanksBecomeLinesOutsideQuotes) {
  struct Case {
    const char* text;
    const char* lines;
  };
  const Case cases[] = {
      {"A B", "A\r\nB"},
      {"\"A B\"", "\"A B\""},
      {"-layer \"my layer\" x", "-layer\r\n\"my layer\"\r\nx"},
      {"\"a b\" c \"d e", "\"a b\"\r\nc\r\n\"d\r\ne"},  // unpaired quote
      {"a\nb\rc", "a\r\nb\r\nc"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(BlanksToLineBreaks(c.text), c.lines) << c.text;
  }
  // Tokenised and then run: the quoted token stays one argument.
  EXPECT_EQ(ScriptArguments(BlanksToLineBreaks("\"A B\" C")), "\"A B\"\"C\"");
}

TEST(ScriptLoadingTest, DecodesByByteOrderMarkElseUtf8ElseCp1251) {
  EXPECT_EQ(DecodeTextFile(std::string("\xFF\xFE"
                                       "A\0\x3F\x04",
                                       6)),
            "Aп");
  EXPECT_EQ(DecodeTextFile(std::string("\xFF\xFE"
                                       "=\xD8\0\xDE",
                                       6)),
            "\xF0\x9F\x98\x80");  // a surrogate pair
  EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF"
                           "abc"),
            "abc");
  EXPECT_EQ(DecodeTextFile("план"), "план");
  EXPECT_EQ(DecodeTextFile("\xEF\xE8\xB8"), "пиё");  // Windows-1251
}

TEST(ScriptLoadingTest, LoadsAFileAndReportsAMissingOne) {
  lmt::testing::TempDir temp;
  fs::path path = temp / "script.scr";
  {
    std::ofstream out(path, std::ios::binary);
    out << "\xFF\xFE";
    for (char c : std::string("_Zoom _E")) out << c << '\0';
  }
  Result<std::string> text = LoadScriptFile(path);
  fs::remove(path);
  ASSERT_TRUE(text.ok());
  EXPECT_EQ(*text, "_Zoom\r\n_E");
  EXPECT_EQ(LoadScriptFile(path).status().code(), StatusCode::kNotFound);
}

TEST(LispCommandsTest, LoadAndStartTexts) {
  EXPECT_EQ(LispLoadCommand("C:\\lisp\\a.lsp"),
            "(command (load\"C:\\\\lisp\\\\a.lsp\")\r)\r");
  EXPECT_EQ(LispStartCommand("RENUM"), "RENUM\r");
}

TEST(LispCommandsTest, ProposesTheFirstDefinedCommand) {
  struct Case {
    const char* text;
    const char* proposal;  // nullptr: none
  };
  const Case cases[] = {
      {"(defun c:Renum () (princ))", "Renum"},
      {"(defun helper (x) x)\n(DEFUN C:ONE()\n)(defun c:two ()", "ONE"},
      {"(  defun   c:spaced\t()", "spaced"},
      {"(defun-q c:no ()) (defun cx:no ())", nullptr},
      {"(defun c:", nullptr},
      {"", nullptr},
  };
  for (const Case& c : cases) {
    std::optional<std::string> got = ProposeStartCommand(c.text);
    if (c.proposal == nullptr) {
      EXPECT_FALSE(got.has_value()) << c.text;
    } else {
      EXPECT_EQ(got.value_or("<none>"), c.proposal) << c.text;
    }
  }
}

TEST(LispCommandsTest, ChecksFileBeforeStartCommand) {
  EXPECT_EQ(CheckLispRun(false, "").message(), "Lisp file not found.");
  EXPECT_EQ(CheckLispRun(true, "").message(), "Enter lisp start command");
  EXPECT_TRUE(CheckLispRun(true, "RENUM").ok());
}

TEST(ImportCommandsTest, PdfVariablesFromTheWindow) {
  PdfImportOptions options;
  options.import_kinds = {true, false, true, false};
  options.layers = 2;
  options.modes = {true, false, false, true, true};
  std::vector<SystemVariable> vars = PdfImportVariables(options);
  ASSERT_EQ(vars.size(), 3u);
  EXPECT_EQ(vars[0].name, "PDFIMPORTFILTER");
  EXPECT_EQ(vars[0].value, 2 | 8);  // text and raster excluded
  EXPECT_EQ(vars[1].name, "PDFIMPORTLAYERS");
  EXPECT_EQ(vars[1].value, 2);
  EXPECT_EQ(vars[2].name, "PDFIMPORTMODE");
  EXPECT_EQ(vars[2].value, 1 | 8 | 16);
}

TEST(ImportCommandsTest, CommandTexts) {
  EXPECT_EQ(PdfImportCommand("D:\\in\\a.pdf", 2, 420, 0, "0,5", "90"),
            "(command \"_.-PDFIMPORT\" \"_F\" \"D:\\\\in\\\\a.pdf\" \"2\" "
            "\"420,0\" \"0.5\" \"90\")\r");
  EXPECT_EQ(ImportCommand("D:\\in\\a.sat"),
            "(command \"_Import\" \"D:\\\\in\\\\a.sat\")\r");
  EXPECT_EQ(ImportFileFilter("PDF", ".pdf"), "PDF Files (*.pdf)|*.pdf");
}

}  // namespace
}  // namespace lmt::batch
