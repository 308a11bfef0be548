// The COM host over the automation server's objects in one process: every
// conversion of the object model (points, coordinate lists, filters, out
// parameters, object arrays, objects passed back), refusals as Statuses,
// DISPID caching and batched enumeration, checked against the embedded host
// answering the same questions directly.
#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

#include "automation/server.h"
#include "automation/server_object.h"
#include "automation/tables.h"
#include "comhost/com_application.h"
#include "comhost/com_object.h"
#include "host/object_model.h"

namespace lmt::automation {
namespace {

const std::string kExample = LMT_TESTDATA_DIR "/example.dxf";

class ComObjectModelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    server_ = std::make_unique<Server>(host::HostKind::kAutoCad,
                                       GetCurrentThreadId());
    IDispatch* raw = ServerObject::Create(server_->application(),
                                          kApplicationTable, *server_);
    app_ = comhost::WrapApplication(comhost::ComPtr<IDispatch>::Adopt(raw));
    Result<host::DocumentsPtr> documents = app_->Documents();
    ASSERT_TRUE(documents.ok());
    Result<host::DocumentPtr> doc = (*documents)->Open(kExample);
    ASSERT_TRUE(doc.ok()) << doc.status().ToString();
    doc_ = *doc;
    // The same drawing as the embedded host hands it out directly.
    Result<host::DocumentPtr> direct = server_->application()->ActiveDocument();
    ASSERT_TRUE(direct.ok());
    direct_ = *direct;
  }
  void TearDown() override {
    doc_.reset();
    direct_.reset();
    app_.reset();
    server_.reset();
    CoUninitialize();
  }

  std::vector<host::EntityPtr> Model(const host::Database& db) {
    Result<host::BlockPtr> model = db.ModelSpace();
    EXPECT_TRUE(model.ok());
    if (!model.ok()) return {};
    Result<std::vector<host::EntityPtr>> items = (*model)->Items();
    EXPECT_TRUE(items.ok()) << items.status().ToString();
    return items.value_or(std::vector<host::EntityPtr>());
  }

  const comhost::CallStats& Trips() { return *comhost::CallStatsOf(*app_); }

  std::unique_ptr<Server> server_;
  host::ApplicationPtr app_;
  host::DocumentPtr doc_;
  host::DocumentPtr direct_;
};

TEST_F(ComObjectModelTest, ModelSpaceReadsAsTheEmbeddedHostReadsIt) {
  std::vector<host::EntityPtr> com = Model(*doc_);
  std::vector<host::EntityPtr> direct = Model(*direct_);
  ASSERT_EQ(com.size(), direct.size());
  ASSERT_EQ(com.size(), 30u);
  for (size_t i = 0; i < com.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(com[i]->Handle().value_or("?"), direct[i]->Handle().value_or(""));
    EXPECT_EQ(com[i]->Layer().value_or("?"), direct[i]->Layer().value_or(""));
    // The class follows ObjectName.
    EXPECT_EQ(host::As<host::Polyline>(com[i]) != nullptr,
              host::As<host::Polyline>(direct[i]) != nullptr);
    EXPECT_EQ(host::As<host::BlockReference>(com[i]) != nullptr,
              host::As<host::BlockReference>(direct[i]) != nullptr);
    // Out parameters: GetBoundingBox fills two points.
    Result<host::BoundingBox> a = com[i]->GetBoundingBox();
    Result<host::BoundingBox> b = direct[i]->GetBoundingBox();
    ASSERT_EQ(a.ok(), b.ok());
    if (a.ok()) {
      EXPECT_EQ(*a, *b);
    }
    if (auto p = host::As<host::Polyline>(com[i])) {
      auto q = host::As<host::Polyline>(direct[i]);
      using Coords = std::vector<double>;
      EXPECT_EQ(p->Coordinates().value_or(Coords{}),
                q->Coordinates().value_or(Coords{1}));
      EXPECT_EQ(p->Coordinate(2).value_or(host::Point{}),
                q->Coordinate(2).value_or(host::Point{1, 1, 1}));
      EXPECT_EQ(p->Coordinate(99).status().code(), StatusCode::kNotFound);
    }
    if (auto r = host::As<host::BlockReference>(com[i])) {
      auto s = host::As<host::BlockReference>(direct[i]);
      EXPECT_EQ(r->Name().value_or("?"), "FRAME_A3");
      EXPECT_EQ(r->InsertionPoint().value_or(host::Point{}),
                s->InsertionPoint().value_or(host::Point{1, 1, 1}));
      using Attributes = std::vector<host::AttributePtr>;
      EXPECT_EQ(r->GetAttributes().value_or(Attributes{}).size(),
                s->GetAttributes().value_or(Attributes{}).size());
      // The definition's base point, which places its inner frame.
      Result<host::BlocksPtr> com_blocks = doc_->Blocks();
      Result<host::BlocksPtr> direct_blocks = direct_->Blocks();
      ASSERT_TRUE(com_blocks.ok() && direct_blocks.ok());
      Result<host::BlockPtr> a = (*com_blocks)->Item("FRAME_A3");
      Result<host::BlockPtr> b = (*direct_blocks)->Item("FRAME_A3");
      ASSERT_TRUE(a.ok() && b.ok());
      Result<host::Point> origin = (*a)->Origin();
      ASSERT_TRUE(origin.ok()) << origin.status().ToString();
      EXPECT_EQ(*origin, (*b)->Origin().value_or(host::Point{1, 1, 1}));
    }
  }
}

