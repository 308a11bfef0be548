#include "frames/frame_record.h"

#include <gtest/gtest.h>

namespace lmt::frames {
namespace {

// The table as the search leaves it for a turned block reference, and the
// record a reader gets: every field from its own column, numbers parsed.
TEST(FrameRecordTest, ReadsEveryFieldOfARow) {
  FrameTable table;
  table.SetRowCount(3);
  table.SetCell(1, Column::kNumber, "1");
  table.SetCell(1, Column::kLayoutName, "A-101");
  table.SetCell(1, Column::kAttribute, "Plan");
  table.SetCell(1, Column::kBlockName, "FRAME_A3");
  table.SetCell(1, Column::kId, "2A7");
  table.SetCell(1, Column::kTyp, "Block");
  table.SetCorners(1, {Point{0, 0}, {4, 0}, {4, 2}, {0, 2}});
  table.SetNumber(1, Column::kAngle, 0.5);

  FrameRecord r = ReadRecord(table, 1);
  EXPECT_EQ(r.number, "1");
  EXPECT_EQ(r.layout_name, "A-101");
  EXPECT_EQ(r.attribute, "Plan");
  EXPECT_EQ(r.block_name, "FRAME_A3");
  EXPECT_EQ(r.id, "2A7");
  EXPECT_EQ(r.kind, FrameKind::kBlock);
  EXPECT_TRUE(r.is_reference());
  EXPECT_EQ(r.angle, 0.5);
  ASSERT_TRUE(r.corners);
  EXPECT_EQ((*r.corners)[2], (Point{4, 2}));

  // A blank row: no corners, no kind, angle 0.
  FrameRecord blank = ReadRecord(table, 2);
  EXPECT_FALSE(blank.corners);
  EXPECT_EQ(blank.kind, FrameKind::kNone);
  EXPECT_FALSE(blank.is_reference());
  EXPECT_EQ(blank.angle, 0);

  // One edited corner cell that is no number spoils the corners only.
  table.SetCell(1, Column::kPointY3, "2,0");
  EXPECT_FALSE(ReadRecord(table, 1).corners);
  EXPECT_EQ(ReadRecord(table, 1).id, "2A7");
}

// The cell can be edited by hand: the kind is read in any letter case, and
// a text the search never writes is no kind.
TEST(FrameRecordTest, KindsInAnyCase) {
  EXPECT_EQ(KindOfTyp("XREF"), FrameKind::kXRef);
  EXPECT_EQ(KindOfTyp("polyline"), FrameKind::kPolyline);
  EXPECT_EQ(KindOfTyp(kTypBlock), FrameKind::kBlock);
  EXPECT_EQ(KindOfTyp("Circle"), FrameKind::kNone);
  EXPECT_EQ(KindWord(KindOfTyp(kTypXRef)), "xref");
  EXPECT_EQ(KindWord(FrameKind::kNone), "");
}

}  // namespace
}  // namespace lmt::frames
