#include "dxf/viewport.h"

namespace lmt::dxf {

void Viewport::SetSize(double width, double height) {
  SetDouble(40, width);
  SetDouble(41, height);
}

void Viewport::SetViewCenter(double x, double y) {
  int i = SetDouble(12, x);
  if (i + 1 < static_cast<int>(tags().size()) && tags()[i + 1].code == 22) {
    SetValueAt(i + 1, FormatDouble(y));
  } else {
    InsertTag(i + 1, 22, FormatDouble(y));
  }
}

void Viewport::SetOn(bool on, int status) {
  int f = flags();
  SetFlags(on ? (f & ~kFlagOff) : (f | kFlagOff));
  SetInt(68, on ? status : 0);
}

void Viewport::SetLocked(bool locked) {
  int f = flags();
  SetFlags(locked ? (f | kFlagLocked) : (f & ~kFlagLocked));
}

}  // namespace lmt::dxf
