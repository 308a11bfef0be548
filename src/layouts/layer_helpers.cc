#include "layouts/layer_helpers.h"

#include "layouts/sheet_texts.h"

namespace lmt::layouts {

void MakeLayer(host::Document& document, std::string_view name, bool frozen,
               bool locked, bool make_active, host::SkipLog& skips) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!skips.Record(name, "layers", layers)) return;
  Result<host::LayerPtr> layer = (*layers)->Add(name);
  if (!skips.Record(name, "add layer", layer)) return;
  // A thawed layer must be thawed before it can become active, and a layer
  // to be frozen must not be active: order the steps accordingly.
  skips.Record(name, "freeze", (*layer)->SetFreeze(frozen));
  skips.Record(name, "lock", (*layer)->SetLock(locked));
  if (make_active) {
    skips.Record(name, "active layer", document.SetActiveLayer(*layer));
  }
}

void FreezeAllLayers(host::Document& document, bool frozen,
                     std::string_view current, host::SkipLog& skips) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!skips.Record("", "layers", layers)) return;
  Result<std::vector<host::LayerPtr>> items = (*layers)->Items();
  if (!skips.Record("", "layers", items)) return;
  for (const host::LayerPtr& layer : *items) {
    const Status status = layer->SetFreeze(frozen);
    if (status.ok()) continue;
    // The name is read only for a refusal, so a run costs no extra calls.
    const std::string name = layer->Name().value_or(std::string());
    if (frozen && NamesEqualNoCase(name, current)) continue;
    skips.Record(name, "freeze", status);
  }
}

void DeleteLayer(host::Document& document, std::string_view name,
                 host::SkipLog& skips) {
  Result<host::LayersPtr> layers = document.Layers();
  if (!skips.Record(name, "layers", layers)) return;
  Result<host::LayerPtr> layer = (*layers)->Item(name);
  if (layer.ok()) skips.Record(name, "delete layer", (*layer)->Delete());
}

}  // namespace lmt::layouts
