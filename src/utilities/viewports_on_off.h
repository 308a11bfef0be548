// Switching every paper-space viewport of the active drawing on or off at
// once, in the two forms the add-in has: the command window's Start (the
// user runs it on the open drawing) and the routine layout creation calls
// before and after it makes layouts.
//
// Which viewports: the whole drawing is selected through the set
// "NaborObiektov" with the filter 0 = "VIEWPORT"; each found entity whose
// ObjectName is "AcDbViewport" is switched unless it is its layout's own
// paper viewport (entity 0 of the layout's block), which is never touched.
//
// Failures: a host call that fails for one entity skips that entity and the
// walk goes on; nothing is shown to the user. The skips come back in the
// report. The routines do not connect; the Start command does.
#ifndef LMT_UTILITIES_VIEWPORTS_ON_OFF_H_
#define LMT_UTILITIES_VIEWPORTS_ON_OFF_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/document.h"
#include "host/layout.h"
#include "host/outcome.h"
#include "host/session.h"
#include "host/skip_log.h"
#include "host/user.h"

namespace lmt::utilities {

// The layout made current while layout creation switches viewports on.
inline constexpr std::string_view kTemporaryLayoutName = "ViewportOffOn";
// Status texts of layout creation's form.
inline constexpr std::string_view kStatusViewportsOff =
    "Подготовка листов - ОТКЛЮЧЕНИЕ вьюпортов.";
inline constexpr std::string_view kStatusViewportsOn =
    "Подготовка листов - ВКЛЮЧЕНИЕ вьюпортов.";
// The text of the box that ends the window's Start.
inline constexpr std::string_view kOkText = "Ok";

struct SwitchReport {
  int32_t selected = 0;       // entities the selection found
  int32_t switched = 0;       // viewports given the requested state
  int32_t own_viewports = 0;  // layouts' own viewports passed over
  std::vector<std::string> switched_handles;  // in the order switched
  host::SkipLog skips;
};

// Switches the viewports of `document` on (`on`) or off. Sets the progress
// display of `user` to the selection's size and advances it by one for every
// entity, touched or not, pumping events before each. An empty selection does
// nothing further.
SwitchReport SwitchViewports(host::Document& document, host::User& user,
                             bool on);

// How layout creation's form reaches the temporary layout when it deletes it.
// nanoCAD is asked through the collection's default member, every other host
// through Layouts.Item; the difference is deliberate and kept.
enum class LayoutLookup { kItem, kDefaultMember };
LayoutLookup TemporaryLayoutLookup(std::string_view host_name);

// The layout named `name` as `lookup` reaches it (kNotFound when absent).
Result<host::LayoutPtr> LookUpLayout(const host::Layouts& layouts,
                                     std::string_view name,
                                     LayoutLookup lookup);

// Layout creation's form (module ModulViewportOffOn): SwitchViewports with
// the status text of the direction shown first and, when switching on, the
// temporary layout "ViewportOffOn" current around the switching (an existing
// one is reused) and deleted afterwards. `host_name` is the connection's.
// Which layout is current afterwards is left to the host.
SwitchReport ViewportOffOn(host::Document& document, std::string_view host_name,
                           host::User& user, bool on);
// The same on a connected session (REQUIRES session.Connect() succeeded).
SwitchReport ViewportOffOn(host::Session& session, bool on);

// Command_Start of OknoFunctionOnOffViewport: connects (kNotConnected when
// that fails); when Check_ViewportOnOff is ticked switches on if
// Option_ViewportOnOff(0) is selected, otherwise off; then shows "Ok" as an
// information box titled with the add-in window's title, also when nothing
// was done. `report`, when given, receives what the switching did.
host::Outcome StartViewportsOnOff(host::Session& session,
                                  SwitchReport* report = nullptr);

}  // namespace lmt::utilities

#endif  // LMT_UTILITIES_VIEWPORTS_ON_OFF_H_
