#include "host/host_kind.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/host_list.h"

namespace lmt::host {
namespace {

TEST(HostKindTest, NamesAndIdentifiersByIndex) {
  struct Case {
    int index;
    const char* name;
    const char* prog_id;
  };
  for (const Case& c : {
           Case{0, "AutoCAD", "AutoCAD.Application"},
           Case{1, "NanoCAD", "nanoCAD.Application"},
           Case{2, "ZWCAD", "ZWCAD.Application"},
           Case{3, "BricsCAD", "BricscadApp.AcadApplication"},
           Case{4, "GstarCAD", "GCAD.Application"},
           Case{5, "ProgeCAD", "Icad.Application"},
           Case{6, "IntelliCAD", "Icad.Application"},
       }) {
    std::optional<HostKind> kind = HostKindFromIndex(c.index);
    ASSERT_TRUE(kind.has_value()) << c.index;
    EXPECT_EQ(HostKindName(*kind), c.name);
    EXPECT_EQ(HostProgramId(*kind), c.prog_id);
  }
  EXPECT_FALSE(HostKindFromIndex(-1).has_value());
  EXPECT_FALSE(HostKindFromIndex(7).has_value());
}

TEST(HostKindTest, ReleaseListIdentifiers) {
  EXPECT_EQ(AutoCadReleaseProgramId("Auto"), "AutoCAD.Application");
  EXPECT_EQ(AutoCadReleaseProgramId(""), "AutoCAD.Application");
  EXPECT_EQ(AutoCadReleaseProgramId("09"), "AutoCAD.Application.17.2");
  EXPECT_EQ(AutoCadReleaseProgramId("13"), "AutoCAD.Application.19");
  EXPECT_EQ(AutoCadReleaseProgramId("22"), "AutoCAD.Application.26");
  EXPECT_FALSE(AutoCadReleaseProgramId("auto").has_value());
  EXPECT_FALSE(AutoCadReleaseProgramId("23").has_value());
  EXPECT_FALSE(AutoCadReleaseProgramId("9").has_value());
  EXPECT_EQ(AutoCadReleases().size(), 14u);
}

TEST(HostKindTest, AutoCadYearFromVersionPrefix) {
  EXPECT_EQ(AutoCadYear("17.2s (LMS Tech)"), 2009);
  EXPECT_EQ(AutoCadYear("18.0s (LMS Tech)"), 2010);
  EXPECT_EQ(AutoCadYear("19.1"), 2014);
  EXPECT_EQ(AutoCadYear("26.0s (LMS Tech)"), 2022);
  // Releases newer than the table count as the newest.
  EXPECT_EQ(AutoCadYear("27.0s (LMS Tech)"), 2050);
  EXPECT_EQ(AutoCadYear("25.1"), 2050);
  EXPECT_EQ(AutoCadYear(""), 2050);
}

TEST(HostKindTest, NanoCadYearIsMajorMinor) {
  EXPECT_DOUBLE_EQ(NanoCadYear("23.0.6360.6019"), 23.0);
  EXPECT_DOUBLE_EQ(NanoCadYear("8.5.4000.0"), 8.5);
  EXPECT_DOUBLE_EQ(NanoCadYear("20.1"), 20.1);
  EXPECT_DOUBLE_EQ(NanoCadYear("21"), 21);
  EXPECT_DOUBLE_EQ(NanoCadYear("5.1.2345.0"), 5.1);
  EXPECT_DOUBLE_EQ(NanoCadYear("x5.1"), kNewestYear);
  EXPECT_DOUBLE_EQ(NanoCadYear(""), kNewestYear);
}

TEST(HostKindTest, HostNamesCompareWithoutCase) {
  EXPECT_TRUE(HostNameIs("zwcad", kZwCadName));
  EXPECT_FALSE(HostNameIs("ZWCAD+", kZwCadName));
  EXPECT_TRUE(HostNameContains("AutoCAD", "autocad"));
  EXPECT_FALSE(HostNameContains("ZWCAD+", "AutoCAD"));
}

TEST(HostListTest, ReleaseListOnlyForAutoCad) {
  for (int index = 0; index < kHostKindCount; ++index) {
    EXPECT_EQ(OnHostKindClick(index, /*started=*/true, nullptr), index == 0);
  }
}

TEST(HostListTest, NanoCadOpensRegistrationOnlyAfterStartUp) {
  std::vector<int> opened;
  for (bool started : {false, true}) {
    for (int index = 0; index < kHostKindCount; ++index) {
      OnHostKindClick(index, started, [&] { opened.push_back(index); });
    }
  }
  EXPECT_EQ(opened, std::vector<int>{1});
}

}  // namespace
}  // namespace lmt::host
