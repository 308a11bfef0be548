#include "comserver/view_dispatch.h"

#include <gtest/gtest.h>
#include <oleauto.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "comserver/class_factory.h"
#include "comserver/lmt_view_methods.h"
#include "comserver/module.h"
#include "layomats_h.h"

namespace lmt::comserver {
namespace {

// What the dispatcher handed to the view.
struct Seen {
  std::vector<std::string> calls;
  std::int32_t width = 0, height = 0;
  std::int16_t save = 99;
  std::string command;
};

class RecordingView : public LmtViewMethods {
 public:
  explicit RecordingView(Seen* seen) : seen_(seen) {}
  bool LmtStartDLL() override { return Log("LmtStartDLL"); }
  std::string LmtGetProg() override {
    Log("LmtGetProg");
    return "Лайомат";
  }
  std::string LmtPutFileINIform() override {
    Log("LmtPutFileINIform");
    return "C:\\Users\\Пользователь\\Layomat\\FormViewport.ini";
  }
  std::int32_t LmtParent() override {
    Log("LmtParent");
    return 0x1234;
  }
  void LmtResize(std::int32_t width, std::int32_t height) override {
    Log("LmtResize");
    seen_->width = width;
    seen_->height = height;
  }
  bool LmtStartProg() override { return Log("LmtStartProg"); }
  bool LmtExit(std::int16_t save) override {
    seen_->save = save;
    return Log("LmtExit");
  }
  bool FunctionCommands(std::string_view command) override {
    seen_->command = command;
    return Log("FunctionCommands");
  }

 private:
  bool Log(const char* name) {
    seen_->calls.push_back(name);
    return true;
  }
  Seen* seen_;
};

VARIANT Long(LONG v) {
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_I4;
  V_I4(&x) = v;
  return x;
}
VARIANT Double(double v) {
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_R8;
  V_R8(&x) = v;
  return x;
}
VARIANT Bool(bool v) {
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_BOOL;
  V_BOOL(&x) = v ? VARIANT_TRUE : VARIANT_FALSE;
  return x;
}
VARIANT Text(const wchar_t* v) {  // the test frees it with VariantClear
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_BSTR;
  V_BSTR(&x) = SysAllocString(v);
  return x;
}
VARIANT RefTo(VARIANT* target) {  // how scripts pass a variable
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&x) = target;
  return x;
}

class ViewDispatchTest : public testing::Test {
 protected:
  void SetUp() override {
    dispatch_ =
        ViewDispatch::Create(std::make_unique<RecordingView>(&seen_), nullptr);
    ASSERT_NE(dispatch_, nullptr);
    VariantInit(&result_);
  }
  void TearDown() override {
    VariantClear(&result_);
    for (VARIANT& v : owned_) VariantClear(&v);
    dispatch_->Release();
  }

  DISPID Id(const wchar_t* name) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = 0;
    EXPECT_EQ(dispatch_->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK)
        << "unknown name";
    return id;
  }
  // Calls `name` with `args` in the caller's order; keeps them to free.
  HRESULT Call(const wchar_t* name, std::vector<VARIANT> args,
               WORD flags = DISPATCH_METHOD) {
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    owned_.insert(owned_.end(), args.begin(), args.end());
    DISPPARAMS params = {reversed.data(), nullptr,
                         static_cast<UINT>(reversed.size()), 0};
    VariantClear(&result_);
    arg_err_ = 77;
    return dispatch_->Invoke(Id(name), IID_NULL, 0, flags, &params, &result_,
                             nullptr, &arg_err_);
  }

  Seen seen_;
  ViewDispatch* dispatch_ = nullptr;
  VARIANT result_;
  UINT arg_err_ = 77;
  std::vector<VARIANT> owned_;
};

