// The drawing's named views as the object model shows them (the embedded
// host keeps them in its VIEW table): Views.Add, Item and Count, and each
// View's Name, Center (two numbers, as the programs take it), Height,
// Width, Direction (plan only), Target and its own Delete.
#include <memory>
#include <string>
#include <vector>

#include "automation/members.h"
#include "automation/tables.h"
#include "core/text_case.h"

namespace lmt::automation {
namespace {

Result<host::NamedView> FindView(const host::Database& database,
                                 std::string_view name) {
  Result<std::vector<host::NamedView>> views = database.Views();
  if (!views.ok()) return views.status();
  for (host::NamedView& view : *views) {
    if (core::EqualsIgnoreCase(view.name, name)) return std::move(view);
  }
  return Status::NotFound("no view is named \"" + std::string(name) + "\"");
}

class ViewsObject : public host::Object {
 public:
  explicit ViewsObject(host::DatabasePtr database)
      : host::Object(database->shared_gate()), database_(std::move(database)) {}
  const host::DatabasePtr& database() const { return database_; }

 private:
  host::DatabasePtr database_;
};

// One view, found by name on every call. Its centre is kept in the
// drawing as a world point; the target it is measured from lives here.
class ViewObject : public host::Object {
 public:
  ViewObject(host::DatabasePtr database, std::string name)
      : host::Object(database->shared_gate()),
        database_(std::move(database)),
        name_(std::move(name)) {}
  const std::string& name() const { return name_; }
  host::Database& database() const { return *database_; }
  host::Point target;

