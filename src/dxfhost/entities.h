// The object model's entities over DXF records. MakeEntity hands out the
// most derived class for the record's type: LWPOLYLINE Polyline, INSERT
// BlockReference, ATTRIB/ATTDEF Attribute, VIEWPORT PViewport, TEXT Text,
// MTEXT MText, MULTILEADER MLeader, anything else a plain Entity.
//
// ObjectID is the numeric value of the handle (handle 2F gives 47), so it is
// the same in every session that opens the file and ObjectIdToObject is a
// handle lookup. An erased entity answers kNotFound to everything.
#ifndef LMT_DXFHOST_ENTITIES_H_
#define LMT_DXFHOST_ENTITIES_H_

#include <memory>
#include <string>
#include <string_view>

#include "dxfhost/drawing.h"
#include "host/entity.h"

namespace lmt::dxfhost {

// The class name a CAD program reports for DXF type `type`
// ("LWPOLYLINE" -> "AcDbPolyline", "INSERT" -> "AcDbBlockReference").
std::string ObjectNameOfType(std::string_view type);

// REQUIRES: `id` is a live record of d's document.
host::EntityPtr MakeEntity(const std::shared_ptr<Drawing>& d, dxf::RecordId id);

// The record behind an entity of this host, or kNoRecord for an entity of
// another drawing or host.
dxf::RecordId RecordOf(const host::Entity& entity, const Drawing* drawing);

// Adds `app` (encoded) to the drawing's APPID table unless it is there.
Status RegisterApplication(Drawing& d, const std::string& app);

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_ENTITIES_H_
