// Repairs to the section structure of a damaged tag stream, made before a
// drawing is built from it, the way CAD programs' recover commands make
// them. Only what has one sensible reading is repaired:
//  - header variables written after the header's ENDSEC (dxflib 2 writes
//    $ACADVER and $HANDSEED, ENDSEC, the other variables, ENDSEC again) go
//    back into the header, and the second ENDSEC goes;
//  - a section that runs into the next SECTION, EOF or the end of the file
//    gets its ENDSEC, and a block or table that runs into the next one or
//    the end of its section gets its ENDBLK or ENDTAB;
//  - an ENDSEC outside any section is dropped;
//  - a file without EOF gets one.
// Anything else (a stray record between sections, a broken tag) is left
// for the reader to refuse.
#ifndef LMT_DXF_RECOVERY_H_
#define LMT_DXF_RECOVERY_H_

#include <string>
#include <vector>

#include "dxf/tag_reader.h"

namespace lmt::dxf {

struct Repair {
  size_t tag_index;  // in the stream as read, for its location
  std::string what;
};

// Rewrites `file`'s tags and record starts when anything was repaired.
std::vector<Repair> RepairSections(TagFile* file);

}  // namespace lmt::dxf

#endif  // LMT_DXF_RECOVERY_H_
