#include "layouts/layout_creation.h"

#include <chrono>
#include <optional>

#include "core/messages.h"
#include "layouts/layer_helpers.h"
#include "layouts/layout_cleanup.h"
#include "layouts/run_plan.h"
#include "layouts/sheet_actions.h"
#include "layouts/sheet_insert.h"
#include "layouts/viewport_builder.h"
#include "utilities/viewports_on_off.h"

namespace lmt::layouts {
namespace {

std::vector<std::string> LayoutNames(host::Document& document) {
  std::vector<std::string> names;
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return names;
  Result<std::vector<host::LayoutPtr>> items = (*layouts)->Items();
  if (!items.ok()) return names;
  for (const host::LayoutPtr& layout : *items) {
    if (Result<std::string> name = layout->Name(); name.ok()) {
      names.push_back(*name);
    }
  }
  return names;
}

std::optional<host::LayoutPtr> FindLayout(host::Document& document,
                                          std::string_view name) {
  if (name.empty()) return std::nullopt;
  Result<host::LayoutsPtr> layouts = document.Layouts();
  if (!layouts.ok()) return std::nullopt;
  Result<host::LayoutPtr> layout = (*layouts)->Item(name);
  if (!layout.ok()) return std::nullopt;
  return *layout;
}

void DeleteLayout(host::Document& document, std::string_view name,
                  host::SkipLog& skips) {
  if (std::optional<host::LayoutPtr> layout = FindLayout(document, name)) {
    skips.Record(name, "delete layout", (*layout)->Delete());
  }
}

// The objects a new layout receives: everything in `source`'s block but
// the layout's own paper viewport (entity 0), which every layout has of
// its own.
std::vector<host::EntityPtr> PatternObjects(const host::LayoutPtr& source) {
  std::vector<host::EntityPtr> objects;
  Result<host::BlockPtr> block = source->Block();
  if (!block.ok()) return objects;
  Result<std::vector<host::EntityPtr>> items = (*block)->Items();
  if (!items.ok()) return objects;
  std::string own;
  if (Result<host::EntityPtr> first = (*block)->Item(0); first.ok()) {
    Result<std::string> kind = (*first)->ObjectName();
    Result<std::string> handle = (*first)->Handle();
    if (kind.ok() && *kind == "AcDbViewport" && handle.ok()) own = *handle;
  }
  for (const host::EntityPtr& entity : *items) {
    Result<std::string> handle = entity->Handle();
    if (!own.empty() && handle.ok() && *handle == own) continue;
    objects.push_back(entity);
  }
  return objects;
}

void CopyPattern(host::Document& document, const host::LayoutPtr& target,
                 std::string_view name, const host::LayoutPtr& source,
                 const std::vector<host::EntityPtr>& objects,
                 host::SkipLog& skips) {
  skips.Record(name, "copy settings", target->CopyFrom(source));
  if (objects.empty()) return;
  Result<host::BlockPtr> block = target->Block();
  if (skips.Record(name, "block", block)) {
    skips.Record(name, "copy objects", document.CopyObjects(objects, *block));
  }
}

// The plan of a connected session; one computation for a run and for a
// look at it beforehand.
CreationPlan MakePlan(host::Session& session, const frames::FrameTable& table,
                      HostFamily family) {
  CreationPlan plan;
  plan.settings =
      ReadRunSettings(session.windows(), session.globals().decimal_comma);
  plan.family = family;
  plan.params = plan.settings.params;
  // Only the AutoCAD family has the extended builder.
  if (family != HostFamily::kAutoCad) {
    plan.params.rotation_rule = RotationRule::kStandard;
  }
  host::Document& document = session.document();
  std::string drawing;
  if (Result<std::string> name = document.Name(); name.ok()) drawing = *name;
  plan.frames = PlanRun(table, plan.params, drawing);
  plan.existing_layouts = LayoutNames(document);
  if (plan.settings.page_setup.apply) {
    for (const FramePlan& frame : plan.frames) {
      plan.papers.push_back(
          PaperForSheet(plan.settings.page_setup, frame.viewport));
    }
  }
  return plan;
}

class Run {
 public:
  Run(host::Session& session, const frames::FrameTable& table,
      HostFamily family)
      : session_(session),
        user_(session.user()),
        document_(session.document()),
        table_(table),
        family_(family),
        plan_(MakePlan(session, table, family)),
        settings_(plan_.settings) {}

