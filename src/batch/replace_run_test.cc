// Replace attributes and Replace text over real DXF files on the embedded
// host: modes, prefix and suffix, scopes, nested definitions, save targets,
// failures and the interrupt. Written files are read back by ezdxf, an
// independent reader, which must also find them audit-clean.
#include "batch/replace_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "batch/paths.h"
#include "core/messages.h"
#include "dxfhost/application.h"
#include "host/connection.h"
#include "testing/dxf_check.h"
#include "testing/failing_host.h"
#include "testing/scripted_user.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

const fs::path kData = fs::path(LMT_TESTDATA_DIR) / "batch";

// The shared checker's findings on `file` beyond those of the test drawing
// `source` it was saved from (ezdxf-made, so it carries a few); "" if none.
std::string NewProblems(const fs::path& file, const char* source) {
  static std::map<std::string, int> allowed;
  if (allowed.count(source) == 0) {
    allowed[source] =
        testing::RunDxfCheck((kData / source).string()).structural;
  }
  return testing::DxfProblems(file.string(), allowed[source]);
}

// ezdxf's reading of a file (testdata/batch/read_values.py), one line each.
std::vector<std::string> EzdxfValues(const fs::path& file) {
  fs::path out = file;
  out += ".values";
  std::string command = testing::PythonCommand() + "'" +
                        (kData / "read_values.py").string() + "' '" +
                        file.string() + "' > '" + out.string() + "' 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  std::ifstream in(out);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

ValueRule NewValue(std::string value) {
  ValueRule rule;
  rule.new_value = std::move(value);
  return rule;
}

ValueRule Replace(std::string search, std::string replacement) {
  ValueRule rule;
  rule.mode = ValueMode::kReplace;
  rule.search = std::move(search);
  rule.replacement = std::move(replacement);
  return rule;
}

ValueRule Keep(std::string prefix, std::string suffix) {
  ValueRule rule;
  rule.mode = ValueMode::kKeep;
  rule.use_prefix = !prefix.empty();
  rule.prefix = std::move(prefix);
  rule.use_suffix = !suffix.empty();
  rule.suffix = std::move(suffix);
  return rule;
}

TextGroup Group(std::string find, ValueMode mode, std::string replacement) {
  TextGroup group;
  group.enabled = true;
  group.find = std::move(find);
  group.mode = mode;
  group.replacement = std::move(replacement);
  return group;
}

bool Has(const std::vector<std::string>& lines, std::string_view line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

class ReplaceRunTest : public ::testing::Test {
 protected:
  ReplaceRunTest()
      : app_(dxfhost::DxfApplication::Create(host::HostKind::kAutoCad, &user_)),
        ui_(user_, messages_, "Layomat", "Replace attributes in many files") {
    Result<host::DbxDocumentPtr> dbx = host::CreateDbxDocument(*app_);
    LMT_CHECK(dbx.ok());
    dbx_ = *dbx;
    user_.AllowUnusedAnswers();
  }

  // Copies a test drawing into the temp folder as `name`.
  FileEntry Copy(std::string_view source, std::string name) {
    fs::copy_file(kData / source, dir_ / name,
                  fs::copy_options::overwrite_existing);
    return {name, PathToUtf8(dir_ / name)};
  }

  static AttributeRun Group1(std::string tag, ValueRule rule) {
    AttributeRun run;
    run.groups[0].enabled = true;
    run.groups[0].tag = std::move(tag);
    run.groups[0].rule = std::move(rule);
    return run;
  }

  // Replaces in attributes.dxf and returns ezdxf's view of the result.
  std::vector<std::string> Attributes(const AttributeRun& run) {
    ReplaceSettings settings;
    settings.files = {Copy("attributes.dxf", "plan.dxf")};
    BatchReport report = ReplaceAttributesFiles(*dbx_, ui_, settings, run);
    EXPECT_TRUE(report.failures.empty());
    EXPECT_EQ(report.written,
              std::vector<std::string>{PathToUtf8(dir_ / "plan(1).dxf")});
    std::vector<std::string> values = EzdxfValues(dir_ / "plan(1).dxf");
    EXPECT_TRUE(Has(values, "audit 0"));
    EXPECT_EQ(NewProblems(dir_ / "plan(1).dxf", "attributes.dxf"), "");
    return values;
  }

  std::vector<std::string> Texts(const TextRun& run) {
    ReplaceSettings settings;
    settings.files = {Copy("texts.dxf", "t.dxf")};
    settings.target.where = SaveWhere::kNewSubfolder;
    settings.target.subfolder = "out";
    BatchReport report = ReplaceTextFiles(*dbx_, ui_, settings, run);
    EXPECT_TRUE(report.failures.empty());
    std::vector<std::string> values = EzdxfValues(dir_ / "out" / "t.dxf");
    EXPECT_TRUE(Has(values, "audit 0"));
    EXPECT_EQ(NewProblems(dir_ / "out" / "t.dxf", "texts.dxf"), "");
    return values;
  }

  testing::TempDir dir_;
  testing::ScriptedUser user_;
  core::MessageTable messages_;
  std::shared_ptr<dxfhost::DxfApplication> app_;
  host::DbxDocumentPtr dbx_;
  BatchUi ui_;
};

struct ModeCase {
  const char* name;
  AttributeRun run;
  std::vector<std::string> expected;
};

TEST_F(ReplaceRunTest, ModesPrefixAndSuffix) {
  LMT_SKIP_WITHOUT_EZDXF();
  ValueRule set_x = NewValue("X");
  ValueRule a_to_b = Replace("a", "b");
  ValueRule wrap = Keep("X-", "-Y");
  AttributeRun two = Group1("SHEET", NewValue("A"));
  two.groups[1].enabled = true;
  two.groups[1].tag = "sheet";
  two.groups[1].rule = Keep("", "1");
  AttributeRun disabled = Group1("SHEET", set_x);
  disabled.groups[0].enabled = false;
  const ModeCase cases[] = {
      {"new value, tag case ignored",
       Group1("sheet", set_x),
       {"attrib Model|TITLE|SHEET=X", "attrib Sheet B|TITLE|SHEET=X",
        "attrib Model|OTHER|SHEET=X", "attrib Model|TITLE|NAME=Aa plan"}},
      {"search and replace ignores case",
       Group1("NAME", a_to_b),
       {"attrib Model|TITLE|NAME=bb plbn", "attrib Model|TITLE|SHEET=12"}},
      {"keep with prefix and suffix",
       Group1("SHEET", wrap),
       {"attrib Model|TITLE|SHEET=X-12-Y",
        "attrib Sheet A|TITLE|SHEET=X-A1-Y"}},
      {"two groups on one tag in turn",
       two,
       {"attrib Model|TITLE|SHEET=A1", "attrib Sheet A|TITLE|SHEET=A1"}},
      {"a group not ticked changes nothing",
       disabled,
       {"attrib Model|TITLE|SHEET=12"}},
  };
  for (const ModeCase& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> values = Attributes(c.run);
    for (const std::string& line : c.expected) {
      EXPECT_TRUE(Has(values, line)) << line;
    }
    fs::remove(dir_ / "plan(1).dxf");
  }
}

TEST_F(ReplaceRunTest, LayoutAndBlockScopes) {
  LMT_SKIP_WITHOUT_EZDXF();
  struct Case {
    LayoutScope scope;
    const char* tab;
    bool only_other;
    std::vector<std::string> changed;  // layouts|block whose SHEET is "N"
  };
  const Case cases[] = {
      {LayoutScope::kAll,
       "",
       false,
       {"Model|TITLE", "Model|OTHER", "Sheet A|TITLE", "Sheet B|TITLE"}},
      {LayoutScope::kModelOnly, "", false, {"Model|TITLE", "Model|OTHER"}},
      {LayoutScope::kLayoutsOnly,
       "",
       false,
       {"Sheet A|TITLE", "Sheet B|TITLE"}},
      {LayoutScope::kNamedTab, "sheet b", false, {"Sheet B|TITLE"}},
      {LayoutScope::kNamedTab, "No such tab", false, {}},
      {LayoutScope::kAll, "", true, {"Model|OTHER"}},
  };
  const std::vector<std::string> all = {"Model|TITLE", "Model|OTHER",
                                        "Sheet A|TITLE", "Sheet B|TITLE"};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.tab) +
                 std::to_string(static_cast<int>(c.scope)));
    AttributeRun run = Group1("SHEET", NewValue("N"));
    run.scope.layouts = c.scope;
    run.scope.tab_name = c.tab;
    run.scope.only_named_block = c.only_other;
    run.scope.block_name = "other";
    std::vector<std::string> values = Attributes(run);
    for (const std::string& where : all) {
      bool want = std::find(c.changed.begin(), c.changed.end(), where) !=
                  c.changed.end();
      EXPECT_EQ(Has(values, "attrib " + where + "|SHEET=N"), want) << where;
    }
    fs::remove(dir_ / "plan(1).dxf");
  }
}

