// MakeLmtView() while core has no LmtView yet (CMakeLists.txt picks
// core_view.cc once it has): a stand-in with the results the launcher relies
// on (true from every boolean method, the Russian product name, the
// launcher's file in the settings folder) and no windows.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "comserver/lmt_view_methods.h"

namespace lmt::comserver {
namespace {

class StandInView : public LmtViewMethods {
 public:
  bool LmtStartDLL() override { return true; }
  std::string LmtGetProg() override { return "Лайомат"; }
  std::string LmtPutFileINIform() override {
    const char* appdata = std::getenv("APPDATA");
    return std::string(appdata ? appdata : "") + "\\Layomat\\FormViewport.ini";
  }
  std::int32_t LmtParent() override { return 0; }
  void LmtResize(std::int32_t, std::int32_t) override {}
  bool LmtStartProg() override { return true; }
  bool LmtExit(std::int16_t) override { return true; }
  bool FunctionCommands(std::string_view) override { return true; }
};

}  // namespace

std::unique_ptr<LmtViewMethods> MakeLmtView() {
  return std::make_unique<StandInView>();
}

}  // namespace lmt::comserver
