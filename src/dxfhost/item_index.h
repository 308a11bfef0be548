// The range check of every collection's Item(index): the object model counts
// from 0 and answers kNotFound past either end.
#ifndef LMT_DXFHOST_ITEM_INDEX_H_
#define LMT_DXFHOST_ITEM_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/status.h"

namespace lmt::dxfhost {

inline Status CheckItemIndex(int32_t index, size_t count) {
  if (index < 0 || static_cast<size_t>(index) >= count) {
    return Status::NotFound("index " + std::to_string(index) +
                            " is out of range");
  }
  return Status();
}

}  // namespace lmt::dxfhost

#endif  // LMT_DXFHOST_ITEM_INDEX_H_
