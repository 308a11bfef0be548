// `layomat frames` as a user runs it, on the repository's example drawing.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <cstdlib>
#include <string>

#include "cli/layomat_run_test_support.h"
#include "core/file_util.h"
#include "testing/temp_dir.h"
#include "testing/test_paths.h"

namespace lmt::cli {
namespace {

class FramesCommandTest : public ::testing::Test {
 protected:
  test::LayomatRun Layomat(const std::string& args) {
    return test::RunLayomat(args, dir_.path());
  }

  static int Count(const std::string& text, const std::string& part) {
    int n = 0;
    for (size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + 1))
      ++n;
    return n;
  }

  // Whether Python's json module reads `text` as {"frames": [...]} whose
  // rows have exactly the 27 keys.
  bool ValidJson(const std::string& text) {
    const std::string file = (dir_ / "out.json").string();
    EXPECT_TRUE(core::WriteFileAtomically(file, text).ok());
    const std::string check =
        testing::PythonCommand() +
        "-c \"import json,sys; d=json.load(open(sys.argv[1],"
        " encoding='utf-8')); assert all(len(r)==27 and "
        "all(isinstance(v,str) for v in r.values()) for r in d['frames'])\" '" +
        file + "'";
    return std::system(check.c_str()) == 0;
  }

  const std::string example_ = "'" LMT_TESTDATA_DIR "/example.dxf'";
  testing::TempDir dir_;
};

TEST_F(FramesCommandTest, JsonOfTheExampleHasEveryFrame) {
  test::LayomatRun run = Layomat("frames " + example_ + " --json");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(ValidJson(run.out)) << run.out;
  // No template: every model-space object is selected, the frames make
  // the rows.
  EXPECT_EQ(Count(run.out, "\"Typ\": \"Block\""), 6);
  EXPECT_EQ(Count(run.out, "\"Typ\": \"Polyline\""), 3);
  EXPECT_EQ(Count(run.out, "\"№\": "), 9);
  EXPECT_NE(run.out.find("\"ID\": \"148\""), std::string::npos);  // 94 hex
  EXPECT_EQ(run.out.find("Лайомат"), std::string::npos);  // messages aside
  EXPECT_NE(run.err.find(": Выбор закончен\n"), std::string::npos);
}

TEST_F(FramesCommandTest, TemplateOfOneBlockFindsItsBlockOnly) {
  test::LayomatRun run =
      Layomat("frames " + example_ +
              " --template 94 --json --set OknoLmt.UniTextNameAtribute=SHEET"
              " --set OknoLmt.OptionBlockPoisk1=True");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(ValidJson(run.out));
  EXPECT_EQ(Count(run.out, "\"Typ\": \"Block\""), 6);
  EXPECT_EQ(Count(run.out, "\"Typ\": \"Polyline\""), 0);
  EXPECT_NE(run.out.find("\"Attribute\": \"A-01\""), std::string::npos);
  EXPECT_NE(run.out.find("\"Width\": \"42000\""), std::string::npos);
  EXPECT_NE(run.err.find("Шаблон получен - BLOCK"), std::string::npos);
}

TEST_F(FramesCommandTest, FilterSetsWinOverTheCapture) {
  // The capture fills the layer with FRAMES; the --set puts CONTENT back,
  // where no block lies: no objects, exit 1.
  test::LayomatRun run =
      Layomat("frames " + example_ +
              " --template 94 --set OknoFilter.CheckTolkoVSloe=1"
              " --set OknoFilter.ComboSloyLinii=CONTENT");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("Нет объектов для обработки !"), std::string::npos);
}

TEST_F(FramesCommandTest, ReadableTableAndPreview) {
  const std::string svg = (dir_ / "frames.svg").string();
  test::LayomatRun run =
      Layomat("frames " + example_ + " --preview '" + svg + "'" +
              " --set OknoLmt.TextStrokaNameFile=10/20"
              " --set OknoLmt.UniTextLeyoutName0=Sheet-");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("Layout Name"), std::string::npos);
  EXPECT_NE(run.out.find("Sheet-9"), std::string::npos);
  EXPECT_NE(run.out.find("9 frames\n"), std::string::npos);
  std::string picture = core::ReadFileBytes(svg).value_or("");
  EXPECT_EQ(Count(picture, "<polygon"), 9);
  EXPECT_EQ(Count(picture, ">Sheet-"), 9);
  EXPECT_GT(Count(picture, "<path"), 9);
}

TEST_F(FramesCommandTest, PickStartPointAndDirectionPolylineFromOptions) {
  test::LayomatRun run = Layomat("frames " + example_ +
                                 " --json --pick 94,9B,BE --start 100000,0"
                                 " --sort-polyline C2"
                                 " --set OknoLmt.OptionSortirovkaSpisok6=True");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Count(run.out, "\"№\": "), 3);
  EXPECT_EQ(Count(run.out, "\"Poly\": \"\""), 0);  // all projected
  EXPECT_NE(run.err.find("Выберите полилинию"), std::string::npos);
}

TEST_F(FramesCommandTest, UnreadableDrawingIsAFileError) {
  const std::string bad = (dir_ / "bad.dxf").string();
  ASSERT_TRUE(core::WriteFileAtomically(bad, "0\nSECTION\n2\nENTITIES\n").ok());
  test::LayomatRun run = Layomat("frames '" + bad + "'");
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("bad.dxf"), std::string::npos) << run.err;
  EXPECT_EQ(Layomat("frames '" + (dir_ / "none.dxf").string() + "'").status, 3);
  EXPECT_EQ(Layomat("frames").status, 2);
}

}  // namespace
}  // namespace lmt::cli

#endif  // _WIN32
