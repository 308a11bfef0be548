// The drawing's named views and registered applications on the embedded
// host: what SetView keeps comes back from Views, also after a save; a view
// deleted is gone; an application registered twice is there once.
#include <gtest/gtest.h>

#include <numbers>
#include <string>
#include <vector>

#include "dxfhost/test_support.h"

namespace lmt::dxfhost {
namespace {

// Without regard to ASCII case.
size_t Occurrences(std::string text, const std::string& word) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  size_t n = 0;
  for (size_t at = text.find(word); at != std::string::npos;
       at = text.find(word, at + 1)) {
    ++n;
  }
  return n;
}

TEST(NamedViewsTest, ViewsComeBackAsSetAndGoWhenDeleted) {
  const std::string dir = test::ScratchDir();
  const std::string saved = dir + "/views.dxf";
  {
    test::Session s(test::TestdataPath("example.dxf"));
    ASSERT_NE(s.doc, nullptr);
    const size_t before =
        s.doc->Views().value_or(std::vector<host::NamedView>{}).size();
    host::NamedView north{"North", {100, 200, 0}, 40, 30, 0};
    host::NamedView turned{"Turned", {-5, 7, 0}, 10, 20, std::numbers::pi / 2};
    ASSERT_TRUE(s.doc->SetView(north).ok());
    ASSERT_TRUE(s.doc->SetView(turned).ok());
    north.width = 44;  // replaced, not added
    ASSERT_TRUE(s.doc->SetView(north).ok());
    ASSERT_TRUE(s.doc->SaveAs(saved, 65).ok());
    EXPECT_EQ(s.doc->Views().value_or(std::vector<host::NamedView>{}).size(),
              before + 2);
  }
  test::Session s(saved);
  ASSERT_NE(s.doc, nullptr);
  Result<std::vector<host::NamedView>> views = s.doc->Views();
  ASSERT_TRUE(views.ok());
  ASSERT_GE(views->size(), 2u);
  const host::NamedView& north = (*views)[views->size() - 2];
  const host::NamedView& turned = views->back();
  EXPECT_EQ(north.name, "North");
  EXPECT_NEAR(north.center.x, 100, 1e-9);
  EXPECT_NEAR(north.center.y, 200, 1e-9);
  EXPECT_NEAR(north.width, 44, 1e-9);
  EXPECT_NEAR(north.height, 30, 1e-9);
  EXPECT_NEAR(north.twist, 0, 1e-9);
  EXPECT_EQ(turned.name, "Turned");
  EXPECT_NEAR(turned.center.x, -5, 1e-9);
  EXPECT_NEAR(turned.twist, std::numbers::pi / 2, 1e-9);

  ASSERT_TRUE(s.doc->DeleteView("north").ok());
  EXPECT_FALSE(s.doc->HasView("North").value_or(true));
  EXPECT_EQ(s.doc->DeleteView("North").code(), StatusCode::kNotFound);
  EXPECT_TRUE(s.doc->HasView("Turned").value_or(false));
}

TEST(NamedViewsTest, ApplicationRegisteredOnce) {
  const std::string saved = test::ScratchDir() + "/apps.dxf";
  test::Session s(test::TestdataPath("example.dxf"));
  ASSERT_NE(s.doc, nullptr);
  ASSERT_TRUE(s.doc->RegisterApplication("LMT_REGISTERED").ok());
  ASSERT_TRUE(s.doc->RegisterApplication("lmt_registered").ok());
  EXPECT_EQ(s.doc->RegisterApplication("").code(),
            StatusCode::kInvalidArgument);
  ASSERT_TRUE(s.doc->SaveAs(saved, 65).ok());
  EXPECT_EQ(Occurrences(test::ReadFile(saved), "LMT_REGISTERED"), 1u);
  EXPECT_EQ(test::CheckDxf(saved, test::kExampleProblems), "");
}

}  // namespace
}  // namespace lmt::dxfhost
