#include "host/call_gate.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/entity.h"

namespace lmt::host {
namespace {

// A viewport whose implementation counts how often it really ran.
class CountingViewport : public PViewport {
 public:
  explicit CountingViewport(std::shared_ptr<CallGate> gate)
      : PViewport(std::move(gate)) {}
  int scale_sets = 0;
  double scale = 1;

 protected:
  Status DoSetCustomScale(double s) override {
    ++scale_sets;
    scale = s;
    return Status::Ok();
  }
  Result<double> DoCustomScale() const override { return scale; }
  Result<std::string> DoLayer() const override { return std::string("VP"); }
};

class CallGateTest : public ::testing::Test {
 protected:
  std::shared_ptr<CallGate> gate_ = std::make_shared<CallGate>();
  std::shared_ptr<CountingViewport> vp_ =
      std::make_shared<CountingViewport>(gate_);
};

TEST_F(CallGateTest, OpenGatePassesCallsThrough) {
  EXPECT_TRUE(vp_->SetCustomScale(0.01).ok());
  EXPECT_EQ(vp_->CustomScale().value(), 0.01);
  EXPECT_EQ(vp_->Layer().value(), "VP");
}

TEST_F(CallGateTest, RefusedMemberNeverReachesTheHost) {
  gate_->Refuse("PViewport.SetCustomScale");

  Status s = vp_->SetCustomScale(0.5);

  EXPECT_EQ(s.code(), StatusCode::kRefused);
  EXPECT_EQ(vp_->scale_sets, 0);
  EXPECT_EQ(vp_->CustomScale().value(), 1);  // other members unaffected
}

TEST_F(CallGateTest, MembersAreNamedByDeclaringClass) {
  gate_->Refuse("Entity.Layer");

  EXPECT_EQ(vp_->Layer().status().code(), StatusCode::kRefused);
  EXPECT_TRUE(vp_->CustomScale().ok());
}

TEST_F(CallGateTest, ClassAndEverythingPatterns) {
  gate_->Refuse("PViewport.*");
  EXPECT_FALSE(vp_->CustomScale().ok());
  EXPECT_TRUE(vp_->Layer().ok());

  gate_->AllowAll();
  gate_->Refuse("*");
  EXPECT_FALSE(vp_->Layer().ok());
}

TEST_F(CallGateTest, AllowFirstAndTimes) {
  gate_->Refuse("PViewport.SetCustomScale", /*allow_first=*/2, /*times=*/1);
  std::vector<bool> ok;
  for (int i = 0; i < 4; ++i) ok.push_back(vp_->SetCustomScale(i).ok());
  EXPECT_EQ(ok, (std::vector<bool>{true, true, false, true}));
  EXPECT_EQ(vp_->scale_sets, 3);
}

TEST_F(CallGateTest, AllowDropsRulesOfThatPattern) {
  gate_->Refuse("Entity.Layer");
  gate_->Refuse("PViewport.CustomScale");
  gate_->Allow("Entity.Layer");
  EXPECT_TRUE(vp_->Layer().ok());
  EXPECT_FALSE(vp_->CustomScale().ok());
}

TEST_F(CallGateTest, RefuseIfDecidesPerCall) {
  int calls = 0;
  gate_->RefuseIf([&](std::string_view member) {
    return member == "Entity.Layer" && ++calls % 2 == 0;
  });
  EXPECT_TRUE(vp_->Layer().ok());
  EXPECT_FALSE(vp_->Layer().ok());
  EXPECT_TRUE(vp_->Layer().ok());
}

TEST_F(CallGateTest, CountsAndLogsRefusedCallsToo) {
  gate_->set_counting(true);
  gate_->set_logging(true);
  gate_->Refuse("Entity.Layer");

  vp_->Layer().status().IgnoreError();
  vp_->SetCustomScale(2).IgnoreError();
  vp_->Layer().status().IgnoreError();

  EXPECT_EQ(gate_->CallCount("Entity.Layer"), 2);
  EXPECT_EQ(gate_->CallCount("PViewport.SetCustomScale"), 1);
  EXPECT_EQ(gate_->CallCount("PViewport.CustomScale"), 0);
  EXPECT_EQ(gate_->total_calls(), 3);
  EXPECT_EQ(gate_->refused_calls(), 2);
  EXPECT_EQ(gate_->log(),
            (std::vector<std::string>{
                "Entity.Layer", "PViewport.SetCustomScale", "Entity.Layer"}));
}

TEST_F(CallGateTest, UnimplementedMemberIsNotSupported) {
  Result<Point> center = vp_->Center();
  EXPECT_EQ(center.status().code(), StatusCode::kNotSupported);
  EXPECT_NE(center.status().message().find("PViewport.Center"),
            std::string::npos);
}

TEST_F(CallGateTest, AsGivesTheKindOrNull) {
  EntityPtr entity = vp_;
  EXPECT_EQ(As<PViewport>(entity), vp_);
  EXPECT_EQ(As<Polyline>(entity), nullptr);
  EXPECT_EQ(As<Polyline>(EntityPtr()), nullptr);
}

}  // namespace
}  // namespace lmt::host