TEST_F(ViewDispatchTest, NamesMatchIgnoringCaseInInterfaceOrder) {
  const wchar_t* names[] = {L"lmtstartdll",       L"LMTGETPROG",
                            L"LmtPutFileIniForm", L"lmtParent",
                            L"LMTRESIZE",         L"LmtStartProg",
                            L"lmtexit",           L"functioncommands"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Id(names[i]), i + 1) << i;

  LPOLESTR unknown[] = {const_cast<LPOLESTR>(L"LmtStart")};
  DISPID id = 0;
  EXPECT_EQ(dispatch_->GetIDsOfNames(IID_NULL, unknown, 1, 0, &id),
            DISP_E_UNKNOWNNAME);
  EXPECT_EQ(id, DISPID_UNKNOWN);
  // A parameter name (a named argument) is not known.
  LPOLESTR with_param[] = {const_cast<LPOLESTR>(L"LmtResize"),
                           const_cast<LPOLESTR>(L"width")};
  DISPID ids[2] = {0, 0};
  EXPECT_EQ(dispatch_->GetIDsOfNames(IID_NULL, with_param, 2, 0, ids),
            DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[0], kDispLmtResize);
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);
}

TEST_F(ViewDispatchTest, ResultsHaveTheAutomationTypes) {
  ASSERT_EQ(Call(L"LmtStartDLL", {}), S_OK);
  EXPECT_EQ(V_VT(&result_), VT_BOOL);
  EXPECT_EQ(V_BOOL(&result_), VARIANT_TRUE);
  // Scripts read a method without arguments as a property.
  ASSERT_EQ(Call(L"LmtGetProg", {}, DISPATCH_PROPERTYGET), S_OK);
  ASSERT_EQ(V_VT(&result_), VT_BSTR);
  EXPECT_EQ(std::wstring(V_BSTR(&result_)), L"Лайомат");
  ASSERT_EQ(Call(L"LmtPutFileINIform", {}), S_OK);
  ASSERT_EQ(V_VT(&result_), VT_BSTR);
  EXPECT_EQ(std::wstring(V_BSTR(&result_)),
            L"C:\\Users\\Пользователь\\Layomat\\FormViewport.ini");
  ASSERT_EQ(Call(L"LmtParent", {}), S_OK);
  EXPECT_EQ(V_VT(&result_), VT_I4);
  EXPECT_EQ(V_I4(&result_), 0x1234);
  ASSERT_EQ(Call(L"LmtResize", {Long(800), Long(600)}), S_OK);
  EXPECT_EQ(V_VT(&result_), VT_EMPTY);
  ASSERT_EQ(Call(L"LmtStartProg", {}), S_OK);
  EXPECT_EQ(V_BOOL(&result_), VARIANT_TRUE);
  EXPECT_EQ(seen_.calls, (std::vector<std::string>{
                             "LmtStartDLL", "LmtGetProg", "LmtPutFileINIform",
                             "LmtParent", "LmtResize", "LmtStartProg"}));
}

TEST_F(ViewDispatchTest, ResizeConvertsTextNumbersAndReferences) {
  VARIANT height = Double(600.4);
  ASSERT_EQ(Call(L"LmtResize", {Text(L"1024"), RefTo(&height)}), S_OK);
  EXPECT_EQ(seen_.width, 1024);
  EXPECT_EQ(seen_.height, 600);
}

