#include "core/view.h"

namespace lmt::core {

std::intptr_t HeadlessView::Create(Window&) {
  next_handle_ += 4;
  return next_handle_;
}

void HeadlessView::Show(Window&) {}

void HeadlessView::Resize(Window&, long width, long height) {
  width_ = width;
  height_ = height;
}

void HeadlessView::Refresh(Window&) {}

void HeadlessView::Destroy(Window&) {}

}  // namespace lmt::core
