#include "batch/attribute_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace lmt::batch {
namespace {

ValueRule Rule(ValueMode mode, std::string new_value = "",
               std::string search = "", std::string replacement = "") {
  ValueRule rule;
  rule.mode = mode;
  rule.new_value = std::move(new_value);
  rule.search = std::move(search);
  rule.replacement = std::move(replacement);
  return rule;
}

ValueRule WithAffixes(ValueRule rule, const char* prefix, const char* suffix) {
  rule.use_prefix = prefix != nullptr;
  rule.prefix = prefix ? prefix : "ignored";
  rule.use_suffix = suffix != nullptr;
  rule.suffix = suffix ? suffix : "ignored";
  return rule;
}

TEST(ValueRuleTest, ModesWithPrefixAndSuffix) {
  struct Case {
    ValueRule rule;
    const char* value;
    const char* expected;
  };
  const Case cases[] = {
      {Rule(ValueMode::kNewValue, "A-1"), "old", "A-1"},
      {Rule(ValueMode::kNewValue, ""), "old", ""},
      {Rule(ValueMode::kReplace, "", "a", "b"), "Aa", "bb"},
      {Rule(ValueMode::kReplace, "", "ЛИСТ", "Sheet"), "лист 1, Лист 2",
       "Sheet 1, Sheet 2"},
      {Rule(ValueMode::kReplace, "", "aa", "a"), "aaaa", "aa"},  // no rescan
      {Rule(ValueMode::kReplace, "", "", "x"), "abc", "abc"},
      {Rule(ValueMode::kKeep, "ignored"), "12", "12"},
      {WithAffixes(Rule(ValueMode::kKeep), "X-", "-Y"), "12", "X-12-Y"},
      {WithAffixes(Rule(ValueMode::kKeep), "X-", nullptr), "12", "X-12"},
      {WithAffixes(Rule(ValueMode::kKeep), nullptr, "-Y"), "12", "12-Y"},
      {WithAffixes(Rule(ValueMode::kNewValue, "N"), "<", ">"), "12", "<N>"},
      {WithAffixes(Rule(ValueMode::kReplace, "", "1", "2"), "<", ">"), "11",
       "<22>"},
      // A prefix is not searched by the replacement before it.
      {WithAffixes(Rule(ValueMode::kReplace, "", "a", "b"), "a", nullptr), "a",
       "ab"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ApplyValueRule(c.rule, c.value), c.expected) << c.value;
  }
}

TEST(ValueRuleTest, OptionIndexOutsideTheGroupKeeps) {
  EXPECT_EQ(ValueModeFromIndex(0), ValueMode::kNewValue);
  EXPECT_EQ(ValueModeFromIndex(1), ValueMode::kReplace);
  EXPECT_EQ(ValueModeFromIndex(2), ValueMode::kKeep);
  EXPECT_EQ(ValueModeFromIndex(-1), ValueMode::kKeep);
}

TEST(RewriteAttributeTest, GroupsMatchTagsWithoutCaseAndApplyInTurn) {
  AttributeGroups groups;
  groups[0] = {true, "NAME", Rule(ValueMode::kNewValue, "A")};
  groups[1] = {true, "name", WithAffixes(Rule(ValueMode::kKeep), nullptr, "1")};
  groups[2] = {false, "NAME", Rule(ValueMode::kNewValue, "disabled")};
  EXPECT_EQ(RewriteAttribute(groups, "Name", "old").value_or("<none>"), "A1");
  EXPECT_FALSE(RewriteAttribute(groups, "NUMBER", "7").has_value());

  // Written even when unchanged, so the caller still sets TextString.
  AttributeGroups keep;
  keep[0] = {true, "ЛИСТ", Rule(ValueMode::kKeep)};
  EXPECT_EQ(RewriteAttribute(keep, "лист", "3").value_or("<none>"), "3");
}

TEST(RewriteAttributeTest, LaterGroupStartsFromEarlierResult) {
  AttributeGroups groups;
  groups[0] = {true, "T", Rule(ValueMode::kReplace, "", "x", "yy")};
  groups[1] = {true, "T", Rule(ValueMode::kReplace, "", "yy", "z")};
  EXPECT_EQ(RewriteAttribute(groups, "t", "axb").value_or("<none>"), "azb");
}

TEST(ScopeTest, LayoutScopes) {
  struct Case {
    LayoutScope scope;
    const char* tab;
    const char* layout;
    bool in;
  };
  const Case cases[] = {
      {LayoutScope::kAll, "", "Model", true},
      {LayoutScope::kAll, "", "Sheet1", true},
      {LayoutScope::kModelOnly, "", "MODEL", true},
      {LayoutScope::kModelOnly, "", "Sheet1", false},
      {LayoutScope::kLayoutsOnly, "", "model", false},
      {LayoutScope::kLayoutsOnly, "", "Sheet1", true},
      {LayoutScope::kNamedTab, "лист 2", "Лист 2", true},
      {LayoutScope::kNamedTab, "Лист 2", "Лист 3", false},
      {LayoutScope::kNamedTab, "Missing", "Model", false},
      {LayoutScope::kNamedTab, "", "Sheet1", false},
  };
  for (const Case& c : cases) {
    ScopeOptions scope;
    scope.layouts = c.scope;
    scope.tab_name = c.tab;
    EXPECT_EQ(LayoutInScope(c.layout, scope), c.in)
        << static_cast<int>(c.scope) << " " << c.layout;
  }
  EXPECT_EQ(LayoutScopeFromIndex(2), LayoutScope::kLayoutsOnly);
  EXPECT_EQ(LayoutScopeFromIndex(7), LayoutScope::kAll);
}

TEST(ScopeTest, BlockScopeComparesEffectiveNameWithoutCase) {
  ScopeOptions all;
  EXPECT_TRUE(BlockInScope("Stamp", all));
  ScopeOptions named;
  named.only_named_block = true;
  named.block_name = "ШТАМП";
  EXPECT_TRUE(BlockInScope("штамп", named));
  EXPECT_FALSE(BlockInScope("Frame", named));
}

TEST(ProcessedDefinitionsTest, EachDefinitionOnceWhateverTheCase) {
  ProcessedDefinitions done;
  int walked = 0;
  for (int i = 0; i < 10; ++i) {
    const char* name = i % 2 ? "Stamp" : "STAMP";
    if (!done.Contains(name)) {
      ++walked;
      EXPECT_TRUE(done.Add(name));
    }
  }
  EXPECT_EQ(walked, 1);
  EXPECT_FALSE(done.Add("stamp"));
  // Unlike a ":::"-joined list, a name holding the separator stays apart.
  EXPECT_TRUE(done.Add("A:::B"));
  EXPECT_FALSE(done.Contains("A"));
  done.Clear();
  EXPECT_FALSE(done.Contains("Stamp"));
}

}  // namespace
}  // namespace lmt::batch
