// `layomat settings --explain`: the meanings table names real controls, and
// each control shows its current value, meaning and plain option.
#include <gtest/gtest.h>

#include <string>

#include "cli/control_meanings.h"
#include "cli/layomat_run_test_support.h"
#include "core/settings.h"
#include "testing/temp_dir.h"

namespace lmt::cli {
namespace {

TEST(ControlMeaningsTest, EveryMeaningNamesOneControlOnce) {
  core::Windows windows;
  std::vector<std::pair<const core::Control*, int>> seen;
  for (const ControlMeaning& entry : ControlMeanings()) {
    std::optional<core::Window::Slot> slot =
        core::ResolveSetting(windows, entry.section, entry.key);
    ASSERT_TRUE(slot.has_value()) << entry.section << "." << entry.key;
    const std::pair<const core::Control*, int> at{slot->control, slot->slot};
    EXPECT_EQ(std::count(seen.begin(), seen.end(), at), 0)
        << entry.section << "." << entry.key;
    seen.push_back(at);
    EXPECT_EQ(MeaningOf(windows, *slot->control, slot->slot), entry.meaning);
  }
}

#ifndef _WIN32
std::string Block(const std::string& out, const std::string& key) {
  const size_t at = out.find("\n" + key + "=");
  if (at == std::string::npos) return "missing " + key;
  const size_t end = out.find("\n", out.find("option:", at));
  return out.substr(at + 1, end - at - 1);
}

TEST(SettingsExplainTest, ValueMeaningAndOption) {
  testing::TempDir home;
  test::LayomatRun run = test::RunLayomat(
      "settings --explain --scale 1:50 --order rows"
      " --attribute A=1 --attribute B=2"
      " --set OknoOption.OptionOkruglenie1=True",
      home.path());
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Block(run.out, "OknoSozdatLayout.TextMashtabModel"),
            "OknoSozdatLayout.TextMashtabModel=50\n"
            "    meaning: fixed scale: model units (M)\n"
            "    option: --scale P:M");
  EXPECT_EQ(Block(run.out, "OknoLmt.OptionSortirovkaSpisok2"),
            "OknoLmt.OptionSortirovkaSpisok2=True\n"
            "    meaning: order: rows top down, each left to right\n"
            "    option: --order rows");
  EXPECT_EQ(Block(run.out, "OknoDeistvie.TextValueAtribut2"),
            "OknoDeistvie.TextValueAtribut2=2\n"
            "    meaning: 2nd attribute to set: its value\n"
            "    option: --attribute TAG=VALUE (2nd use)");
  // A control the settings file keeps under another section.
  EXPECT_NE(Block(run.out, "OknoLmt.CheckNotRotate")
                .find("meaning: only frames without rotation"),
            std::string::npos)
      << run.out;
  // Without a written meaning: "-", not a guess; the value is still shown.
  EXPECT_EQ(Block(run.out, "OknoOption.OptionOkruglenie1"),
            "OknoOption.OptionOkruglenie1=True\n"
            "    meaning: -\n"
            "    option: -");
  // Without --explain the listing is as before.
  test::LayomatRun plain = test::RunLayomat("settings OknoOption", home.path());
  EXPECT_EQ(plain.out.find("meaning:"), std::string::npos);
}
#endif  // _WIN32

}  // namespace
}  // namespace lmt::cli