TEST_F(ComObjectModelTest, FilteredSelectionMatchesTheDirectOne) {
  struct Case {
    const char* name;
    host::SelectionFilter filter;
    size_t expected;
  };
  host::SelectionFilter frames_layer;
  frames_layer.Add(8, std::string("FRAMES"));
  host::SelectionFilter polylines_or_blocks;
  polylines_or_blocks.Add(-4, std::string("<OR"));
  polylines_or_blocks.Add(0, std::string("LWPOLYLINE"));
  polylines_or_blocks.Add(2, std::string("FRAME_A3"));
  polylines_or_blocks.Add(-4, std::string("OR>"));
  host::SelectionFilter circles_by_number;
  circles_by_number.Add(0, std::string("CIRCLE"));
  circles_by_number.Add(62, int16_t{256});
  // Everything is every space: the model's 30 and the pattern layout's text.
  const Case cases[] = {{"everything", {}, 31},
                        {"layer", frames_layer, 9},
                        {"or-group", polylines_or_blocks, 9},
                        {"int16-value", circles_by_number, 9}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> handles[2];
    int side = 0;
    for (const host::DocumentPtr& doc : {doc_, direct_}) {
      Result<host::SelectionSetsPtr> sets = doc->SelectionSets();
      ASSERT_TRUE(sets.ok());
      Result<host::SelectionSetPtr> set =
          (*sets)->Add(std::string("T") + c.name + std::to_string(side));
      ASSERT_TRUE(set.ok()) << set.status().ToString();
      Status s = (*set)->Select(host::SelectMode::kAll, c.filter);
      ASSERT_TRUE(s.ok()) << s.ToString();
      using Entities = std::vector<host::EntityPtr>;
      for (const host::EntityPtr& e : (*set)->Items().value_or(Entities{})) {
        handles[side].push_back(e->Handle().value_or("?"));
      }
      ++side;
    }
    EXPECT_EQ(handles[0], handles[1]);
    EXPECT_EQ(handles[0].size(), c.expected);
  }
}

TEST_F(ComObjectModelTest, SystemVariablesKeepTheirKinds) {
  Result<host::Variant> tilemode = doc_->GetVariable("TILEMODE");
  ASSERT_TRUE(tilemode.ok());
  EXPECT_TRUE(std::holds_alternative<int16_t>(*tilemode));
  Result<host::Variant> viewdir = doc_->GetVariable("VIEWDIR");
  ASSERT_TRUE(viewdir.ok());
  EXPECT_TRUE(std::holds_alternative<host::Point>(*viewdir));
  Result<host::Variant> ucs = doc_->GetVariable("UCSNAME");
  ASSERT_TRUE(ucs.ok());
  EXPECT_TRUE(std::holds_alternative<std::string>(*ucs));
  EXPECT_EQ(doc_->GetVariable("NOSUCHVAR").status().code(),
            StatusCode::kNotFound);
  // Cyrillic text crosses as UTF-16 and comes back whole.
  Result<host::LayersPtr> layers = doc_->Layers();
  ASSERT_TRUE(layers.ok());
  Result<host::LayerPtr> added = (*layers)->Add("Рамки");
  ASSERT_TRUE(added.ok());
  EXPECT_EQ((*added)->Name().value_or("?"), "Рамки");
}

