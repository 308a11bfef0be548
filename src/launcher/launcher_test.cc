// The launcher's protocol against the registered Layomats.dll of this build:
// the add-in created by its program identifier, its main window embedded
// and sized with the frame, and LmtExit on close.
#include <gtest/gtest.h>
#include <objbase.h>

#include "launcher/add_in_client.h"
#include "launcher/launcher_window.h"

namespace lmt::launcher {
namespace {

class LauncherTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    ASSERT_TRUE(SUCCEEDED(client_.Create()));
  }
  void TearDown() override { CoUninitialize(); }

  AddInClient client_;
};

TEST_F(LauncherTest, FrameEmbedsTheMainWindowAndFollowsItsSize) {
  LauncherWindow window(GetModuleHandleW(nullptr), client_);
  ASSERT_TRUE(window.Start(SW_SHOWNORMAL));
  HWND child = window.embedded();
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(GetParent(child), window.frame());
  EXPECT_TRUE(GetWindowLongPtrW(child, GWL_STYLE) & WS_CHILD);
  wchar_t title[64] = {};
  GetWindowTextW(window.frame(), title, 64);
  EXPECT_STREQ(title, L"Лайомат");

  SetWindowPos(window.frame(), nullptr, 0, 0, 700, 500,
               SWP_NOMOVE | SWP_NOZORDER);
  RECT frame_client, child_rect;
  GetClientRect(window.frame(), &frame_client);
  GetWindowRect(child, &child_rect);
  // Twips round trip: within a pixel of the frame's client area.
  EXPECT_NEAR(child_rect.right - child_rect.left, frame_client.right, 1);
  EXPECT_NEAR(child_rect.bottom - child_rect.top, frame_client.bottom, 1);

  SendMessageW(window.frame(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(window.closed());
  EXPECT_FALSE(IsWindow(child));  // LmtExit(True) unloaded the add-in's windows
  MSG msg;
  while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
  }
}

TEST_F(LauncherTest, ProtocolAnswersBeforeTheInterfaceStarts) {
  ASSERT_TRUE(client_.LmtStartDLL());
  EXPECT_EQ(client_.LmtGetProg().value_or(L""), L"Лайомат");
  const std::wstring ini = client_.LmtPutFileINIform().value_or(L"");
  EXPECT_TRUE(ini.ends_with(L"\\Layomat\\FormViewport.ini")) << ini.size();
  // The main window exists, hidden, before LmtStartProg.
  HWND main = client_.LmtParent();
  ASSERT_NE(main, nullptr);
  EXPECT_TRUE(IsWindow(main));
  EXPECT_FALSE(IsWindowVisible(main));
  EXPECT_TRUE(client_.LmtExit(false));
  EXPECT_TRUE(IsWindow(main));
  EXPECT_TRUE(client_.LmtExit(true));
}

}  // namespace
}  // namespace lmt::launcher