TEST_F(ViewDispatchTest, ResizeRefusesArgumentsThatDoNotConvert) {
  EXPECT_EQ(Call(L"LmtResize", {Text(L"wide"), Long(600)}),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(arg_err_, 1u);  // the first argument is the last in rgvarg
  EXPECT_EQ(Call(L"LmtResize", {Long(800), Double(1e12)}), DISP_E_OVERFLOW);
  EXPECT_EQ(arg_err_, 0u);
  EXPECT_TRUE(seen_.calls.empty());
}

TEST_F(ViewDispatchTest, ExitPassesTheValueAndConvertsNothingElseToTrue) {
  VARIANT true_var = Bool(true);
  struct Case {
    VARIANT save;
    std::int16_t expected;
  } cases[] = {
      {Bool(true), -1},  {Bool(false), 0},       {Long(-1), -1},
      {Long(1), 1},      {Long(0), 0},           {Long(70000), 0},
      {Text(L"abc"), 0}, {RefTo(&true_var), -1},
  };
  for (Case& c : cases) {
    seen_.save = 99;
    ASSERT_EQ(Call(L"LmtExit", {c.save}), S_OK);
    EXPECT_EQ(seen_.save, c.expected);
    EXPECT_EQ(V_VT(&result_), VT_BOOL);
    EXPECT_EQ(V_BOOL(&result_), VARIANT_TRUE);
  }
}

TEST_F(ViewDispatchTest, FunctionCommandsTakesAnyText) {
  ASSERT_EQ(Call(L"FunctionCommands", {Text(L"")}), S_OK);
  EXPECT_EQ(seen_.command, "");
  EXPECT_EQ(V_BOOL(&result_), VARIANT_TRUE);
  ASSERT_EQ(Call(L"FunctionCommands", {Text(L"Команда 1")}), S_OK);
  EXPECT_EQ(seen_.command, "Команда 1");
  ASSERT_EQ(Call(L"FunctionCommands", {Long(5)}), S_OK);  // as text "5"
  EXPECT_EQ(seen_.command, "5");
}

TEST_F(ViewDispatchTest, RefusesMalformedCalls) {
  EXPECT_EQ(Call(L"LmtResize", {Long(1)}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Call(L"LmtStartDLL", {Long(1)}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Call(L"LmtParent", {Long(1)}, DISPATCH_PROPERTYPUT),
            DISP_E_MEMBERNOTFOUND);

  VARIANT arg = Long(-1);
  DISPID named = 0;
  DISPPARAMS with_name = {&arg, &named, 1, 1};
  EXPECT_EQ(dispatch_->Invoke(kDispLmtExit, IID_NULL, 0, DISPATCH_METHOD,
                              &with_name, &result_, nullptr, nullptr),
            DISP_E_NONAMEDARGS);
  DISPPARAMS none = {nullptr, nullptr, 0, 0};
  EXPECT_EQ(dispatch_->Invoke(99, IID_NULL, 0, DISPATCH_METHOD, &none, &result_,
                              nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(
      dispatch_->Invoke(kDispLmtStartDLL, IID_IDispatch, 0, DISPATCH_METHOD,
                        &none, &result_, nullptr, nullptr),
      DISP_E_UNKNOWNINTERFACE);
  // A caller that wants no result still gets the call.
  EXPECT_EQ(dispatch_->Invoke(kDispLmtStartProg, IID_NULL, 0, DISPATCH_METHOD,
                              &none, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(seen_.calls, std::vector<std::string>{"LmtStartProg"});
}

TEST_F(ViewDispatchTest, AnswersItsInterfacesAndHoldsTheModule) {
  EXPECT_TRUE(ModuleInUse());
  IDispatch* as_dispatch = nullptr;
  ASSERT_EQ(dispatch_->QueryInterface(DIID__LmtView,
                                      reinterpret_cast<void**>(&as_dispatch)),
            S_OK);
  as_dispatch->Release();
  IUnknown* other = nullptr;
  EXPECT_EQ(dispatch_->QueryInterface(IID_IClassFactory,
                                      reinterpret_cast<void**>(&other)),
            E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  UINT count = 5;
  EXPECT_EQ(dispatch_->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 0u);  // no type library in a test program
}

TEST(ViewClassObjectTest, ServesOnlyLmtViewWithoutAggregation) {
  void* out = &out;
  EXPECT_EQ(GetLmtViewClassObject(IID_IDispatch, IID_IClassFactory, &out),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(out, nullptr);
  IClassFactory* factory = nullptr;
  ASSERT_EQ(GetLmtViewClassObject(CLSID_LmtView, IID_IClassFactory,
                                  reinterpret_cast<void**>(&factory)),
            S_OK);
  // Never called: aggregation is refused before the outer object is used.
  auto* outer = reinterpret_cast<IUnknown*>(&out);
  EXPECT_EQ(factory->CreateInstance(outer, IID_IUnknown, &out),
            CLASS_E_NOAGGREGATION);
  IDispatch* view = nullptr;
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch,
                                    reinterpret_cast<void**>(&view)),
            S_OK);
  EXPECT_TRUE(ModuleInUse());
  view->Release();
  EXPECT_FALSE(ModuleInUse());
  factory->Release();
}

}  // namespace
}  // namespace lmt::comserver