 private:
  host::DatabasePtr database_;
  std::string name_;
};

const ClassTable& ViewTable();

Status ReturnView(Call& call, const host::DatabasePtr& database,
                  std::string name) {
  ReturnObject(call, std::make_shared<ViewObject>(database, std::move(name)),
               &ViewTable());
  return Status();
}

// A numeric array of exactly `size` elements, as the typed members take it.
Result<std::vector<double>> ArrayOf(Call& call, size_t size) {
  if (call.args.empty()) return MissingArgument(0);
  const VARIANT& arg = *call.args.back();
  if ((V_VT(&arg) & VT_ARRAY) == 0) {
    return Status::InvalidArgument("an array of doubles is needed");
  }
  Result<std::vector<double>> values = comhost::ReadDoubles(arg);
  if (!values.ok()) return values.status();
  if (values->size() != size) {
    return Status::InvalidArgument("an array of " + std::to_string(size) +
                                   " doubles is needed");
  }
  return values;
}

// The view's properties: read from the drawing, written back whole.
Status ViewProperty(Call& call, std::string_view member) {
  ViewObject* self = Self<ViewObject>(call);
  if (self == nullptr) return Status::NotSupported("not a view");
  Result<host::NamedView> view = FindView(self->database(), self->name());
  if (!view.ok()) return view.status();
  host::Point& target = self->target;
  if (!call.put) {
    if (member == "Center") {
      Return(call, std::vector<double>{view->center.x - target.x,
                                       view->center.y - target.y});
    } else if (member == "Height") {
      Return(call, view->height);
    } else if (member == "Width") {
      Return(call, view->width);
    } else if (member == "Direction") {
      Return(call, host::Point{0, 0, 1});
    } else {
      Return(call, target);
    }
    return Status();
  }
  if (member == "Center") {
    Result<std::vector<double>> c = ArrayOf(call, 2);
    if (!c.ok()) return c.status();
    view->center = host::Point{target.x + (*c)[0], target.y + (*c)[1], 0};
  } else if (member == "Height" || member == "Width") {
    Result<double> size = Arg<double>(call, call.args.size() - 1);
    if (!size.ok()) return size.status();
    if (!(*size > 0)) return Status::InvalidArgument("a size must be positive");
    (member == "Height" ? view->height : view->width) = *size;
  } else {
    Result<std::vector<double>> p = ArrayOf(call, 3);
    if (!p.ok()) return p.status();
    if (member == "Direction") {
      if ((*p)[0] != 0 || (*p)[1] != 0 || !((*p)[2] > 0)) {
        return Status::NotSupported("this server keeps plan views only");
      }
      return Status();
    }
    const host::Point moved{(*p)[0], (*p)[1], (*p)[2]};
    view->center.x += moved.x - target.x;
    view->center.y += moved.y - target.y;
    target = moved;
  }
  return self->database().SetView(*view);
}

template <const char* kMember>
Status ViewMember(Call& call) {
  return ViewProperty(call, kMember);
}
constexpr char kCenter[] = "Center";
constexpr char kHeight[] = "Height";
constexpr char kWidth[] = "Width";
constexpr char kDirection[] = "Direction";
constexpr char kTarget[] = "Target";

Status ViewName(Call& call) {
  ViewObject* self = Self<ViewObject>(call);
  if (self == nullptr) return Status::NotSupported("not a view");
  if (call.put) return Status::NotSupported("read-only property");
  Return(call, self->name());
  return Status();
}

Status DeleteView(Call& call) {
  ViewObject* self = Self<ViewObject>(call);
  if (self == nullptr) return Status::NotSupported("not a view");
  return self->database().DeleteView(self->name());
}

constexpr Member kView[] = {
    {L"Name", &ViewName},
    {L"Center", &ViewMember<kCenter>},
    {L"Height", &ViewMember<kHeight>},
    {L"Width", &ViewMember<kWidth>},
    {L"Direction", &ViewMember<kDirection>},
    {L"Target", &ViewMember<kTarget>},
    {L"Delete", &DeleteView},
};
const ClassTable kViewTable{L"View", kView};
const ClassTable& ViewTable() { return kViewTable; }

// Add(Name): a new view of model space; a name taken is refused.
Status AddView(Call& call) {
  ViewsObject* self = Self<ViewsObject>(call);
  if (self == nullptr) return Status::NotSupported("not a collection");
  Result<std::string> name = Arg<std::string>(call, 0);
  if (!name.ok()) return name.status();
  if (FindView(*self->database(), *name).ok()) {
    return Status::InvalidArgument("a view named \"" + *name + "\" exists");
  }
  host::NamedView view;
  view.name = *name;
  view.width = 1;
  view.height = 1;
  if (Status s = self->database()->SetView(view); !s.ok()) return s;
  return ReturnView(call, self->database(), *name);
}

// Item(Index or Name).
Status ViewItem(Call& call) {
  ViewsObject* self = Self<ViewsObject>(call);
  if (self == nullptr) return Status::NotSupported("not a collection");
  if (call.args.empty()) return MissingArgument(0);
  Result<std::vector<host::NamedView>> views = self->database()->Views();
  if (!views.ok()) return views.status();
  if ((V_VT(call.args[0]) & VT_TYPEMASK) == VT_BSTR) {
    Result<std::string> name = Arg<std::string>(call, 0);
    if (!name.ok()) return name.status();
    Result<host::NamedView> view = FindView(*self->database(), *name);
    if (!view.ok()) return view.status();
    return ReturnView(call, self->database(), view->name);
  }
  Result<int32_t> index = Arg<int32_t>(call, 0);
  if (!index.ok()) return index.status();
  if (*index < 0 || static_cast<size_t>(*index) >= views->size()) {
    return Status::NotFound("no view at " + std::to_string(*index));
  }
  return ReturnView(call, self->database(), (*views)[*index].name);
}

Status ViewCount(Call& call) {
  ViewsObject* self = Self<ViewsObject>(call);
  if (self == nullptr) return Status::NotSupported("not a collection");
  if (call.put) return Status::NotSupported("read-only property");
  Result<std::vector<host::NamedView>> views = self->database()->Views();
  if (!views.ok()) return views.status();
  Return(call, static_cast<int32_t>(views->size()));
  return Status();
}

constexpr Member kViews[] = {
    {L"Add", &AddView}, {L"Item", &ViewItem}, {L"Count", &ViewCount}};
const ClassTable kViewsTable{L"Views", kViews};

}  // namespace

Status Views(Call& call) {
  auto database = std::dynamic_pointer_cast<host::Database>(call.self_ptr);
  if (database == nullptr) {
    call.wrong_kind = true;
    return Status::NotSupported("not a drawing");
  }
  if (call.put) return Status::NotSupported("read-only property");
  ReturnObject(call, std::make_shared<ViewsObject>(database), &kViewsTable);
  return Status();
}

}  // namespace lmt::automation