TEST_F(ComObjectModelTest, ObjectsPassedBackAreRecognised) {
  Result<host::LayoutsPtr> layouts = doc_->Layouts();
  ASSERT_TRUE(layouts.ok());
  Result<host::LayoutPtr> sheet = (*layouts)->Add("Sheet-X");
  ASSERT_TRUE(sheet.ok()) << sheet.status().ToString();
  ASSERT_TRUE(doc_->SetActiveLayout(*sheet).ok());
  EXPECT_EQ((*doc_->ActiveLayout())->Name().value_or("?"), "Sheet-X");
  // Copies of model objects into the new layout's block.
  Result<host::BlockPtr> block = (*sheet)->Block();
  ASSERT_TRUE(block.ok());
  std::vector<host::EntityPtr> model = Model(*doc_);
  Result<std::vector<host::EntityPtr>> copies =
      doc_->CopyObjects({model[0], model[1]}, *block);
  ASSERT_TRUE(copies.ok()) << copies.status().ToString();
  EXPECT_EQ(copies->size(), 2u);
  // An object of another host cannot be passed.
  EXPECT_EQ(doc_->CopyObjects(Model(*direct_), *block).status().code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ(doc_->SetActiveLayout(nullptr).code(),
            StatusCode::kInvalidArgument);
}

// A program that rejects calls while busy: each call is repeated until the
// program takes it, so the walk reads the same; a program busy for longer
// than the budget refuses the call instead of hanging the add-in.
TEST_F(ComObjectModelTest, BusyProgramIsWaitedForWithinTheBudget) {
  const std::vector<host::EntityPtr> calm = Model(*doc_);
  server_->SimulateBusy(/*every=*/4, /*tries=*/2);
  const std::vector<host::EntityPtr> busy = Model(*doc_);
  ASSERT_EQ(busy.size(), calm.size());
  for (size_t i = 0; i < busy.size(); ++i) {
    EXPECT_EQ(busy[i]->Handle().value_or("?"), calm[i]->Handle().value_or(""));
    EXPECT_EQ(busy[i]->Layer().value_or("?"), calm[i]->Layer().value_or(""));
  }
  EXPECT_GT(Trips().busy_retries, 0);

  server_->SimulateBusy(/*every=*/1, /*tries=*/1000000);
  comhost::ComContext context;
  context.set_busy_budget(std::chrono::milliseconds(200));
  const auto started = std::chrono::steady_clock::now();
  Result<comhost::ScopedVariant> version =
      comhost::Invoke(context, comhost::DispatchOf(app_.get()), "Application",
                      "Version", comhost::CallKind::kGet);
  EXPECT_FALSE(version.ok());
  EXPECT_LT(std::chrono::steady_clock::now() - started,
            std::chrono::seconds(5));
  EXPECT_GT(context.stats().busy_retries, 0);
  server_->SimulateBusy(0, 0);
}

TEST_F(ComObjectModelTest, RefusalsComeBackAsStatusesWithTheirCode) {
  server_->application()->gate().Refuse("Entity.Layer");
  std::vector<host::EntityPtr> model = Model(*doc_);
  ASSERT_FALSE(model.empty());
  Result<std::string> layer = model[0]->Layer();
  EXPECT_EQ(layer.status().code(), StatusCode::kRefused);
  EXPECT_NE(layer.status().message().find("Entity.Layer"), std::string::npos)
      << layer.status().message();
  // Other members go on working.
  EXPECT_TRUE(model[0]->Handle().ok());
  ASSERT_NE(host::As<host::BlockReference>(model[0]), nullptr);
  EXPECT_TRUE(host::As<host::BlockReference>(model[0])->Rotation().ok());
  // A member of another kind of entity is not supported, twice (the stale
  // DISPID is asked again once, then the answer stands).
  comhost::ComContext context;
  IDispatch* reference = comhost::DispatchOf(model[0].get());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(comhost::Invoke(context, reference, "AcDbBlockReference",
                              "Coordinates", comhost::CallKind::kGet)
                  .status()
                  .code(),
              StatusCode::kNotSupported);
  }
  // An unknown name and a missing argument.
  EXPECT_EQ(comhost::Invoke(context, reference, "AcDbBlockReference", "Nope",
                            comhost::CallKind::kGet)
                .status()
                .code(),
            StatusCode::kNotSupported);
  EXPECT_EQ(comhost::Invoke(context, reference, "AcDbBlockReference", "Move",
                            comhost::CallKind::kGet)
                .status()
                .code(),
            StatusCode::kInvalidArgument);
}

TEST_F(ComObjectModelTest, NamesLookedUpOncePerTypeAndWalksBatched) {
  std::vector<host::EntityPtr> model = Model(*doc_);
  for (const host::EntityPtr& e : model) e->Layer().status().IgnoreError();
  const int64_t lookups = Trips().name_lookups;
  const int64_t invokes = Trips().invokes;
  for (const host::EntityPtr& e : model) e->Layer().status().IgnoreError();
  // The second pass asks no names and costs one call per entity.
  EXPECT_EQ(Trips().name_lookups, lookups);
  EXPECT_EQ(Trips().invokes - invokes, static_cast<int64_t>(model.size()));
  // Walking model space: the enumerator in one batch, plus one ObjectName
  // per entity to choose its class.
  const comhost::CallStats before = Trips();
  Model(*doc_);
  EXPECT_EQ(Trips().enum_calls - before.enum_calls, 3);
  EXPECT_LE(Trips().invokes - before.invokes, 2 + 30);
}

