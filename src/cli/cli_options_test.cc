#include "cli/cli_options.h"

#include <gtest/gtest.h>

namespace lmt::cli {
namespace {

TEST(ParseCommandLineTest, OptionsAnywhereInBothForms) {
  Result<CliOptions> o = ParseCommandLine({"--settings",
                                           "s.ini",
                                           "frames",
                                           "a.dxf",
                                           "--set=OknoLmt.TextX=a=b",
                                           "--template",
                                           "2F",
                                           "--pick=1A,2b",
                                           "--start",
                                           "-10.5,20",
                                           "--yes",
                                           "-o",
                                           "out.dxf",
                                           "--json",
                                           "--sort-polyline",
                                           "FF",
                                           "--viewport=3",
                                           "--lang",
                                           "L.ini",
                                           "--",
                                           "--literal"});
  ASSERT_TRUE(o.ok()) << o.status().ToString();
  EXPECT_EQ(o->command, "frames");
  EXPECT_EQ(o->args, (std::vector<std::string>{"a.dxf", "--literal"}));
  EXPECT_EQ(*o->settings_file, "s.ini");
  ASSERT_EQ(o->sets.size(), 1u);
  EXPECT_EQ(o->sets[0].section, "OknoLmt");
  EXPECT_EQ(o->sets[0].key, "TextX");
  EXPECT_EQ(o->sets[0].value, "a=b");
  EXPECT_EQ(*o->template_handle, "2F");
  EXPECT_EQ(o->pick_handles, (std::vector<std::string>{"1A", "2b"}));
  EXPECT_DOUBLE_EQ(o->start->x, -10.5);
  EXPECT_DOUBLE_EQ(o->start->y, 20);
  EXPECT_TRUE(o->yes);
  EXPECT_TRUE(o->json);
  EXPECT_EQ(*o->output, "out.dxf");
  EXPECT_EQ(*o->sort_polyline, "FF");
  EXPECT_EQ(*o->viewport, "3");
  EXPECT_EQ(*o->lang_file, "L.ini");
}

TEST(ParseCommandLineTest, EmptySetValueIsAllowed) {
  Result<CliOptions> o = ParseCommandLine({"--set", "OknoLmt.TextX="});
  ASSERT_TRUE(o.ok());
  EXPECT_EQ(o->sets[0].value, "");
}

TEST(ParseCommandLineTest, BadCommandLines) {
  const std::vector<std::vector<std::string>> bad = {
      {"--frobnicate"},     {"--settings"},
      {"--set", "NoDot=1"}, {"--set", "OknoLmt.Key"},
      {"--set", ".Key=1"},  {"--template", "XYZ"},
      {"--pick", "1A,,2B"}, {"--start", "1;2"},
      {"--start", "1,"},    {"--yes=1"},
      {"--row", "0"},       {"--row", "2x"},
  };
  for (const auto& args : bad) {
    EXPECT_FALSE(ParseCommandLine(args).ok()) << args[0];
  }
}

// The list completion and the manual are checked against is the parser's
// own: every entry parses with its values, and one value less is refused.
TEST(GlobalOptionsTest, EveryListedOptionParsesWithItsValues) {
  for (const GlobalOption& option : GlobalOptions()) {
    std::vector<std::string> args = {"frames", std::string(option.name)};
    if (option.values == 1) {
      args.push_back(option.name == "--set" ? "OknoLmt.A=1"
                     : option.name == "--start" || option.name == "--index-at"
                         ? "1,2"
                     : option.name == "--pick"            ? "2F"
                     : option.name == "--template"        ? "2F"
                     : option.name == "--viewport"        ? "2F"
                     : option.name == "--sort-polyline"   ? "2F"
                     : option.name == "--sheets-per-file" ? "4"
                     : option.name == "--row"             ? "3"
                                                          : "x");
    }
    EXPECT_TRUE(ParseCommandLine(args).ok()) << option.name;
    if (option.values == 1) {
      args.pop_back();
      EXPECT_FALSE(ParseCommandLine(args).ok()) << option.name;
    }
    EXPECT_NE(GlobalOptionsHelp().find(std::string(option.name)),
              std::string::npos)
        << option.name << " is not in --help";
  }
}

TEST(ParseCommandLineTest, QuietAndVerboseContradict) {
  EXPECT_TRUE(ParseCommandLine({"frames", "-q"})->quiet);
  EXPECT_TRUE(ParseCommandLine({"frames", "--verbose"})->verbose);
  Result<CliOptions> both = ParseCommandLine({"-v", "frames", "--quiet"});
  ASSERT_FALSE(both.ok());
  EXPECT_EQ(both.status().message(), "--quiet contradicts --verbose");
}

}  // namespace
}  // namespace lmt::cli
