// The layer helpers layout creation shares: make a layer with a given
// state, freeze or thaw every layer of a drawing, delete a layer.
//
// Host refusals are skipped step by step and recorded in the run's skip
// log under the layer's name: each helper does what the host lets it.
#ifndef LMT_LAYOUTS_LAYER_HELPERS_H_
#define LMT_LAYOUTS_LAYER_HELPERS_H_

#include <string_view>

#include "host/object_model.h"
#include "host/skip_log.h"

namespace lmt::layouts {

// Layers.Add(name), then Freeze and Lock as given, and ActiveLayer when
// `make_active`.
void MakeLayer(host::Document& document, std::string_view name, bool frozen,
               bool locked, bool make_active, host::SkipLog& skips);

// Sets Freeze on every layer. The current layer `current` refuses to
// freeze on every host; that refusal is expected and not recorded.
void FreezeAllLayers(host::Document& document, bool frozen,
                     std::string_view current, host::SkipLog& skips);

// Deletes the layer `name` when there is one.
void DeleteLayer(host::Document& document, std::string_view name,
                 host::SkipLog& skips);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYER_HELPERS_H_
