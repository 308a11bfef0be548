#include "automation/members.h"

#include <oleauto.h>

#include "automation/tables.h"

namespace lmt::automation {

Result<std::vector<host::EntityPtr>> EntitiesArg(Call& call, size_t index) {
  if (index >= call.args.size()) return MissingArgument(index);
  Result<std::vector<comhost::ComPtr<IDispatch>>> objects =
      comhost::ReadDispatchArray(*call.args[index]);
  if (!objects.ok()) return objects.status();
  std::vector<host::EntityPtr> out;
  for (const comhost::ComPtr<IDispatch>& d : *objects) {
    host::EntityPtr entity =
        host::As<host::Entity>(ServerObject::Unwrap(d.get()));
    if (entity == nullptr) {
      return Status::InvalidArgument("not an entity of this drawing");
    }
    out.push_back(std::move(entity));
  }
  return out;
}

void SetResult(Call& call, comhost::ScopedVariant value) {
  VariantClear(call.result);
  *call.result = value.Release();
}

void ReturnObjects(Call& call, const std::vector<host::ObjectPtr>& objects) {
  std::vector<IDispatch*> raw;
  for (const host::ObjectPtr& object : objects) {
    if (object == nullptr) continue;
    raw.push_back(ServerObject::Create(object, TableFor(*object), call.server));
  }
  SetResult(call, comhost::DispatchArrayVariant(raw));
  // The array holds its own references.
  for (IDispatch* d : raw) d->Release();
}

const ClassTable& TableFor(const host::Object& object) {
  const host::Object* o = &object;
  auto is = [o](auto* tag) {
    return dynamic_cast<const std::remove_pointer_t<decltype(tag)>*>(o) !=
           nullptr;
  };
  if (is(static_cast<host::Entity*>(nullptr))) return kEntityTable;
  if (is(static_cast<host::Block*>(nullptr))) return kBlockTable;
  if (is(static_cast<host::Layout*>(nullptr))) return kLayoutTable;
  if (is(static_cast<host::Layer*>(nullptr))) return kLayerTable;
  if (is(static_cast<host::SelectionSet*>(nullptr))) {
    return kSelectionSetTable;
  }
  if (is(static_cast<host::Database*>(nullptr))) return kDocumentTable;
  if (is(static_cast<host::Blocks*>(nullptr))) return kBlocksTable;
  if (is(static_cast<host::Layouts*>(nullptr))) return kLayoutsTable;
  if (is(static_cast<host::Layers*>(nullptr))) return kLayersTable;
  if (is(static_cast<host::Linetype*>(nullptr))) return kLinetypeTable;
  if (is(static_cast<host::Linetypes*>(nullptr))) return kLinetypesTable;
  if (is(static_cast<host::TextStyle*>(nullptr))) return kTextStyleTable;
  if (is(static_cast<host::TextStyles*>(nullptr))) return kTextStylesTable;
  if (is(static_cast<host::SelectionSets*>(nullptr))) {
    return kSelectionSetsTable;
  }
  if (is(static_cast<host::Viewport*>(nullptr))) return kViewportTable;
  if (is(static_cast<host::Utility*>(nullptr))) return kUtilityTable;
  if (is(static_cast<host::Plot*>(nullptr))) return kPlotTable;
  if (is(static_cast<host::Documents*>(nullptr))) return kDocumentsTable;
  if (is(static_cast<host::Preferences*>(nullptr))) return kPreferencesTable;
  if (is(static_cast<host::Application*>(nullptr))) return kApplicationTable;
  return kEmptyTable;
}

}  // namespace lmt::automation
