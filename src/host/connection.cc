#include "host/connection.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "host/application.h"
#include "host/variant.h"

namespace lmt::host {
namespace {

bool IsTopViewName(std::string_view ucs_name) {
  return std::ranges::equal(
      ucs_name, std::string_view("*TOPVIEW*"), [](char a, char b) {
        return std::toupper(static_cast<unsigned char>(a)) ==
               static_cast<unsigned char>(b);
      });
}

// The identifiers tried, in order, to find a running program of `kind`; the
// first that answers wins. For AutoCAD only the release list text decides:
// "Auto" or empty tries the generic identifier, a release text only its own
// identifier (so another running release is not taken).
std::vector<std::string_view> LookupIds(HostKind kind,
                                        std::string_view release_text) {
  if (kind == HostKind::kAutoCad) {
    std::optional<std::string_view> id = AutoCadReleaseProgramId(release_text);
    if (!id) return {};
    return {*id};
  }
  if (kind == HostKind::kZwCad) {
    return {HostProgramId(kind), kZwCadPlusProgramId};
  }
  return {HostProgramId(kind)};
}

// Starting never uses the release list: AutoCAD starts by the generic
// identifier, whichever release registered it last.
std::vector<std::string_view> StartIds(HostKind kind) {
  if (kind == HostKind::kZwCad) {
    return {HostProgramId(kind), kZwCadPlusProgramId};
  }
  return {HostProgramId(kind)};
}

// The first program that answers to one of `ids`, noting a ZWCAD+ answer in
// `host_name`. Null with `tried` set when every identifier failed.
ApplicationPtr Find(
    const std::vector<std::string_view>& ids,
    Result<ApplicationPtr> (AutomationRuntime::*get)(std::string_view),
    AutomationRuntime& runtime, std::string& host_name, bool& tried) {
  for (std::string_view id : ids) {
    tried = true;
    Result<ApplicationPtr> app = (runtime.*get)(id);
    if (app.ok() && *app != nullptr) {
      if (id == kZwCadPlusProgramId) host_name = kZwCadPlusName;
      return *app;
    }
  }
  return nullptr;
}

double HostYear(std::string_view host_name, const ConnectionState& state) {
  if (host_name == kAutoCadName) {
    // The year of the drawing's own application object, as that is what
    // later calls go through.
    if (state.active_document == nullptr) return kNewestYear;
    Result<ApplicationPtr> app = state.active_document->Application();
    if (!app.ok() || *app == nullptr) return kNewestYear;
    Result<std::string> version = (*app)->Version();
    return version.ok() ? AutoCadYear(*version) : kNewestYear;
  }
  if (host_name == kNanoCadName) {
    Result<std::string> version = state.application->Version();
    return version.ok() ? NanoCadYear(*version) : kNewestYear;
  }
  return kNewestYear;
}

}  // namespace

void ConnectHost(const ConnectRequest& request, AutomationRuntime& runtime,
                 User& user, const core::MessageTable& messages,
                 ConnectionState& state) {
  state.connected = false;
  state.application = nullptr;
  state.host_name.clear();

  std::optional<HostKind> kind = HostKindFromIndex(request.kind_index);
  // An index outside the list finds nothing and asks nothing; the missing
  // drawing is what the user is told about below.
  bool tried = false;
  if (kind) {
    state.host_name = HostKindName(*kind);
    state.application =
        Find(LookupIds(*kind, request.release_text),
             &AutomationRuntime::GetObject, runtime, state.host_name, tried);
  }

  if (tried && state.application == nullptr) {
    std::string question = messages.Get(core::kMsgCadNotOpen) + "\n\n" +
                           messages.Get(core::kMsgOpenCadProgram);
    Answer answer = user.ShowMessage(question, MessageIcon::kQuestion,
                                     MessageButtons::kYesNo);
    if (answer == Answer::kYes) {
      bool started_any = false;
      state.application =
          Find(StartIds(*kind), &AutomationRuntime::CreateObject, runtime,
               state.host_name, started_any);
      if (state.application == nullptr ||
          !state.application->SetVisible(true).ok()) {
        user.ShowMessage(messages.Get(core::kMsgCannotConnect),
                         MessageIcon::kCritical);
        return;
      }
    }
    // On No the routine goes on without a program, and the missing drawing
    // below is what ends it.
  }

  if (kind == HostKind::kAutoCad && state.application != nullptr) {
    Result<DbxDocumentPtr> dbx = CreateDbxDocument(*state.application);
    state.dbx_document = dbx.ok() ? *dbx : nullptr;
  } else {
    state.dbx_document = nullptr;
  }

  bool searching =
      std::ranges::any_of(request.search_flags, [](bool flag) { return flag; });
  if (state.application == nullptr) {
    user.ShowMessage(messages.Get(core::kMsgNoOpenDrawing),
                     MessageIcon::kCritical);
    return;
  }
  if (!searching) {
    Result<DocumentPtr> document = state.application->ActiveDocument();
    if (!document.ok() || *document == nullptr) {
      state.active_document = nullptr;
      user.ShowMessage(messages.Get(core::kMsgNoOpenDrawing),
                       MessageIcon::kCritical);
      return;
    }
    state.active_document = *document;
  }

  state.host_year = HostYear(state.host_name, state);
  state.connected = true;
}

Result<DbxDocumentPtr> CreateDbxDocument(Application& application) {
  int major = 0;
  Result<std::string> version = application.Version();
  if (version.ok()) {
    for (char c : std::string_view(*version).substr(0, 2)) {
      if (c < '0' || c > '9') break;
      major = major * 10 + (c - '0');
    }
  }
  std::string prog_id = "ObjectDBX.AxDbDocument";
  if (major >= 16) prog_id += "." + std::to_string(major);
  return application.GetInterfaceObject(prog_id);
}

bool EnsurePlanView(Document& document) {
  Result<Variant> tilemode = document.GetVariable("TILEMODE");
  if (!tilemode.ok() || ToInt(*tilemode).value_or(0) != 1) return false;
  Result<Variant> viewdir = document.GetVariable("VIEWDIR");
  if (!viewdir.ok()) return false;
  Result<Point> direction = ToPoint(*viewdir);
  if (!direction.ok() || *direction == Point{0, 0, 1}) return false;
  Result<ViewportPtr> viewport = document.ActiveViewport();
  if (!viewport.ok() || *viewport == nullptr) return false;
  if (!(*viewport)->SetDirection({0, 0, 1}).ok()) return false;
  // A viewport's new direction shows only once it is made active again.
  return document.SetActiveViewport(*viewport).ok();
}

bool EnsureWorldUcs(std::string_view host_name, Document& document) {
  if (!HostNameContains(host_name, kAutoCadName)) return false;
  std::string ucs_name;
  if (Result<Variant> value = document.GetVariable("UCSNAME"); value.ok()) {
    ucs_name = ToText(*value).value_or("");
  }
  // The named top views are plan views already: the world UCS is not needed.
  if (ucs_name == "*ВЕРХНЯЯ*" || IsTopViewName(ucs_name)) {
    return false;
  }
  Result<Variant> world = document.GetVariable("WORLDUCS");
  if (world.ok() && ToInt(*world).value_or(0) == 1) return false;
  return document.SendCommand(kWorldUcsCommand).ok();
}

}  // namespace lmt::host