  CreationReport Execute() {
    const CreationParameters& p = settings_.params;
    host::SkipLog& skips = report_.skips;
    MakeLayer(document_, p.viewport_layer, false, false, false, skips);
    if (p.set_annotation_scale) {
      MakeLayer(document_, kAnnotationLayer, false, false, true, skips);
      FreezeAllLayers(document_, true, kAnnotationLayer, skips);
    }
    skips.Append(utilities::ViewportOffOn(session_, false).skips);

    const std::vector<std::string> before = LayoutNames(document_);
    if (family_ != HostFamily::kNone) Dispatch();
    if (p.delete_earlier_layouts && !refused_) {
      std::string_view pattern = settings_.mode == CreationMode::kEmpty
                                     ? std::string_view()
                                     : settings_.pattern_layout;
      report_.deleted = LayoutsToDelete(before, pattern, report_.created);
      for (const std::string& name : report_.deleted) {
        DeleteLayout(document_, name, skips);
      }
    }

    if (p.set_annotation_scale) {
      FreezeAllLayers(document_, false, "", skips);
      MakeLayer(document_, "0", false, false, true, skips);
      DeleteLayer(document_, kAnnotationLayer, skips);
    }
    skips.Append(utilities::ViewportOffOn(session_, true).skips);
    user_.SetProgressValue(0);
    // The end of the run is reported also after a refusal, as after a run
    // on a host of no family: only the user's stop silences it.
    if (user_.interrupted()) {
      report_.outcome = host::Outcome::kInterrupted;
    } else {
      session_.ShowMessage(core::kMsgLayoutsComplete,
                           host::MessageIcon::kInformation);
      if (refused_) report_.outcome = host::Outcome::kRefused;
    }
    return report_;
  }

 private:
  bool nano() const { return family_ == HostFamily::kNanoCad; }

  void Dispatch() {
    const std::string& name = settings_.pattern_layout;
    if (settings_.mode == CreationMode::kEmpty) {
      Loop(nullptr);
      return;
    }
    int missing = core::kMsgLayoutTemplateNotFound,
        hint = core::kMsgSpecifyLayoutName;
    if (settings_.mode == CreationMode::kTemplateFile) {
      missing = core::kMsgLayoutSampleNotFound;
      hint = core::kMsgSpecifyTemplateLayoutName;
      ImportPattern();
    }
    std::optional<host::LayoutPtr> pattern = FindLayout(document_, name);
    if (!pattern) {
      refused_ = true;
      session_.ShowMessage(missing, host::MessageIcon::kCritical,
                           name + "\n" + session_.messages().Get(hint));
      return;
    }
    Loop(*pattern);
  }

  // "_-Layout _Template" with the file and the layout; nanoCAD keeps its
  // file dialogs as they are.
  void ImportPattern() {
    host::SkipLog& skips = report_.skips;
    const std::string& name = settings_.pattern_layout;
    if (!nano()) {
      skips.Record(name, "set FILEDIA",
                   document_.SetVariable("FILEDIA", host::Variant(int16_t{0})));
    }
    std::string command = "_-Layout _Template\r\"" + settings_.pattern_file +
                          "\"\r\"" + name + "\"\r\x1b";
    skips.Record(name, "import pattern", document_.SendCommand(command));
    if (!nano()) {
      skips.Record(name, "set FILEDIA",
                   document_.SetVariable("FILEDIA", host::Variant(int16_t{1})));
    }
  }

  void SetLayoutCreateViewport(bool create) {
    if (nano()) return;
    host::SkipLog& skips = report_.skips;
    Result<host::ApplicationPtr> app = document_.Application();
    if (!skips.Record("", "application", app)) return;
    Result<host::PreferencesPtr> prefs = (*app)->Preferences();
    if (skips.Record("", "preferences", prefs)) {
      skips.Record("", "LayoutCreateViewport",
                   (*prefs)->SetLayoutCreateViewport(create));
    }
  }

  // The source every new layout copies: the pattern itself, or for nanoCAD
  // and ZWCAD a temporary copy of it.
  host::LayoutPtr PrepareSource(const host::LayoutPtr& pattern) {
    if (family_ == HostFamily::kAutoCad) return pattern;
    temporary_ = nano() ? kNanoCadCopyLayout : kZwCadCopyLayout;
    host::SkipLog& skips = report_.skips;
    DeleteLayout(document_, temporary_, skips);
    Result<host::LayoutsPtr> layouts = document_.Layouts();
    if (!skips.Record(temporary_, "layouts", layouts)) return pattern;
    Result<host::LayoutPtr> temp = (*layouts)->Add(temporary_);
    if (!skips.Record(temporary_, "add layout", temp)) return pattern;
    skips.Record(temporary_, "active layout", document_.SetActiveLayout(*temp));
    CopyPattern(document_, *temp, temporary_, pattern, PatternObjects(pattern),
                skips);
    return *temp;
  }

