#include "layouts/frame_register.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lmt::layouts {
namespace {

using frames::Column;

std::vector<std::vector<std::string>> Fields(std::string_view text) {
  Result<std::vector<CsvRecord>> records = ParseCsv(text);
  EXPECT_TRUE(records.ok()) << records.status().message();
  std::vector<std::vector<std::string>> fields;
  if (records.ok()) {
    for (const CsvRecord& record : *records) fields.push_back(record.fields);
  }
  return fields;
}

TEST(RegisterCsvTest, WhatSpreadsheetProgramsSave) {
  using Rows = std::vector<std::vector<std::string>>;
  // Byte order mark, CRLF, quotes with a separator, a doubled quote and a
  // line break inside; an empty last field.
  EXPECT_EQ(Fields("\xEF\xBB\xBF"
                   "a,b,c\r\n\"x,1\",\"say \"\"hi\"\"\",\r\n"
                   "\"two\r\nlines\",Лист,z\r\n"),
            (Rows{{"a", "b", "c"},
                  {"x,1", "say \"hi\"", ""},
                  {"two\r\nlines", "Лист", "z"}}));
  // Semicolons when the header uses them more than commas; LF only; no
  // line end at the end.
  EXPECT_EQ(Fields("a;b\n1,5;\"2;3\"\n\n4;5"),
            (Rows{{"a", "b"}, {"1,5", "2;3"}, {"4", "5"}}));
}

TEST(RegisterCsvTest, RecordsKnowTheirLineAndAnOpenQuoteIsAnError) {
  Result<std::vector<CsvRecord>> records =
      ParseCsv("h\r\n\"a\nb\"\r\n\r\nc\r\n");
  ASSERT_TRUE(records.ok());
  ASSERT_EQ(records->size(), 3u);
  EXPECT_EQ((*records)[1].line, 2);
  EXPECT_EQ((*records)[2].line, 5);
  Result<std::vector<CsvRecord>> open = ParseCsv("h\nok\n\"never\nclosed\n");
  ASSERT_FALSE(open.ok());
  EXPECT_EQ(open.status().message(), "line 3: a quoted field is never closed");
}

TEST(RegisterParseTest, ColumnsItNeedsAndTheTagColumns) {
  Result<Register> no_name =
      ParseRegister("\xEF\xBB\xBFID,SHEET\r\n1,A\r\n", "reg.csv");
  ASSERT_FALSE(no_name.ok());
  EXPECT_EQ(no_name.status().code(), StatusCode::kInvalidArgument);
  EXPECT_TRUE(no_name.status().message().starts_with("reg.csv:1: ") &&
              no_name.status().message().find("Layout Name") !=
                  std::string::npos)
      << no_name.status().message();
  Result<Register> no_key = ParseRegister("Layout Name,PointX1\nA,0\n", "r");
  ASSERT_FALSE(no_key.ok());
  EXPECT_NE(no_key.status().message().find("\"ID\""), std::string::npos);
  Result<Register> open = ParseRegister("Layout Name,ID\nA,\"1\n", "r.csv");
  ASSERT_FALSE(open.ok());
  EXPECT_TRUE(open.status().message().starts_with("r.csv:2: "))
      << open.status().message();

  // Decimal commas in a semicolon file; header case and blanks ignored;
  // tag columns as written, a repeated one (ignoring case) dropped.
  Result<Register> reg = ParseRegister(
      "layout name ;id;PointX1;PointY1;PointX2;PointY2;PointX3;PointY3;"
      "PointX4;PointY4;Лист;TITLE;лист\r\n"
      " Sheet A ;12;0;0;42000,5;0;42000,5;29700;0;29700;1;План;x\r\n"
      ";;;;;;;;;;;;\r\n"
      "B;;;;;;;;;;2;;\r\n",
      "r.csv");
  ASSERT_TRUE(reg.ok()) << reg.status().message();
  EXPECT_EQ(reg->tags, (std::vector<std::string>{"Лист", "TITLE"}));
  ASSERT_EQ(reg->rows.size(), 2u);
  EXPECT_EQ(reg->rows[0].layout_name, "Sheet A");
  EXPECT_EQ(reg->rows[0].id, "12");
  ASSERT_TRUE(reg->rows[0].corners.has_value());
  EXPECT_EQ((*reg->rows[0].corners)[2], (frames::Point{42000.5, 29700}));
  EXPECT_EQ(reg->rows[0].values,
            (FrameAttributes{{"Лист", "1"}, {"TITLE", "План"}}));
  EXPECT_EQ(reg->rows[1].line, 4);
  EXPECT_FALSE(reg->rows[1].corners.has_value());
}

// Three frames as the search leaves them: rows 1..3, IDs 10, 11, 12, each
// a 10 x 5 rectangle 20 apart.
class RegisterMatchTest : public ::testing::Test {
 protected:
  RegisterMatchTest() {
    found_.SetRowCount(4);
    for (int r = 1; r <= 3; ++r) {
      const double x = 20.0 * r;
      found_.SetCorners(r, {{{x, 0}, {x + 10, 0}, {x + 10, 5}, {x, 5}}});
      found_.SetCell(r, Column::kId, std::to_string(9 + r));
      found_.SetCell(r, Column::kLayoutName, std::to_string(r));
    }
    found_.Renumber();
  }
  static RegisterRow Row(std::string id, std::string name,
                         std::optional<frames::Quad> corners = std::nullopt) {
    RegisterRow row;
    row.id = std::move(id);
    row.layout_name = std::move(name);
    row.corners = corners;
    row.values = {{"SHEET", row.layout_name}};
    return row;
  }
  std::vector<std::string> Ids(const frames::FrameTable& table) {
    std::vector<std::string> ids;
    for (int r = 1; r < table.row_count(); ++r) {
      ids.push_back(table.Cell(r, Column::kNumber) + ":" +
                    table.Cell(r, Column::kId) + ":" +
                    table.Cell(r, Column::kLayoutName));
    }
    return ids;
  }
  frames::FrameTable found_;
};

TEST_F(RegisterMatchTest, TheRegisterDecidesOrderNamesAndWhichFrames) {
  Register reg;
  reg.rows = {Row("12", "Разрез"), Row("10", ""), Row("77", "Lost")};
  RegisterOutcome out = ApplyRegister(reg, found_);
  EXPECT_EQ(Ids(out.table),
            (std::vector<std::string>{"1:12:Разрез", "2:10:1"}));
  ASSERT_EQ(out.frames.size(), 2u);
  EXPECT_EQ(out.frames[0].id, "12");
  EXPECT_EQ(out.frames[1].layout, "1");  // a blank name keeps the frame's
  EXPECT_EQ(out.frames[1].table_row, 2);
  ASSERT_EQ(out.warnings.size(), 2u);
  EXPECT_TRUE(
      out.warnings[0].starts_with("register row 3 (line 0) matches "
                                  "no frame: ID 77"))
      << out.warnings[0];
  EXPECT_EQ(out.warnings[1],
            "1 frame has no register row and is left out of the run: 2 (ID "
            "11)");
}

TEST_F(RegisterMatchTest, CornersWinOverIdsThatNowNameOtherFrames) {
  // The drawing was saved again: frame 1 now has ID 12, frame 3 ID 10, so
  // the register's IDs name the wrong frames; its corners, given from
  // another starting corner and the other way round, still fit.
  const frames::Quad first = *found_.Corners(1);
  const frames::Quad third = *found_.Corners(3);
  Register reg;
  reg.rows = {
      Row("10", "first", frames::Quad{first[2], first[1], first[0], first[3]}),
      Row("12", "third", frames::Quad{third[1], third[2], third[3], third[0]}),
      Row("99", "again", first),  // the frame of row 1 once more
      Row("11", "second", frames::Quad{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}})};
  found_.SetCell(1, Column::kId, "12");
  found_.SetCell(3, Column::kId, "10");
  RegisterOutcome out = ApplyRegister(reg, found_);
  EXPECT_EQ(Ids(out.table),
            (std::vector<std::string>{"1:12:first", "2:10:third"}));
  ASSERT_EQ(out.warnings.size(), 3u);
  EXPECT_NE(out.warnings[0].find("names the frame of register row 1 again"),
            std::string::npos)
      << out.warnings[0];
  // Right ID, corners of no frame: not guessed.
  EXPECT_TRUE(out.warnings[1].starts_with("register row 4"));
  EXPECT_NE(out.warnings[1].find("matches no frame"), std::string::npos);

  // Within the tolerance a spreadsheet's rounding stays a match.
  frames::Quad rounded = first;
  rounded[0].x += 1e-9;
  reg.rows = {Row("", "r", rounded)};
  EXPECT_EQ(Ids(ApplyRegister(reg, found_).table),
            (std::vector<std::string>{"1:12:r"}));
}

}  // namespace
}  // namespace lmt::layouts
