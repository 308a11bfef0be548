#include "core/lmt_view.h"

#include "core/file_util.h"

namespace lmt::core {

LmtView::LmtView(Environment env, WindowView* view)
    : addin_(std::move(env), view) {}

bool LmtView::LmtStartDLL() {
  addin_.InitGlobals();
  return true;
}

std::string LmtView::LmtGetProg() { return addin_.globals().product_name; }

std::string LmtView::LmtPutFileINIform() {
  return PathToUtf8(addin_.globals().layout_file_path);
}

std::int32_t LmtView::LmtParent() {
  return static_cast<std::int32_t>(addin_.MainWindowHandle());
}

void LmtView::LmtResize(std::int32_t width, std::int32_t height) {
  addin_.ResizeMainWindow(width, height);
}

bool LmtView::LmtStartProg() {
  addin_.StartProgram();
  return true;
}

bool LmtView::LmtExit(std::int16_t save) {
  if (save == kVariantTrue) addin_.ExitProgram();
  return true;
}

bool LmtView::FunctionCommands(std::string_view) { return true; }

}  // namespace lmt::core
