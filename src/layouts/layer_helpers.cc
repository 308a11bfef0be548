#include "layouts/layer_helpers.h"

namespace lmt::layouts {

Result<host::LayerPtr> MakeLayer(host::Document& document,
                                 std::string_view name, bool frozen,
                                 bool locked, bool make_active) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!layers.ok()) return layers.status();
  Result<host::LayerPtr> layer = (*layers)->Add(name);
  if (!layer.ok()) return layer.status();
  // A thawed layer must be thawed before it can become active, and a layer
  // to be frozen must not be active: order the steps accordingly.
  (void)(*layer)->SetFreeze(frozen);
  (void)(*layer)->SetLock(locked);
  if (make_active) (void)document.SetActiveLayer(*layer);
  return layer;
}

void FreezeAllLayers(host::Document& document, bool frozen) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!layers.ok()) return;
  Result<std::vector<host::LayerPtr>> items = (*layers)->Items();
  if (!items.ok()) return;
  for (const host::LayerPtr& layer : *items) (void)layer->SetFreeze(frozen);
}

void DeleteLayer(host::Document& document, std::string_view name) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!layers.ok()) return;
  Result<host::LayerPtr> layer = (*layers)->Item(name);
  if (layer.ok()) (void)(*layer)->Delete();
}

}  // namespace lmt::layouts