TEST_F(ComObjectModelTest,
       PicksAndPromptsAnsweredInTheProgramCrossWithTheirCode) {
  Result<host::UtilityPtr> utility = doc_->Utility();
  ASSERT_TRUE(utility.ok());
  // Nothing queued: the user cancels, and the caller sees a cancel, not a
  // refusal (the commands stop quietly on a cancel).
  EXPECT_EQ((*utility)->GetPoint(std::nullopt, "Start").status().code(),
            StatusCode::kCancelled);
  EXPECT_EQ(
      (*utility)->GetDistance(host::Point{1, 2, 0}, "Length").status().code(),
      StatusCode::kCancelled);
  server_->user().QueuePoint({10, 20, 0});
  EXPECT_EQ((*utility)
                ->GetPoint(host::Point{0, 0, 0}, "Start")
                .value_or(host::Point{}),
            (host::Point{10, 20, 0}));

  Result<host::SelectionSetsPtr> sets = doc_->SelectionSets();
  ASSERT_TRUE(sets.ok());
  Result<host::SelectionSetPtr> set = (*sets)->Add("VremeniyNaborPrint");
  ASSERT_TRUE(set.ok());
  host::SelectionFilter frames_only;
  frames_only.Add(8, std::string("FRAMES"));
  server_->user().QueuePickCancel();
  EXPECT_EQ((*set)->SelectOnScreen(frames_only).code(), StatusCode::kCancelled);
  // A pick of a frame and a circle: the filter keeps the frame.
  server_->user().QueuePick({"94", "98"});
  ASSERT_TRUE((*set)->SelectOnScreen(frames_only).ok());
  EXPECT_EQ((*set)->Count().value_or(0), 1);
  // A name taken is refused until the set is deleted.
  EXPECT_FALSE((*sets)->Add("VremeniyNaborPrint").ok());
  ASSERT_TRUE((*set)->Delete().ok());
  EXPECT_TRUE((*sets)->Add("VremeniyNaborPrint").ok());
}

TEST_F(ComObjectModelTest, NestedOptionsFontsAndSpacesRoundTrip) {
  Result<host::PreferencesPtr> preferences = app_->Preferences();
  ASSERT_TRUE(preferences.ok());
  for (bool create : {false, true}) {
    ASSERT_TRUE((*preferences)->SetLayoutCreateViewport(create).ok());
    EXPECT_EQ((*preferences)->LayoutCreateViewport().value_or(!create), create);
  }
  ASSERT_TRUE((*preferences)->SetSaveAsType(61).ok());
  EXPECT_EQ((*preferences)->SaveAsType().value_or(0), 61);

  // GetFont's five out parameters and SetFont's five arguments.
  Result<host::TextStylesPtr> styles = doc_->TextStyles();
  ASSERT_TRUE(styles.ok());
  Result<host::TextStylePtr> style = (*styles)->Add("Штамп");
  ASSERT_TRUE(style.ok());
  const host::Font font{"Arial", true, false, 204, 34};
  ASSERT_TRUE((*style)->SetFont(font).ok());
  Result<host::Font> back = (*style)->GetFont();
  ASSERT_TRUE(back.ok()) << back.status().ToString();
  EXPECT_EQ(*back, font);

  // The space crosses as the object model's number; where the drawing
  // cannot switch (a layout without a viewport that is on), the host's
  // reason arrives with it.
  int switched = 0;
  for (host::Space space :
       {host::Space::kModelSpace, host::Space::kPaperSpace}) {
    Status set = doc_->SetActiveSpace(space);
    if (set.ok()) {
      ++switched;
      EXPECT_EQ(doc_->ActiveSpace().value_or(host::Space(-1)), space);
    } else {
      EXPECT_EQ(set.code(), StatusCode::kRefused);
      EXPECT_NE(set.message().find("viewport"), std::string::npos)
          << set.message();
    }
    EXPECT_EQ(doc_->ActiveSpace().value_or(host::Space(-1)),
              direct_->ActiveSpace().value_or(host::Space(-2)));
  }
  EXPECT_GE(switched, 1);
  Result<host::DocumentsPtr> documents = app_->Documents();
  ASSERT_TRUE(documents.ok());
  Result<std::vector<host::DocumentPtr>> open = (*documents)->Items();
  ASSERT_TRUE(open.ok());
  ASSERT_EQ(open->size(), 1u);
  EXPECT_EQ((*open)[0]->Name().value_or("?"), "example.dxf");
}

}  // namespace
}  // namespace lmt::automation