TEST_F(ReplaceRunTest, NestedDefinitionIsRewrittenOnceForTenReferences) {
  LMT_SKIP_WITHOUT_EZDXF();
  ASSERT_TRUE(dbx_->DxfIn(PathToUtf8(kData / "attributes.dxf")).ok());
  testing::FailingHost counting(*app_);
  AttributeRun run = Group1("CODE", Keep("", "+"));
  run.scope.nested_blocks = true;
  WalkStats stats = ReplaceAttributesIn(*dbx_, run, user_);
  // TITLE, OTHER, OUTER (ten references) and INNER inside OUTER.
  EXPECT_EQ(stats.definitions, 4);
  EXPECT_EQ(counting.CallCount("Blocks.Item"), 4);
  EXPECT_EQ(stats.written, 1);  // CODE once, in OUTER's definition
  EXPECT_TRUE(stats.skips.empty());

  std::vector<std::string> values = Attributes(run);
  EXPECT_TRUE(Has(values, "defattrib OUTER|INNER|CODE=C0+"));
  run.scope.nested_blocks = false;
  fs::remove(dir_ / "plan(1).dxf");
  EXPECT_TRUE(Has(Attributes(run), "defattrib OUTER|INNER|CODE=C0"));
}

TEST_F(ReplaceRunTest, RefusedWriteSkipsThatAttributeOnly) {
  LMT_SKIP_WITHOUT_EZDXF();
  testing::FailingHost failing(*app_);
  failing.Refuse("Attribute.SetTextString", /*allow_first=*/0, /*times=*/1);
  std::vector<std::string> values = Attributes(Group1("SHEET", NewValue("N")));
  EXPECT_TRUE(Has(values, "attrib Model|TITLE|SHEET=12"));  // refused
  EXPECT_TRUE(Has(values, "attrib Model|OTHER|SHEET=N"));
  EXPECT_TRUE(Has(values, "attrib Sheet A|TITLE|SHEET=N"));
}

