// Keeping the add-in's window in front of the CAD program: the topmost
// switches around the batch import and Lisp runs (SubPoverhVsehProgram,
// SubNEPoverhVsehProgram), the return to the front after a command during
// which the CAD program had the focus (BringToFront), and activating a
// program's window by its caption. The pending messages are let through at
// fixed points because the order changes do not take effect while the CAD
// program keeps the thread busy otherwise.
#ifndef LMT_UI_WINDOW_ORDER_H_
#define LMT_UI_WINDOW_ORDER_H_

#include <windows.h>

#include <string_view>

namespace lmt::ui {

// Lets the pending window messages of this thread run `times` rounds.
// A WM_QUIT seen meanwhile is posted again for the outer loop.
void PumpMessages(int times);

// `window` topmost (keeping position and size), with two rounds of
// messages before and after.
void SubPoverhVsehProgram(HWND window);
// The same with the not-topmost order.
void SubNEPoverhVsehProgram(HWND window);

// Activates the visible top-level window whose title starts with `caption`
// (case ignored; a title that contains it is taken when none starts with
// it). Returns false when there is none.
bool ActivateWindowByCaption(std::string_view caption);

// Brings `window` back in front without leaving it topmost: messages,
// topmost, messages, the window titled `product_name` activated, messages,
// not topmost, messages.
void BringToFront(HWND window, std::string_view product_name);

}  // namespace lmt::ui

#endif  // LMT_UI_WINDOW_ORDER_H_
