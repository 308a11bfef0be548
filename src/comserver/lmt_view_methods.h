// The eight automation methods of LmtView as plain C++ calls, the seam
// between the COM face (view_dispatch.h) and the add-in's portable class.
// The dispatcher converts automation arguments and results; an implementation
// only sees these types. MakeLmtView() is defined by exactly one file of this
// folder: that file is the whole of the wiring to the add-in.
#ifndef LMT_COMSERVER_LMT_VIEW_METHODS_H_
#define LMT_COMSERVER_LMT_VIEW_METHODS_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace lmt::comserver {

class LmtViewMethods {
 public:
  virtual ~LmtViewMethods() = default;

  // Texts are UTF-8. Every method swallows its failures: the launcher never
  // sees an error from the add-in.
  virtual bool LmtStartDLL() = 0;
  virtual std::string LmtGetProg() = 0;
  virtual std::string LmtPutFileINIform() = 0;
  virtual std::int32_t LmtParent() = 0;
  virtual void LmtResize(std::int32_t width, std::int32_t height) = 0;
  virtual bool LmtStartProg() = 0;
  // `save` is the automation value as a 16-bit integer (true is -1); a value
  // that does not convert arrives as 0. Only -1 may act.
  virtual bool LmtExit(std::int16_t save) = 0;
  virtual bool FunctionCommands(std::string_view command) = 0;
};

// A new, not yet started view for one automation object.
std::unique_ptr<LmtViewMethods> MakeLmtView();

}  // namespace lmt::comserver

#endif  // LMT_COMSERVER_LMT_VIEW_METHODS_H_