TEST_F(ReplaceRunTest, SaveTargets) {
  LMT_SKIP_WITHOUT_EZDXF();
  AttributeRun run = Group1("SHEET", NewValue("N"));
  ReplaceSettings settings;
  // Beside: plan.dxf and plan(1).dxf exist, so the result is plan(2).dxf.
  settings.files = {Copy("attributes.dxf", "plan.dxf")};
  Copy("attributes.dxf", "plan(1).dxf");
  BatchReport beside = ReplaceAttributesFiles(*dbx_, ui_, settings, run);
  EXPECT_EQ(beside.written,
            std::vector<std::string>{PathToUtf8(dir_ / "plan(2).dxf")});
  EXPECT_TRUE(
      Has(EzdxfValues(dir_ / "plan.dxf"), "attrib Model|TITLE|SHEET=12"));

  // Into a folder, and replacing the source.
  fs::create_directory(dir_ / "to");
  settings.target = {SaveWhere::kToFolder, PathToUtf8(dir_ / "to"), ""};
  EXPECT_EQ(ReplaceAttributesFiles(*dbx_, ui_, settings, run).written,
            std::vector<std::string>{PathToUtf8(dir_ / "to" / "plan.dxf")});
  settings.target = {SaveWhere::kReplaceSource, "", ""};
  EXPECT_EQ(ReplaceAttributesFiles(*dbx_, ui_, settings, run).written,
            std::vector<std::string>{PathToUtf8(dir_ / "plan.dxf")});
  std::vector<std::string> values = EzdxfValues(dir_ / "plan.dxf");
  EXPECT_TRUE(Has(values, "attrib Model|TITLE|SHEET=N"));
  EXPECT_TRUE(Has(values, "audit 0"));
  EXPECT_FALSE(fs::exists(dir_ / "plan.dxf.lmt-tmp"));
}

TEST_F(ReplaceRunTest, UnreadableFilesAreCountedAndTheRunGoesOn) {
  ReplaceSettings settings;
  std::ofstream(dir_ / "broken.dxf") << "0\nSECTION\n2\nENTITIES\nnonsense";
  settings.files = {Copy("attributes.dxf", "a.dxf"),
                    {"broken.dxf", PathToUtf8(dir_ / "broken.dxf")},
                    {"gone.dxf", PathToUtf8(dir_ / "gone.dxf")},
                    Copy("attributes.dxf", "b.dxf")};
  settings.target = {SaveWhere::kNewSubfolder, "", "out"};
  BatchReport report = ReplaceAttributesFiles(*dbx_, ui_, settings,
                                              Group1("SHEET", NewValue("N")));
  EXPECT_EQ(report.processed, 4);
  ASSERT_EQ(report.failures.size(), 2u);
  EXPECT_EQ(report.failures[0].path, settings.files[1].path);
  EXPECT_EQ(report.failures[1].path, settings.files[2].path);
  EXPECT_TRUE(fs::exists(dir_ / "out" / "a.dxf"));
  EXPECT_TRUE(fs::exists(dir_ / "out" / "b.dxf"));
  EXPECT_FALSE(fs::exists(dir_ / "out" / "broken.dxf"));
  EXPECT_EQ(user_.message_texts(), std::vector<std::string>{"4"});
}

