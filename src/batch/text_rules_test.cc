#include "batch/text_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lmt::batch {
namespace {

TEST(TextRunsTest, ReplacesOnlyPlainTextOfMText) {
  struct Case {
    const char* content;
    const char* find;
    const char* replace;
    const char* expected;
  };
  const Case cases[] = {
      {"{\\fArial|b1;Plan} 1", "Plan", "Site", "{\\fArial|b1;Site} 1"},
      {"{\\fArial|b1;Plan} 1", "arial", "X", "{\\fArial|b1;Plan} 1"},
      {"\\H2.5;PLAN\\Pplan", "plan", "Site", "\\H2.5;Site\\PSite"},
      {"Pl{\\L an}", "Plan", "X", "Pl{\\L an}"},  // spans a code: kept
      {"Pl\\Pan", "Plan", "X", "Pl\\Pan"},
      {"a\\\\b", "a\\b", "c", "c"},                  // escaped backslash
      {"x\\{y\\}", "{y}", "z", "xz"},                // escaped braces
      {"\\U+0416ук", "жук", "bug", "bug"},           // \U+ is a character
      {"\\S1/2;1/2", "1/2", "half", "\\S1/2;half"},  // stacks not searched
      {"a", "a", "{b}\\", "\\{b\\}\\\\"},      // replacement shows as typed
      {"\\fArial", "Arial", "X", "\\fArial"},  // code without ';' to the end
      {"end\\", "end", "E", "E\\"},
  };
  for (const Case& c : cases) {
    ReplacementPair pair{c.find, c.replace};
    EXPECT_EQ(ReplaceInContent(c.content, TextFormat::kMText, {&pair, 1}),
              c.expected)
        << c.content;
  }
}

TEST(TextRunsTest, PlainFormatHasNoCodes) {
  ReplacementPair pair{"{\\f", "x"};
  EXPECT_EQ(ReplaceInContent("a{\\fb", TextFormat::kPlain, {&pair, 1}), "axb");
  EXPECT_EQ(PlainContent("{\\fArial;A}\\PB\\~", TextFormat::kMText), "A\nB");
}

TEST(TextRunsTest, ListReplacesInOnePass) {
  std::vector<ReplacementPair> list = {{"a", "b"}, {"b", "c"}, {"", "x"}};
  EXPECT_EQ(ReplaceInContent("ab", TextFormat::kPlain, list), "bc");
  std::vector<ReplacementPair> order = {{"ab", "1"}, {"abc", "2"}};
  EXPECT_EQ(ReplaceInContent("abc", TextFormat::kPlain, order), "1c");
}

TextGroup Group(const char* find, ValueMode mode, const char* replacement) {
  TextGroup group;
  group.enabled = true;
  group.find = find;
  group.mode = mode;
  group.replacement = replacement;
  return group;
}

TEST(RewriteTextTest, GroupsApplyToTextsContainingTheirFindText) {
  struct Case {
    TextGroup group;
    TextObject object;
    const char* content;
    const char* expected;  // nullptr: left alone
  };
  TextGroup prefixed = Group("plan", ValueMode::kKeep, "");
  prefixed.use_prefix = true;
  prefixed.prefix = "{A} ";
  prefixed.use_suffix = true;
  prefixed.suffix = "!";
  const Case cases[] = {
      {Group("Plan", ValueMode::kReplace, "Site"), TextObject::kMText,
       "{\\fArial|b1;Plan} 1", "{\\fArial|b1;Site} 1"},
      {Group("plan", ValueMode::kReplace, "Site"), TextObject::kText, "PLAN 1",
       "Site 1"},
      {Group("plan", ValueMode::kNewValue, "New"), TextObject::kMLeader,
       "\\fArial;Plan 1", "New"},
      {Group("plan", ValueMode::kNewValue, "New"), TextObject::kText, "Section",
       nullptr},
      {Group("", ValueMode::kNewValue, "All"), TextObject::kText, "Section",
       nullptr},
      {prefixed, TextObject::kMText, "\\LPlan", "\\{A\\} \\LPlan!"},
      {prefixed, TextObject::kText, "Plan", "{A} Plan!"},
      {Group("plan", ValueMode::kReplace, "plan"), TextObject::kText, "plan",
       nullptr},  // unchanged content is not written
  };
  for (const Case& c : cases) {
    TextOptions options;
    options.groups[0] = c.group;
    std::optional<std::string> got = RewriteText(options, c.object, c.content);
    if (c.expected == nullptr) {
      EXPECT_FALSE(got.has_value()) << c.content << " -> " << *got;
    } else {
      EXPECT_EQ(got.value_or("<none>"), c.expected) << c.content;
    }
  }
}

TEST(RewriteTextTest, LaterGroupTestsWhatTheEarlierLeft) {
  TextOptions options;
  options.groups[0] = Group("A", ValueMode::kReplace, "B");
  options.groups[1] = Group("B", ValueMode::kKeep, "");
  options.groups[1].use_suffix = true;
  options.groups[1].suffix = "1";
  options.groups[2] = Group("A", ValueMode::kNewValue, "never");
  EXPECT_EQ(RewriteText(options, TextObject::kText, "A").value_or(""), "B1");
}

TEST(RewriteTextTest, ListModes) {
  TextOptions options;
  options.use_list = true;
  options.groups[0] = Group("x", ValueMode::kNewValue, "groups unused");
  options.list = {{"Лист 1", "Sheet 1"}, {"лист", "Sheet"}};
  EXPECT_EQ(
      RewriteText(options, TextObject::kText, "ЛИСТ 1 / Лист 2").value_or(""),
      "Sheet 1 / Sheet 2");
  options.list_match = ListMatch::kWholeText;
  EXPECT_FALSE(RewriteText(options, TextObject::kText, "Лист 1 / Лист 2"));
  EXPECT_EQ(
      RewriteText(options, TextObject::kMText, "{\\H3;лист}").value_or(""),
      "Sheet");
}

TEST(RewriteTextTest, ObjectKindsAndSwitches) {
  EXPECT_EQ(TextObjectFromName("AcDbMText"), TextObject::kMText);
  EXPECT_FALSE(TextObjectFromName("AcDbBlockReference").has_value());
  EXPECT_FALSE(TextObjectFromName("acdbtext").has_value());
  TextOptions options;
  options.texts = false;
  options.leaders = true;
  EXPECT_FALSE(TextObjectInScope(TextObject::kText, options));
  EXPECT_FALSE(TextObjectInScope(TextObject::kMText, options));
  EXPECT_TRUE(TextObjectInScope(TextObject::kMLeader, options));
}

TEST(PastedTableTest, ParsesSpreadsheetRows) {
  struct Case {
    const char* text;
    std::vector<ReplacementPair> pairs;
  };
  const std::vector<Case> cases = {
      {"a\tb\r\nc\td\r\n", {{"a", "b"}, {"c", "d"}}},
      {"a\tb\nc\td", {{"a", "b"}, {"c", "d"}}},
      {"a\r\n\tskipped\r\nc\td\textra", {{"a", ""}, {"c", "d"}}},
      {"\"x\ty\"\t\"two\r\nlines\"\r\n", {{"x\ty", "two\r\nlines"}}},
      {"\"say \"\"hi\"\"\"\tok", {{"say \"hi\"", "ok"}}},
      {"\r\n\r\n", {}},
  };
  for (const Case& c : cases) {
    Result<std::vector<ReplacementPair>> got = ParsePastedTable(c.text);
    ASSERT_TRUE(got.ok()) << c.text;
    ASSERT_EQ(got->size(), c.pairs.size()) << c.text;
    for (std::size_t i = 0; i < c.pairs.size(); ++i) {
      EXPECT_EQ((*got)[i].find, c.pairs[i].find) << c.text;
      EXPECT_EQ((*got)[i].replace, c.pairs[i].replace) << c.text;
    }
  }
  EXPECT_EQ(ParsePastedTable("").status().message(), "Буфер обмена пуст!");
}

}  // namespace
}  // namespace lmt::batch
