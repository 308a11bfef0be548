// The interface language. The Russian installation keeps the built-in
// Russian captions and messages. An international one (language mode not
// "Rus", ASCII case ignored) reads every caption from "Lang.ini" (section:
// the window's name, key: the control's key, default: the built-in English
// caption) and the 22 messages from section MSG (MSG0001 .. MSG0022, default
// the English text), so an empty file gives English throughout.
#ifndef LMT_CORE_LANGUAGE_H_
#define LMT_CORE_LANGUAGE_H_

#include "core/globals.h"
#include "core/windows.h"

namespace lmt::core {

void ApplyLanguage(Globals& globals, Windows& windows);

}  // namespace lmt::core

#endif  // LMT_CORE_LANGUAGE_H_
