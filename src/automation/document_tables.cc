// The application (with the Lmt* members through which a test scripts the
// user and refuses members), its preferences and documents, the database
// and document members, the tiled viewport and Utility.
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>

#include "automation/members.h"
#include "automation/server.h"
#include "automation/tables.h"

namespace lmt::automation {
namespace {

using host::Application;
using host::Database;
using host::DbxDocument;
using host::Document;
using host::Documents;
using host::Preferences;
using host::Utility;
using host::Viewport;

// ActiveLayout and the other object-valued document properties.
template <typename Obj, auto Get, auto Set>
Status ObjectProp(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  if (call.put) {
    if (call.args.empty()) return MissingArgument(0);
    Result<std::shared_ptr<Obj>> value =
        ObjectArg<Obj>(call, call.args.size() - 1);
    if (!value.ok()) return value.status();
    return (self->*Set)(*value);
  }
  return Returned(call, (self->*Get)());
}

Status ActiveSpace(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  if (call.put) {
    Result<int32_t> space = Arg<int32_t>(call, 0);
    if (!space.ok()) return space.status();
    return self->SetActiveSpace(*space == 0 ? host::Space::kPaperSpace
                                            : host::Space::kModelSpace);
  }
  Result<host::Space> space = self->ActiveSpace();
  if (!space.ok()) return space.status();
  Return(call, static_cast<int32_t>(*space));
  return Status();
}

Status GetVariable(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::string> name = Arg<std::string>(call, 0);
  if (!name.ok()) return name.status();
  Result<host::Variant> value = self->GetVariable(*name);
  if (!value.ok()) return value.status();
  SetResult(call, comhost::HostVariant(*value));
  return Status();
}

Status SetVariable(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::string> name = Arg<std::string>(call, 0);
  if (!name.ok()) return name.status();
  if (call.args.size() < 2) return MissingArgument(1);
  Result<host::Variant> value = comhost::ReadHostVariant(*call.args[1]);
  if (!value.ok()) return value.status();
  return self->SetVariable(*name, *value);
}

template <Status (Document::*Method)(std::string_view)>
Status TextMethod(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::string> text = Arg<std::string>(call, 0);
  if (!text.ok()) return text.status();
  return (self->*Method)(*text);
}

// Runs the command at once, or queues it when the server plays a program
// that runs commands when idle; Lisp loads, loaded commands and imports are
// the server's own (program_commands.h), the rest the embedded host's.
Status SendCommand(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::string> text = Arg<std::string>(call, 0);
  if (!text.ok()) return text.status();
  host::ObjectPtr keep = call.self_ptr;
  Server* server = &call.server;
  auto run = [keep, server, command = *text] {
    Document& document = static_cast<Document&>(*keep);
    if (std::optional<Status> done =
            RunProgramCommand(server->lisp_commands(), document, command)) {
      return *done;
    }
    return document.SendCommand(command);
  };
  if (!call.server.defers_commands()) return run();
  call.server.QueueCommand(std::move(run));
  return Status();
}

template <Status (DbxDocument::*Method)(std::string_view)>
Status DbxPathMethod(Call& call) {
  DbxDocument* self = Self<DbxDocument>(call);
  if (self == nullptr) return Status::NotSupported("not a database document");
  Result<std::string> path = Arg<std::string>(call, 0);
  if (!path.ok()) return path.status();
  return (self->*Method)(*path);
}

// Document.SaveAs(FullFileName, [SaveAsType]); DbxDocument.SaveAs(Name).
Status DocumentSaveAs(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::string> path = Arg<std::string>(call, 0);
  if (!path.ok()) return path.status();
  Result<std::optional<int32_t>> type = OptionalArg<int32_t>(call, 1);
  if (!type.ok()) return type.status();
  return self->SaveAs(*path, type->value_or(-1));
}

Status Close(Call& call) {
  Document* self = Self<Document>(call);
  if (self == nullptr) return Status::NotSupported("not a document");
  Result<std::optional<bool>> save = OptionalArg<bool>(call, 0);
  if (!save.ok()) return save.status();
  return self->Close(save->value_or(true));
}

Status CopyObjects(Call& call) {
  Database* self = Self<Database>(call);
  if (self == nullptr) return Status::NotSupported("not a database");
  Result<std::vector<host::EntityPtr>> objects = EntitiesArg(call, 0);
  if (!objects.ok()) return objects.status();
  Result<host::BlockPtr> owner = ObjectArg<host::Block>(call, 1);
  if (!owner.ok()) return owner.status();
  return Returned(call, self->CopyObjects(*objects, *owner));
}

Status ObjectIdToObject(Call& call) {
  Database* self = Self<Database>(call);
  if (self == nullptr) return Status::NotSupported("not a database");
  Result<uint64_t> id = Arg<uint64_t>(call, 0);
  if (!id.ok()) return id.status();
  return Returned(call, self->ObjectIdToObject(*id));
}

// GetPoint([Point], [Prompt]) and GetDistance([Point], [Prompt]).
template <typename R, Result<R> (Utility::*Method)(
                          const std::optional<host::Point>&, std::string_view)>
Status Ask(Call& call) {
  Utility* self = Self<Utility>(call);
  if (self == nullptr) return Status::NotSupported("not a utility");
  Result<std::optional<host::Point>> base = OptionalArg<host::Point>(call, 0);
  if (!base.ok()) return base.status();
  Result<std::optional<std::string>> prompt = OptionalArg<std::string>(call, 1);
  if (!prompt.ok()) return prompt.status();
  return Returned(call, (self->*Method)(*base, prompt->value_or("")));
}

Status Prompt(Call& call) {
  Utility* self = Self<Utility>(call);
  if (self == nullptr) return Status::NotSupported("not a utility");
  Result<std::string> text = Arg<std::string>(call, 0);
  if (!text.ok()) return text.status();
  return self->Prompt(*text);
}

Status TranslateCoordinates(Call& call) {
  Utility* self = Self<Utility>(call);
  if (self == nullptr) return Status::NotSupported("not a utility");
  Result<host::Point> point = Arg<host::Point>(call, 0);
  Result<int32_t> from = Arg<int32_t>(call, 1);
  Result<int32_t> to = Arg<int32_t>(call, 2);
  Result<bool> displacement = Arg<bool>(call, 3);
  if (!point.ok() || !from.ok() || !to.ok() || !displacement.ok()) {
    return Status::InvalidArgument("TranslateCoordinates: bad arguments");
  }
  return Returned(call,
                  self->TranslateCoordinates(
                      *point, static_cast<host::CoordinateSystem>(*from),
                      static_cast<host::CoordinateSystem>(*to), *displacement));
}

Status OpenDocument(Call& call) {
  Documents* self = Self<Documents>(call);
  if (self == nullptr) return Status::NotSupported("not the documents");
  Result<std::string> path = Arg<std::string>(call, 0);
  if (!path.ok()) return path.status();
  return Returned(call, self->Open(*path));
}

Status Display(Call& call) {
  if (Self<Preferences>(call) == nullptr) return Status::NotSupported("");
  ReturnObject(call, call.self_ptr, &PreferencesDisplayTable());
  return Status();
}

Status OpenSave(Call& call) {
  if (Self<Preferences>(call) == nullptr) return Status::NotSupported("");
  ReturnObject(call, call.self_ptr, &PreferencesOpenSaveTable());
  return Status();
}

Status GetInterfaceObject(Call& call) {
  Application* self = Self<Application>(call);
  if (self == nullptr) return Status::NotSupported("not the application");
  Result<std::string> id = Arg<std::string>(call, 0);
  if (!id.ok()) return id.status();
  return Returned(call, self->GetInterfaceObject(*id));
}

Status Quit(Call& call) {
  call.server.Quit();
  return Status();
}

// --- What a test sets through the application (not object-model members).

// LmtQueuePick(Handles): the next on-screen pick answers these handles
// (separated by blanks; empty: an empty pick). "*cancel" cancels the pick.
Status LmtQueuePick(Call& call) {
  Result<std::string> text = Arg<std::string>(call, 0);
  if (!text.ok()) return text.status();
  if (*text == "*cancel") {
    call.server.user().QueuePickCancel();
    return Status();
  }
  std::istringstream in(*text);
  std::vector<std::string> handles;
  for (std::string h; in >> h;) handles.push_back(h);
  call.server.user().QueuePick(std::move(handles));
  return Status();
}

// LmtQueuePoint(Point), LmtQueueDistance(Distance): the answers of the next
// GetPoint and GetDistance (with nothing queued the user cancels).
Status LmtQueuePoint(Call& call) {
  Result<host::Point> point = Arg<host::Point>(call, 0);
  if (!point.ok()) return point.status();
  call.server.user().QueuePoint(*point);
  return Status();
}

Status LmtQueueDistance(Call& call) {
  Result<double> distance = Arg<double>(call, 0);
  if (!distance.ok()) return distance.status();
  call.server.user().QueueDistance(*distance);
  return Status();
}

// LmtRefuse(Pattern, [AllowFirst], [Times]): the embedded host refuses
// matching members (patterns as its call gate takes them) after letting the
// first AllowFirst through, Times times (default: for ever).
Status LmtRefuse(Call& call) {
  Result<std::string> pattern = Arg<std::string>(call, 0);
  if (!pattern.ok()) return pattern.status();
  Result<std::optional<int32_t>> allow = OptionalArg<int32_t>(call, 1);
  if (!allow.ok()) return allow.status();
  Result<std::optional<int32_t>> times = OptionalArg<int32_t>(call, 2);
  if (!times.ok()) return times.status();
  call.server.application()->gate().Refuse(*pattern, allow->value_or(0),
                                           times->value_or(-1));
  return Status();
}

// LmtSimulateBusy(every, tries): see Server::SimulateBusy.
Status LmtSimulateBusy(Call& call) {
  Result<int32_t> every = Arg<int32_t>(call, 0);
  if (!every.ok()) return every.status();
  Result<std::optional<int32_t>> tries = OptionalArg<int32_t>(call, 1);
  if (!tries.ok()) return tries.status();
  call.server.SimulateBusy(*every, tries->value_or(1));
  return Status();
}

// LmtDeferCommands(defer): see Server::DeferCommands.
Status LmtDeferCommands(Call& call) {
  Result<bool> defer = Arg<bool>(call, 0);
  if (!defer.ok()) return defer.status();
  call.server.DeferCommands(*defer);
  return Status();
}

Status GetAcadState(Call& call) {
  if (Self<Application>(call) == nullptr) return Status::NotSupported("");
  ReturnObject(call, call.self_ptr, &AcadStateTable());
  return Status();
}

// False while queued commands were still to run (they run now, as the
// program gets idle), true after.
Status IsQuiescent(Call& call) {
  Return(call, !call.server.RunQueuedCommands(/*waiting=*/true));
  return Status();
}

// PlotToFile(plotFile [, plotConfig]) -> Boolean.
Status PlotToFile(Call& call) {
  host::Plot* self = Self<host::Plot>(call);
  if (self == nullptr) return Status::NotSupported("not a plot");
  Result<std::string> file = Arg<std::string>(call, 0);
  if (!file.ok()) return file.status();
  Result<std::optional<std::string>> device = OptionalArg<std::string>(call, 1);
  if (!device.ok()) return device.status();
  Result<bool> done = self->PlotToFile(*file, device->value_or(""));
  if (!done.ok()) return done.status();
  Return(call, *done);
  return Status();
}

// LmtPlotCalls(): the plots received, one "layout|file|device" a line.
Status LmtPlotCalls(Call& call) {
  std::string lines;
  for (const Server::PlotCall& plot : call.server.plot_calls()) {
    lines += plot.layout + "|" + plot.file + "|" + plot.device + "\n";
  }
  Return(call, lines);
  return Status();
}

Status LmtAllowAll(Call& call) {
  call.server.application()->gate().AllowAll();
  return Status();
}

// The calls this server has answered (this one included).
Status LmtServerCalls(Call& call) {
  Return(call, call.server.calls());
  return Status();
}

Status LmtMessageCount(Call& call) {
  Return(call, static_cast<int32_t>(call.server.user().messages().size()));
  return Status();
}

constexpr Member kViewport[] = {
    {L"Direction",
     &Prop<Viewport, &Viewport::Direction, &Viewport::SetDirection>},
};
constexpr Member kUtility[] = {
    {L"GetPoint", &Ask<host::Point, &Utility::GetPoint>},
    {L"GetDistance", &Ask<double, &Utility::GetDistance>},
    {L"Prompt", &Prompt},
    {L"TranslateCoordinates", &TranslateCoordinates},
};
constexpr Member kDocument[] = {
    {L"ModelSpace", &Prop<Database, &Database::ModelSpace>},
    {L"PaperSpace", &Prop<Database, &Database::PaperSpace>},
    {L"Blocks", &Prop<Database, &Database::Blocks>},
    {L"Layers", &Prop<Database, &Database::Layers>},
    {L"Linetypes", &Prop<Database, &Database::Linetypes>},
    {L"TextStyles", &Prop<Database, &Database::TextStyles>},
    {L"Layouts", &Prop<Database, &Database::Layouts>},
    {L"CopyObjects", &CopyObjects},
    {L"ObjectIdToObject", &ObjectIdToObject},
    {L"RegisteredApplications", &RegisteredApplications},
    {L"Views", &Views},
    {L"Name", &AnyKind<&Prop<Document, &Document::Name>,
                       &Prop<DbxDocument, &DbxDocument::Name>>},
    {L"FullName", &Prop<Document, &Document::FullName>},
    {L"Application", &Prop<Document, &Document::Application>},
    {L"GetVariable", &GetVariable},
    {L"SetVariable", &SetVariable},
    {L"SendCommand", &SendCommand},
    {L"ActiveLayout", &ObjectProp<host::Layout, &Document::ActiveLayout,
                                  &Document::SetActiveLayout>},
    {L"ActiveSpace", &ActiveSpace},
    {L"MSpace", &Prop<Document, &Document::MSpace, &Document::SetMSpace>},
    {L"ActivePViewport",
     &ObjectProp<host::PViewport, &Document::ActivePViewport,
                 &Document::SetActivePViewport>},
    {L"ActiveViewport", &ObjectProp<host::Viewport, &Document::ActiveViewport,
                                    &Document::SetActiveViewport>},
    {L"ActiveLayer", &ObjectProp<host::Layer, &Document::ActiveLayer,
                                 &Document::SetActiveLayer>},
    {L"ActiveTextStyle",
     &ObjectProp<host::TextStyle, &Document::ActiveTextStyle,
                 &Document::SetActiveTextStyle>},
    {L"SelectionSets", &Prop<Document, &Document::SelectionSets>},
    {L"Utility", &Prop<Document, &Document::Utility>},
    {L"Plot", &Prop<Document, &Document::Plot>},
    {L"SaveAs",
     &AnyKind<&DocumentSaveAs, &DbxPathMethod<&DbxDocument::SaveAs>>},
    {L"Close", &Close},
    {L"Open", &DbxPathMethod<&DbxDocument::Open>},
    {L"DxfIn", &DbxPathMethod<&DbxDocument::DxfIn>},
    {L"DxfOut", &DbxPathMethod<&DbxDocument::DxfOut>},
};
constexpr Member kDocuments[] = {
    {L"Count", &Prop<Documents, &Documents::Count>},
    {L"Item", &IndexItem<Documents>},
    {L"Open", &OpenDocument},
};
constexpr Member kPreferences[] = {
    {L"Display", &Display},
    {L"OpenSave", &OpenSave},
};
constexpr Member kPreferencesDisplay[] = {
    {L"LayoutCreateViewport",
     &Prop<Preferences, &Preferences::LayoutCreateViewport,
           &Preferences::SetLayoutCreateViewport>},
};
constexpr Member kPreferencesOpenSave[] = {
    {L"SaveAsType",
     &Prop<Preferences, &Preferences::SaveAsType, &Preferences::SetSaveAsType>},
};
constexpr Member kApplication[] = {
    {L"Version", &Prop<Application, &Application::Version>},
    {L"Visible",
     &Prop<Application, &Application::Visible, &Application::SetVisible>},
    {L"Caption", &Prop<Application, &Application::Caption>},
    {L"ActiveDocument", &Prop<Application, &Application::ActiveDocument>},
    {L"Documents", &Prop<Application, &Application::Documents>},
    {L"Preferences", &Prop<Application, &Application::Preferences>},
    {L"GetInterfaceObject", &GetInterfaceObject},
    {L"ZoomExtents", &Action<Application, &Application::ZoomExtents>},
    {L"GetAcadState", &GetAcadState},
    {L"Quit", &Quit},
    {L"LmtQueuePick", &LmtQueuePick},
    {L"LmtQueuePoint", &LmtQueuePoint},
    {L"LmtQueueDistance", &LmtQueueDistance},
    {L"LmtRefuse", &LmtRefuse},
    {L"LmtAllowAll", &LmtAllowAll},
    {L"LmtSimulateBusy", &LmtSimulateBusy},
    {L"LmtDeferCommands", &LmtDeferCommands},
    {L"LmtPlotCalls", &LmtPlotCalls},
    {L"LmtServerCalls", &LmtServerCalls},
    {L"LmtMessageCount", &LmtMessageCount},
};

const ClassTable kPreferencesDisplayTable{L"PreferencesDisplay",
                                          kPreferencesDisplay};
const ClassTable kPreferencesOpenSaveTable{L"PreferencesOpenSave",
                                           kPreferencesOpenSave};
constexpr Member kAcadState[] = {
    {L"IsQuiescent", &IsQuiescent},
};
const ClassTable kAcadStateTable{L"AcadState", kAcadState};
constexpr Member kPlot[] = {
    {L"PlotToFile", &PlotToFile},
};

}  // namespace

const ClassTable kPlotTable{L"Plot", kPlot};
const ClassTable kViewportTable{L"Viewport", kViewport};
const ClassTable kUtilityTable{L"Utility", kUtility};
const ClassTable kDocumentTable{L"Document", kDocument};
const ClassTable kDocumentsTable{L"Documents", kDocuments, &ItemsOf<Documents>};
const ClassTable kPreferencesTable{L"Preferences", kPreferences};
const ClassTable kApplicationTable{L"Application", kApplication};
const ClassTable kEmptyTable{L"Object", {}};

const ClassTable& PreferencesDisplayTable() { return kPreferencesDisplayTable; }
const ClassTable& AcadStateTable() { return kAcadStateTable; }
const ClassTable& PreferencesOpenSaveTable() {
  return kPreferencesOpenSaveTable;
}

}  // namespace lmt::automation
