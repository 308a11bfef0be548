// The layer helpers layout creation shares: make a layer with a given
// state, freeze or thaw every layer of a drawing, delete a layer.
//
// Host refusals are swallowed step by step (the active layer refuses to
// freeze, layer "0" to be deleted): each helper does what the host lets
// it and reports only whether the layer could be had at all.
#ifndef LMT_LAYOUTS_LAYER_HELPERS_H_
#define LMT_LAYOUTS_LAYER_HELPERS_H_

#include <string_view>

#include "core/status.h"
#include "host/object_model.h"

namespace lmt::layouts {

// Layers.Add(name), then Freeze and Lock as given, and ActiveLayer when
// `make_active`. The layer, or the host's refusal of Layers or Add.
Result<host::LayerPtr> MakeLayer(host::Document& document,
                                 std::string_view name, bool frozen,
                                 bool locked, bool make_active);

// Sets Freeze on every layer (the active one refuses and stays thawed).
void FreezeAllLayers(host::Document& document, bool frozen);

// Deletes the layer `name` when there is one and the host allows it.
void DeleteLayer(host::Document& document, std::string_view name);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_LAYER_HELPERS_H_