  void Loop(const host::LayoutPtr& pattern) {
    const CreationParameters& params = plan_.params;
    const std::vector<FramePlan>& plans = plan_.frames;
    report_.rows = static_cast<int>(plans.size());

    SetLayoutCreateViewport(false);
    user_.PumpEvents();
    user_.SetProgressRange(table_.row_count() - 1);
    user_.SetProgressValue(0);

    host::LayoutPtr source;
    std::vector<host::EntityPtr> objects;
    if (pattern) {
      source = PrepareSource(pattern);
      objects = PatternObjects(source);
    }
    host::SkipLog& skips = report_.skips;
    if (settings_.insert.insert) {
      std::optional<std::string> problem =
          InsertSourceProblem(document_, settings_.insert);
      if (problem) {
        StopInserting(*problem);
      } else {
        inserting_ = true;
      }
    }
    Result<host::LayoutsPtr> layouts = document_.Layouts();
    for (size_t i = 0; i < plans.size(); ++i) {
      const FramePlan& plan = plans[i];
      user_.SetProgressValue(plan.row);
      user_.PumpEvents();
      Result<host::LayoutPtr> layout =
          layouts.ok() ? (*layouts)->Add(plan.layout_name)
                       : Result<host::LayoutPtr>(layouts.status());
      // A name the host refuses (taken, or not valid there) skips the row.
      const std::string& name = plan.layout_name;
      if (!skips.Record(name, kSkipLayout, layout)) continue;
      report_.created.push_back(name);
      if (source) CopyPattern(document_, *layout, name, source, objects, skips);
      if (plan.viewport) {
        BuiltViewports built = BuildViewport(
            document_, *layout, name, *plan.viewport, params, user_, skips);
        report_.viewports +=
            (built.viewport != nullptr) + (built.copy != nullptr);
      } else {
        skips.Record(name, "active layout", document_.SetActiveLayout(*layout));
      }
      if (params.plot_layout) {
        skips.Record(name, "plot type",
                     (*layout)->SetPlotType(host::kPlotLayout));
      }
      // After the pattern's page set-up is copied, so that this one wins.
      if (i < plan_.papers.size()) {
        ApplyPageSetup(**layout, name, settings_.page_setup, plan_.papers[i],
                       skips);
      }
      if (settings_.text.create) {
        CreateSheetText(document_, settings_.text, plan.sheet, skips);
      }
      if (inserting_) Insert(**layout, plan.sheet);
      if (settings_.attributes.change) {
        ChangeAttributes(document_, settings_.attributes, plan.sheet, skips);
      }
      Result<host::ApplicationPtr> app = document_.Application();
      if (skips.Record(name, "application", app)) {
        skips.Record(name, "zoom", (*app)->ZoomExtents());
      }
      if (user_.interrupted()) break;
    }
    SetLayoutCreateViewport(true);
    if (!temporary_.empty()) DeleteLayout(document_, temporary_, skips);
  }

  // The insertion options' block into the layout's own block. A refusal
  // skips this sheet; any other failure (the source cannot be used) is told
  // once and ends the insertion for the run.
  void Insert(host::Layout& layout, const SheetValues& sheet) {
    host::SkipLog& skips = report_.skips;
    Result<host::BlockPtr> space = layout.Block();
    if (!skips.Record(sheet.layout, kSkipInsert, space)) return;
    Result<host::BlockReferencePtr> reference =
        InsertSheetBlock(document_, **space, insert_, sheet, skips);
    if (!reference.ok()) {
      if (reference.status().code() != StatusCode::kRefused) {
        StopInserting(reference.status().message());
      }
      return;
    }
    ++report_.inserted;
    // A file is read once: the later sheets take the block it defined,
    // which a host might otherwise define again from the file each time.
    if (insert_.from_file) {
      if (Result<std::string> name = (*reference)->Name(); name.ok()) {
        insert_.source = *name;
        insert_.from_file = false;
      }
    }
  }

  void StopInserting(std::string_view reason) {
    inserting_ = false;
    report_.insert_problem = InsertProblemText(session_.globals().russian(),
                                               settings_.insert, reason);
    user_.ShowMessage(report_.insert_problem, host::MessageIcon::kCritical,
                      host::MessageButtons::kOk,
                      session_.globals().product_name);
  }

  host::Session& session_;
  host::User& user_;
  host::Document& document_;
  const frames::FrameTable& table_;
  HostFamily family_;
  const CreationPlan plan_;
  const RunSettings& settings_;
  CreationReport report_;
  std::string temporary_;
  bool refused_ = false;
  bool inserting_ = false;
  InsertSettings insert_ = settings_.insert;  // the source as it goes on
};

}  // namespace

std::optional<CreationPlan> PlanLayouts(host::Session& session,
                                        const frames::FrameTable& table) {
  if (!session.Connect()) return std::nullopt;
  return MakePlan(session, table, FamilyOfHost(session.connection().host_name));
}

CreationReport CreateLayouts(host::Session& session,
                             const frames::FrameTable& table) {
  if (!session.Connect()) {
    CreationReport report;
    report.outcome = host::Outcome::kNotConnected;
    return report;
  }
  Run run(session, table, FamilyOfHost(session.connection().host_name));
  return run.Execute();
}

}  // namespace lmt::layouts
