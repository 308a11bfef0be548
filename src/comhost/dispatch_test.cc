// The Invoke seam against a scripted IDispatch: argument order and put
// calls as servers expect them, every kind of failure as a Status with the
// right code, DISPIDs asked once per type and asked again when stale.
#include "comhost/dispatch.h"

#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include <map>
#include <string>

#include "comhost/hresult_status.h"
#include "comhost/variants.h"

namespace lmt::comhost {
namespace {

class ScriptedDispatch final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch)) {
      *out = this;
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
    *n = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    ++lookups;
    auto it = ids_.find(names[0]);
    if (it == ids_.end()) {
      ids[0] = DISPID_UNKNOWN;
      return DISP_E_UNKNOWNNAME;
    }
    ids[0] = it->second + shift;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags,
                                   DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* excep, UINT*) override {
    last_flags = flags;
    id -= shift;
    switch (id) {
      case 1: {  // Join: the text arguments joined as the caller gave them
        std::wstring joined;
        for (UINT i = params->cArgs; i > 0; --i) {
          joined += V_BSTR(&params->rgvarg[i - 1]);
        }
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = SysAllocString(joined.c_str());
        return S_OK;
      }
      case 2:  // Put: one value, named DISPID_PROPERTYPUT
        if (params->cNamedArgs != 1 ||
            params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
          return DISP_E_PARAMNOTOPTIONAL;
        }
        put_value = V_I4(&params->rgvarg[0]);
        return S_OK;
      case 3:  // Ours: our server's refusal with its code
        excep->scode = ScodeForStatus(StatusCode::kCancelled);
        excep->bstrDescription = SysAllocString(L"отменено");
        return DISP_E_EXCEPTION;
      case 4:  // Foreign: another program's error text
        excep->scode = E_FAIL;
        excep->bstrDescription = SysAllocString(L"Key not found");
        excep->bstrSource = SysAllocString(L"CAD");
        return DISP_E_EXCEPTION;
      case 5:
        return RPC_E_DISCONNECTED;
      case 6:
        return DISP_E_TYPEMISMATCH;
      default:
        return DISP_E_MEMBERNOTFOUND;
    }
  }

  int lookups = 0;
  DISPID shift = 0;  // a server whose numbering changed
  WORD last_flags = 0;
  int32_t put_value = 0;

 private:
  std::map<std::wstring, DISPID> ids_ = {{L"Join", 1}, {L"Value", 2},
                                         {L"Ours", 3}, {L"Foreign", 4},
                                         {L"Gone", 5}, {L"Mismatch", 6}};
};

class DispatchTest : public ::testing::Test {
 protected:
  Result<ScopedVariant> Call(std::string_view name,
                             std::vector<ScopedVariant> args = {}) {
    return Invoke(context_, &server_, "Thing", name, CallKind::kGet,
                  std::move(args));
  }
  ScriptedDispatch server_;
  ComContext context_;
};

TEST_F(DispatchTest, ArgumentsArriveInTheirOrderAndPutsAreNamed) {
  std::vector<ScopedVariant> args;
  args.push_back(TextVariant("a"));
  args.push_back(TextVariant("b"));
  args.push_back(TextVariant("c"));
  Result<ScopedVariant> joined = Call("Join", std::move(args));
  ASSERT_TRUE(joined.ok());
  EXPECT_EQ(ReadText(*joined->get()).value_or(""), "abc");
  EXPECT_EQ(server_.last_flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);

  std::vector<ScopedVariant> value;
  value.push_back(I4Variant(42));
  ASSERT_TRUE(Invoke(context_, &server_, "Thing", "Value", CallKind::kPut,
                     std::move(value))
                  .ok());
  EXPECT_EQ(server_.put_value, 42);
  EXPECT_EQ(server_.last_flags, DISPATCH_PROPERTYPUT);
}

TEST_F(DispatchTest, FailuresBecomeStatusesWithTheirCode) {
  struct Case {
    const char* member;
    StatusCode code;
    const char* in_message;
  };
  const Case cases[] = {
      {"Ours", StatusCode::kCancelled, "отменено"},
      {"Foreign", StatusCode::kRefused, "Key not found"},
      {"Gone", StatusCode::kRefused, "0x80010108"},
      {"Mismatch", StatusCode::kInvalidArgument, "Thing.Mismatch"},
      {"Unknown", StatusCode::kNotSupported, "Thing.Unknown"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.member);
    Status s = Call(c.member).status();
    EXPECT_EQ(s.code(), c.code);
    EXPECT_NE(s.message().find(c.in_message), std::string::npos) << s.message();
  }
}

TEST_F(DispatchTest, NamesAskedOncePerTypeAndAgainWhenStale) {
  ASSERT_TRUE(Call("Join").ok());
  ASSERT_TRUE(Call("Join").ok());
  EXPECT_EQ(server_.lookups, 1);
  EXPECT_EQ(context_.stats().invokes, 2);
  // Another type key is another cache entry.
  ASSERT_TRUE(Invoke(context_, &server_, "Other", "Join", CallKind::kGet).ok());
  EXPECT_EQ(server_.lookups, 2);
  // The server renumbered its members: the cached id fails once, the name
  // is asked anew and the call succeeds.
  server_.shift = 100;
  ASSERT_TRUE(Call("Join").ok());
  EXPECT_EQ(server_.lookups, 3);
  ASSERT_TRUE(Call("Join").ok());
  EXPECT_EQ(server_.lookups, 3);
}

TEST(HresultStatusTest, OurScodesRoundTripEveryCode) {
  for (StatusCode code : {StatusCode::kRefused, StatusCode::kNotFound,
                          StatusCode::kInvalidArgument,
                          StatusCode::kNotSupported, StatusCode::kCancelled,
                          StatusCode::kIOError, StatusCode::kCorruption}) {
    EXCEPINFO excep{};
    excep.scode = ScodeForStatus(code);
    EXPECT_EQ(StatusFromHresult(DISP_E_EXCEPTION, &excep, "X.Y").code(), code);
  }
  EXPECT_TRUE(StatusFromHresult(S_FALSE, nullptr, "X.Y").ok());
  EXPECT_EQ(StatusFromHresult(REGDB_E_CLASSNOTREG, nullptr, "X").code(),
            StatusCode::kNotFound);
}

}  // namespace
}  // namespace lmt::comhost
