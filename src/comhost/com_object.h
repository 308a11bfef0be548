// The base of every object-model object over IDispatch: one automation
// object (one owned reference), the type key its DISPIDs are cached under,
// and the application's shared context and gate; plus the typed call
// helpers the wrappers are written with and the functions that wrap a
// returned object as the right host class.
//
// Ownership follows object.h: each wrapper holds one reference and releases
// it when the last shared_ptr goes. Two wrappers of the same drawing object
// are two references to it.
#ifndef LMT_COMHOST_COM_OBJECT_H_
#define LMT_COMHOST_COM_OBJECT_H_

#include <oaidl.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "comhost/com_ptr.h"
#include "comhost/dispatch.h"
#include "comhost/variants.h"
#include "core/status.h"
#include "host/object_model.h"

namespace lmt::comhost {

// What all objects of one application share.
struct Shared {
  std::shared_ptr<host::CallGate> gate;
  std::shared_ptr<ComContext> context;
};

class ComObject {
 public:
  virtual ~ComObject() = default;

  IDispatch* dispatch() const { return dispatch_.get(); }
  const Shared& shared() const { return shared_; }
  const std::string& type_key() const { return type_key_; }

 protected:
  // REQUIRES: dispatch is not null.
  ComObject(Shared shared, ComPtr<IDispatch> dispatch, std::string type_key);

  Result<ScopedVariant> Call(std::string_view name,
                             std::vector<ScopedVariant> args = {}) const;
  Status Put(std::string_view name, ScopedVariant value) const;

  Result<std::string> GetText(std::string_view name) const;
  Result<bool> GetBool(std::string_view name) const;
  Result<int32_t> GetI4(std::string_view name) const;
  Result<int64_t> GetI8(std::string_view name) const;
  // An object id: VT_I8 bits read as unsigned (ids are handles, which use
  // all 64 bits).
  Result<uint64_t> GetId(std::string_view name) const;
  Result<double> GetR8(std::string_view name) const;
  Result<host::Point> GetPoint(std::string_view name) const;
  // A member that returns an object; kNotFound when it returns none.
  Result<ComPtr<IDispatch>> GetDispatch(
      std::string_view name, std::vector<ScopedVariant> args = {}) const;
  // A method without a result worth reading.
  Status Do(std::string_view name, std::vector<ScopedVariant> args = {}) const;

 private:
  Shared shared_;
  ComPtr<IDispatch> dispatch_;
  std::string type_key_;
};

// The automation object behind an object-model object of this host, or
// null for an object of another host.
IDispatch* DispatchOf(const host::Object* object);
// The automation objects behind `objects`; kInvalidArgument when one is not
// of this host.
Result<std::vector<IDispatch*>> DispatchesOf(
    const std::vector<host::EntityPtr>& objects);

// The item argument of Item(): a zero-based index or a name.
ScopedVariant IndexVariant(int32_t index);

// Wrapping returned objects as the host classes. Entities are asked their
// ObjectName once (one round trip) to pick the class; the answer is kept.
host::EntityPtr WrapEntity(const Shared& shared, ComPtr<IDispatch> object);
// The same for an object whose ObjectName the caller knows (what an Add*
// method makes): no round trip.
host::EntityPtr WrapEntityOfKind(const Shared& shared, ComPtr<IDispatch> object,
                                 std::string object_name);
// Blocks, layouts, layers and the like by ObjectName; others as entities.
host::ObjectPtr WrapAnyObject(const Shared& shared, ComPtr<IDispatch> object);
host::BlockPtr WrapBlock(const Shared& shared, ComPtr<IDispatch> object);
host::LayoutPtr WrapLayout(const Shared& shared, ComPtr<IDispatch> object);
host::LayerPtr WrapLayer(const Shared& shared, ComPtr<IDispatch> object);
host::TextStylePtr WrapTextStyle(const Shared& shared,
                                 ComPtr<IDispatch> object);
host::SelectionSetPtr WrapSelectionSet(const Shared& shared,
                                       ComPtr<IDispatch> object);
host::BlocksPtr WrapBlocks(const Shared& shared, ComPtr<IDispatch> object);
host::LayoutsPtr WrapLayouts(const Shared& shared, ComPtr<IDispatch> object);
host::LayersPtr WrapLayers(const Shared& shared, ComPtr<IDispatch> object);
host::LinetypesPtr WrapLinetypes(const Shared& shared,
                                 ComPtr<IDispatch> object);
host::TextStylesPtr WrapTextStyles(const Shared& shared,
                                   ComPtr<IDispatch> object);
host::SelectionSetsPtr WrapSelectionSets(const Shared& shared,
                                         ComPtr<IDispatch> object);
host::DocumentPtr WrapDocument(const Shared& shared, ComPtr<IDispatch> object);
host::DbxDocumentPtr WrapDbxDocument(const Shared& shared,
                                     ComPtr<IDispatch> object);
host::ApplicationPtr WrapApplicationShared(const Shared& shared,
                                           ComPtr<IDispatch> object);

// Reads a member's object result and wraps it with `wrap`.
template <typename Ptr, typename Wrap>
Result<Ptr> Wrapped(Result<ComPtr<IDispatch>> object, const Shared& shared,
                    Wrap wrap) {
  if (!object.ok()) return object.status();
  return wrap(shared, std::move(*object));
}

// A collection's whole content, wrapped (the For Each walk).
template <typename Ptr, typename Wrap>
Result<std::vector<Ptr>> WrappedItems(const ComObject& collection, Wrap wrap) {
  Result<std::vector<ComPtr<IDispatch>>> items =
      Enumerate(*collection.shared().context, collection.dispatch(),
                collection.type_key());
  if (!items.ok()) return items.status();
  std::vector<Ptr> out;
  out.reserve(items->size());
  for (ComPtr<IDispatch>& item : *items) {
    out.push_back(wrap(collection.shared(), std::move(item)));
  }
  return out;
}

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_COM_OBJECT_H_