TEST_F(ReplaceRunTest, DwgTargetOnTheEmbeddedHostIsAFailure) {
  ReplaceSettings settings;
  settings.files = {Copy("attributes.dxf", "a.dxf")};
  settings.save_as = 1;  // DWG
  BatchReport report = ReplaceAttributesFiles(*dbx_, ui_, settings,
                                              Group1("SHEET", NewValue("")));
  ASSERT_EQ(report.failures.size(), 1u);
  EXPECT_NE(report.failures[0].status.message().find("DWG"), std::string::npos);
  EXPECT_FALSE(fs::exists(dir_ / "a.dwg"));
}

TEST_F(ReplaceRunTest, InterruptStopsBeforeTheNextFile) {
  ReplaceSettings settings;
  settings.files = {Copy("attributes.dxf", "a.dxf"),
                    Copy("attributes.dxf", "b.dxf")};
  // Stop pressed while file 2 is read: it is not saved, and not counted.
  testing::FailingHost stop(*dbx_);
  stop.InterruptAt("DbxDocument.DxfIn", 2, user_);
  BatchReport report = ReplaceAttributesFiles(*dbx_, ui_, settings,
                                              Group1("SHEET", NewValue("")));
  EXPECT_TRUE(report.interrupted);
  EXPECT_EQ(report.processed, 1);
  EXPECT_EQ(report.written.size(), 1u);
  EXPECT_EQ(
      user_.message_texts(),
      (std::vector<std::string>{messages_.Get(core::kMsgInterrupted), "1"}));
}

TEST_F(ReplaceRunTest, TextGroupsKeepMTextFormatting) {
  LMT_SKIP_WITHOUT_EZDXF();
  TextRun run;
  run.text.groups[0] = Group("plan", ValueMode::kReplace, "Layout");
  std::vector<std::string> values = Texts(run);
  EXPECT_TRUE(Has(values, "text Model|TEXT=Layout 1"));
  EXPECT_TRUE(
      Has(values, "text Model|MTEXT={\\fArial|b1;Layout} detail\\PLayout two"));
  EXPECT_TRUE(Has(values, "text Sheet A|TEXT=Layout sheet"));
  // Leaders and block contents only when asked for.
  EXPECT_TRUE(Has(values, "text Model|MULTILEADER=Plan leader"));
  EXPECT_TRUE(Has(values, "deftext TB|TEXT=Plan in block"));
}

TEST_F(ReplaceRunTest, TextInLeadersAndBlocksOnlyInScope) {
  LMT_SKIP_WITHOUT_EZDXF();
  TextRun run;
  run.text.texts = false;
  run.text.leaders = true;
  run.text.in_blocks = true;
  run.scope.layouts = LayoutScope::kModelOnly;
  run.text.groups[0] = Group("PLAN", ValueMode::kKeep, "");
  run.text.groups[0].use_prefix = true;
  run.text.groups[0].prefix = "#";
  std::vector<std::string> values = Texts(run);
  EXPECT_TRUE(Has(values, "text Model|MULTILEADER=#Plan leader"));
  EXPECT_TRUE(Has(values, "text Model|TEXT=Plan 1"));         // texts off
  EXPECT_TRUE(Has(values, "deftext TB|TEXT=Plan in block"));  // texts off
}

TEST_F(ReplaceRunTest, TextListModes) {
  LMT_SKIP_WITHOUT_EZDXF();
  TextRun run;
  run.text.in_blocks = true;
  run.text.use_list = true;
  run.text.list = {{"Plan 1", "Sheet 1"}, {"plan in block", "Block text"}};
  run.text.list_match = ListMatch::kWholeText;
  std::vector<std::string> whole = Texts(run);
  EXPECT_TRUE(Has(whole, "text Model|TEXT=Sheet 1"));
  EXPECT_TRUE(Has(whole, "deftext TB|TEXT=Block text"));
  EXPECT_TRUE(Has(whole, "text Sheet A|TEXT=Plan sheet"));

  fs::remove_all(dir_ / "out");
  run.text.list = {{"plan", "P"}, {"sheet", "S"}};
  run.text.list_match = ListMatch::kOccurrences;
  run.text.list_use_suffix = true;
  run.text.list_suffix = "!";
  std::vector<std::string> parts = Texts(run);
  EXPECT_TRUE(Has(parts, "text Sheet A|TEXT=P S!"));
  EXPECT_TRUE(Has(parts, "text Model|MTEXT={\\fArial|b1;P} detail\\PP two!"));
}

}  // namespace
}  // namespace lmt::batch
