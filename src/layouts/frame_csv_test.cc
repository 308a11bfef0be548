#include "layouts/frame_csv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lmt::layouts {
namespace {

using frames::Column;

TEST(FrameCsvTest, FieldsAreQuotedOnlyWhenTheyNeedIt) {
  EXPECT_EQ(CsvField("Лист 1"), "Лист 1");
  EXPECT_EQ(CsvField("A,B"), "\"A,B\"");
  EXPECT_EQ(CsvField("say \"hi\""), "\"say \"\"hi\"\"\"");
  EXPECT_EQ(CsvField("two\nlines"), "\"two\nlines\"");
  EXPECT_EQ(CsvField(""), "");
}

TEST(FrameCsvTest, OneColumnPerTagIgnoringCaseEmptyWhereMissing) {
  frames::FrameTable table;
  table.SetRowCount(4);
  table.SetCell(1, Column::kLayoutName, "Лист-1");
  table.SetCell(2, Column::kLayoutName, "P");
  table.SetCell(3, Column::kLayoutName, "Лист-2");
  const std::vector<FrameAttributes> attributes = {
      {{"ЛИСТ", "1"}, {"NAME", "План, этаж 1"}},
      {},  // a polyline frame
      {{"name", "Разрез"}, {"Лист", "2"}, {"LIST", "x"}},
  };
  const std::string csv = FramesCsv(table, attributes);
  ASSERT_EQ(csv.substr(0, 3), "\xEF\xBB\xBF");
  const size_t header_end = csv.find("\r\n");
  const std::string header = csv.substr(3, header_end - 3);
  EXPECT_TRUE(header.starts_with("№,Layout Name,Attribute,Block Name,"))
      << header;
  EXPECT_TRUE(header.ends_with(",Width,Height,ЛИСТ,NAME,LIST")) << header;
  // 27 fixed cells (26 commas), then the three tag columns.
  const std::string tail = ",,,,,,,,,,,,,,,,,,,,,,,,";
  EXPECT_NE(csv.find(",Лист-1," + tail + ",1,\"План, этаж 1\",\r\n"),
            std::string::npos)
      << csv;
  EXPECT_NE(csv.find(",P," + tail + ",,,\r\n"), std::string::npos) << csv;
  EXPECT_NE(csv.find(",Лист-2," + tail + ",2,Разрез,x\r\n"), std::string::npos)
      << csv;
}

}  // namespace
}  // namespace lmt::layouts
