// LmtView, the add-in's one public class, as the launcher calls it:
// LmtStartDLL first, then LmtGetProg and LmtPutFileINIform, then
// LmtStartProg, then LmtParent and LmtResize as often as needed, and
// LmtExit(True) at the end. Every method swallows its failures; booleans are
// automation values, true being -1.
#ifndef LMT_CORE_LMT_VIEW_H_
#define LMT_CORE_LMT_VIEW_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "core/program.h"

namespace lmt::core {

inline constexpr std::int16_t kVariantTrue = -1;
inline constexpr std::int16_t kVariantFalse = 0;

class LmtView {
 public:
  // `view` as for AddIn (nullptr: headless).
  explicit LmtView(Environment env, WindowView* view = nullptr);

  // Runs InitGlobals. Always true.
  bool LmtStartDLL();
  // The product name: "Лайомат", or "Layomat" with Lang.ini.
  std::string LmtGetProg();
  // The full path of the launcher's "FormViewport.ini" in the settings
  // folder; the add-in never opens it.
  std::string LmtPutFileINIform();
  // The main window's handle; the window is made hidden when it is not
  // there yet (also before LmtStartProg).
  std::int32_t LmtParent();
  // Moves the main window to 0, 0 with the given size (twips). The
  // automation result is an empty variant.
  void LmtResize(std::int32_t width, std::int32_t height);
  // Builds and shows the interface (StartProgram). Always true.
  bool LmtStartProg();
  // Only the canonical true (-1) saves the settings and unloads every
  // window; any other value, 1 included, does nothing. Always true.
  bool LmtExit(std::int16_t save);
  // Reserved for the launcher's commands: accepts any text, does nothing.
  // Always true.
  bool FunctionCommands(std::string_view command);

  AddIn& addin() { return addin_; }

 private:
  AddIn addin_;
};

}  // namespace lmt::core

#endif  // LMT_CORE_LMT_VIEW_H_
