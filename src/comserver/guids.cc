// The one definition of the GUIDs that widl declares in layomats_h.h.
#include <initguid.h>

#include "layomats_h.h"  // made by widl from layomats.idl
