#include "ui/windows_addin.h"

#include <utility>

#include "frames/frame_table.h"

namespace lmt::ui {

WindowsAddIn::WindowsAddIn(HINSTANCE instance, core::Environment env,
                           const addin::RuntimeFactory& make_runtime)
    : view_(instance),
      lmt_(std::move(env), &view_),
      runtime_(make_runtime ? make_runtime()
                            : std::make_unique<addin::NoHostRuntime>()),
      user_(view_, lmt_.addin().globals().product_name),
      session_(lmt_.addin().globals(), lmt_.addin().windows(), user_,
               *runtime_),
      commands_(session_, view_) {
  view_.Attach(&commands_, &lmt_.addin().globals());
  // The frame table's header follows the interface language, set once the
  // language has been applied at start-up.
  lmt_.addin().AddStartupRoutine([this](core::AddIn& addin) {
    frames::TableCaptions captions;
    for (int i = 0; i < core::kFrameTableCaptionCount; ++i) {
      captions[static_cast<size_t>(i)] =
          addin.windows().okno_lmt.FrameTableCaption(i);
    }
    commands_.frame_state().table.SetCaptions(captions);
  });
}

}  // namespace lmt::ui
