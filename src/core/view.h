// How window models become visible windows. The Win32 user interface
// implements WindowView; the portable core and the command line use
// HeadlessView, which shows nothing and hands out fake handles.
#ifndef LMT_CORE_VIEW_H_
#define LMT_CORE_VIEW_H_

#include <cstdint>

#include "core/window.h"

namespace lmt::core {

class WindowView {
 public:
  virtual ~WindowView() = default;
  // Makes the window of `model`, hidden; returns its handle, never 0.
  // Called once per model and run.
  virtual std::intptr_t Create(Window& model) = 0;
  // Shows the main window modeless and without an owner.
  virtual void Show(Window& model) = 0;
  // Moves the window to 0, 0 and sizes it (twips).
  virtual void Resize(Window& model, long width, long height) = 0;
  // The model changed outside the window (settings read, language
  // applied): show the new values and captions.
  virtual void Refresh(Window& model) = 0;
  // Unloads the window for good (exit only).
  virtual void Destroy(Window& model) = 0;
};

class HeadlessView : public WindowView {
 public:
  std::intptr_t Create(Window& model) override;
  void Show(Window& model) override;
  void Resize(Window& model, long width, long height) override;
  void Refresh(Window& model) override;
  void Destroy(Window& model) override;

  long width() const { return width_; }
  long height() const { return height_; }

 private:
  std::intptr_t next_handle_ = 0x10000;
  long width_ = 0;
  long height_ = 0;
};

}  // namespace lmt::core

#endif  // LMT_CORE_VIEW_H_
