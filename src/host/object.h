// The root of the CAD object model and how its objects are held.
//
// Ownership: every object-model object is held by std::shared_ptr (aliases
// EntityPtr, DocumentPtr, ...). A COM host's object wraps one reference-
// counted IDispatch pointer and releases it when the last shared_ptr goes; a
// DXF host's object is a small handle into its document. Objects compare by
// what they stand for only through the host (Handle(), ObjectID()), never by
// pointer: asking twice for the same drawing object may give two wrappers.
//
// Calls: every public member is a non-virtual function that first asks the
// application's CallGate (call_gate.h), which may refuse it, and then calls
// the protected virtual Do<Member> of the host. Hosts override the Do*
// members they support; the others answer kNotSupported. No member throws:
// each returns Status or Result<T>, and a failed call leaves the drawing as
// it was.
//
// Kinds: a host returns the most derived class it knows for a drawing object
// (Polyline for "AcDbPolyline", ...). Reach it with As<T>(), which gives
// nullptr for another kind.
//
// Collections (Layouts, Layers, Blocks, SelectionSets, a Block's entities, a
// SelectionSet's members) offer Count(), Item(index) (zero-based; both
// overloads of Item, by index and by name, share the gate name "X.Item") and
// Items(), the whole collection in its order, which is the For Each walk:
//
//   Result<std::vector<EntityPtr>> items = set->Items();
//   if (!items.ok()) return;                  // the host refused the walk
//   for (const EntityPtr& entity : *items) {
//     Result<std::string> name = entity->ObjectName();
//     if (!name.ok()) continue;               // skip the object, go on
//     if (PolylinePtr polyline = As<Polyline>(entity)) { ... }
//   }
#ifndef LMT_HOST_OBJECT_H_
#define LMT_HOST_OBJECT_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "core/check.h"
#include "core/status.h"
#include "host/call_gate.h"

namespace lmt::host {

class Object;
class Entity;
class Polyline;
class BlockReference;
class Attribute;
class PViewport;
class Text;
class MText;
class MLeader;
class Block;
class Blocks;
class Layout;
class Layouts;
class Layer;
class Layers;
class Linetype;
class Linetypes;
class TextStyle;
class TextStyles;
class SelectionSet;
class SelectionSets;
class Viewport;
class Utility;
class Plot;
class Database;
class Document;
class DbxDocument;
class Documents;
class Preferences;
class Application;

using ObjectPtr = std::shared_ptr<Object>;
using EntityPtr = std::shared_ptr<Entity>;
using PolylinePtr = std::shared_ptr<Polyline>;
using BlockReferencePtr = std::shared_ptr<BlockReference>;
using AttributePtr = std::shared_ptr<Attribute>;
using PViewportPtr = std::shared_ptr<PViewport>;
using TextPtr = std::shared_ptr<Text>;
using MTextPtr = std::shared_ptr<MText>;
using MLeaderPtr = std::shared_ptr<MLeader>;
using BlockPtr = std::shared_ptr<Block>;
using BlocksPtr = std::shared_ptr<Blocks>;
using LayoutPtr = std::shared_ptr<Layout>;
using LayoutsPtr = std::shared_ptr<Layouts>;
using LayerPtr = std::shared_ptr<Layer>;
using LayersPtr = std::shared_ptr<Layers>;
using LinetypePtr = std::shared_ptr<Linetype>;
using LinetypesPtr = std::shared_ptr<Linetypes>;
using TextStylePtr = std::shared_ptr<TextStyle>;
using TextStylesPtr = std::shared_ptr<TextStyles>;
using SelectionSetPtr = std::shared_ptr<SelectionSet>;
using SelectionSetsPtr = std::shared_ptr<SelectionSets>;
using ViewportPtr = std::shared_ptr<Viewport>;
using UtilityPtr = std::shared_ptr<Utility>;
using PlotPtr = std::shared_ptr<Plot>;
using DatabasePtr = std::shared_ptr<Database>;
using DocumentPtr = std::shared_ptr<Document>;
using DbxDocumentPtr = std::shared_ptr<DbxDocument>;
using DocumentsPtr = std::shared_ptr<Documents>;
using PreferencesPtr = std::shared_ptr<Preferences>;
using ApplicationPtr = std::shared_ptr<Application>;

class Object {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  // The gate of the application this object belongs to; shared by every
  // object of that application.
  CallGate& gate() const { return *gate_; }
  const std::shared_ptr<CallGate>& shared_gate() const { return gate_; }

 protected:
  // REQUIRES: gate != nullptr.
  explicit Object(std::shared_ptr<CallGate> gate) : gate_(std::move(gate)) {
    LMT_CHECK(gate_ != nullptr);
  }

  Status Enter(std::string_view member) const { return gate_->Enter(member); }
  // The body of every public member: asks the gate for `member`, then makes
  // `call` (the host's Do<Member>) only when the gate lets it through.
  template <typename Call>
  auto Gated(std::string_view member, Call&& call) const -> decltype(call()) {
    if (Status s = Enter(member); !s.ok()) return s;
    return std::forward<Call>(call)();
  }
  // The answer of a member this host does not implement.
  static Status Unsupported(std::string_view member) {
    return Status::NotSupported(std::string(member) +
                                " is not supported by this host");
  }

 private:
  std::shared_ptr<CallGate> gate_;
};

// The object as kind T, or nullptr when it is another kind (or null).
template <typename T, typename U>
std::shared_ptr<T> As(const std::shared_ptr<U>& object) {
  return std::dynamic_pointer_cast<T>(object);
}

}  // namespace lmt::host

#endif  // LMT_HOST_OBJECT_H_
