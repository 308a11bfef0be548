// The server's IDispatch as any late-bound client (a script, another
// program) meets it, without the COM host in between: names in any case,
// property writes, refusals of malformed calls with the DISP_E_* results
// and EXCEPINFO codes such clients read, and the enumerator's contract.
#include "automation/server_object.h"

#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include <memory>
#include <string>
#include <vector>

#include "automation/server.h"
#include "automation/server_registration.h"
#include "automation/tables.h"
#include "comhost/dispatch.h"
#include "comhost/hresult_status.h"
#include "comhost/variants.h"
#include "host/object_model.h"

namespace lmt::automation {
namespace {

using comhost::ScopedVariant;

class ServerObjectTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    server_ = std::make_unique<Server>(host::HostKind::kBricsCad,
                                       GetCurrentThreadId());
    app_ = ServerObject::Create(server_->application(), kApplicationTable,
                                *server_);
  }
  void TearDown() override {
    app_->Release();
    server_.reset();
    CoUninitialize();
  }

  DISPID Id(IDispatch* object, const wchar_t* name) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = DISPID_UNKNOWN;
    object->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
    return id;
  }

  // Calls `name` with `args` given last first, as DISPPARAMS holds them.
  HRESULT Call(IDispatch* object, const wchar_t* name, WORD flags,
               std::vector<VARIANT> reversed, VARIANT* result,
               EXCEPINFO* excep = nullptr) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{reversed.data(), nullptr,
                      static_cast<UINT>(reversed.size()), 0};
    if (flags & DISPATCH_PROPERTYPUT) {
      params.rgdispidNamedArgs = &put;
      params.cNamedArgs = 1;
    }
    EXCEPINFO scratch{};
    HRESULT hr = object->Invoke(Id(object, name), IID_NULL, 0, flags, &params,
                                result, excep ? excep : &scratch, nullptr);
    if (excep == nullptr) {
      SysFreeString(scratch.bstrDescription);
      SysFreeString(scratch.bstrSource);
    }
    return hr;
  }

  std::unique_ptr<Server> server_;
  IDispatch* app_ = nullptr;
};

TEST_F(ServerObjectTest, NamesMatchInAnyCaseAndUnknownOnesAreRefused) {
  EXPECT_EQ(Id(app_, L"Version"), Id(app_, L"vERSION"));
  EXPECT_NE(Id(app_, L"Version"), DISPID_UNKNOWN);
  EXPECT_EQ(Id(app_, L"Versions"), DISPID_UNKNOWN);
  ScopedVariant version;
  ASSERT_EQ(Call(app_, L"version", DISPATCH_PROPERTYGET, {}, version.get()),
            S_OK);
  EXPECT_EQ(comhost::ReadText(*version.get()).value_or(""), "23.2.06");
}

TEST_F(ServerObjectTest, PropertiesAreWrittenWithTheNamedPutArgument) {
  ScopedVariant off = comhost::BoolVariant(false);
  ASSERT_EQ(Call(app_, L"Visible", DISPATCH_PROPERTYPUT, {*off.get()}, nullptr),
            S_OK);
  ScopedVariant visible;
  ASSERT_EQ(Call(app_, L"Visible", DISPATCH_PROPERTYGET, {}, visible.get()),
            S_OK);
  EXPECT_EQ(V_VT(visible.get()), VT_BOOL);
  EXPECT_EQ(V_BOOL(visible.get()), VARIANT_FALSE);
  // A read-only property refuses a write with a code the client can read.
  ScopedVariant text = comhost::TextVariant("99");
  EXCEPINFO excep{};
  EXPECT_EQ(Call(app_, L"Version", DISPATCH_PROPERTYPUT, {*text.get()}, nullptr,
                 &excep),
            DISP_E_EXCEPTION);
  EXPECT_EQ(excep.scode, comhost::ScodeForStatus(StatusCode::kNotSupported));
  SysFreeString(excep.bstrDescription);
  SysFreeString(excep.bstrSource);
}

TEST_F(ServerObjectTest, MalformedCallsAreRefusedNotCrashed) {
  ScopedVariant result;
  // No such DISPID, a missing argument, an argument of the wrong type,
  // named arguments on a method.
  DISPPARAMS none{};
  EXPECT_EQ(app_->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, result.get(),
                         nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXCEPINFO excep{};
  EXPECT_EQ(Call(app_, L"GetInterfaceObject", DISPATCH_METHOD, {}, result.get(),
                 &excep),
            DISP_E_EXCEPTION);
  EXPECT_EQ(excep.scode, comhost::ScodeForStatus(StatusCode::kInvalidArgument));
  SysFreeString(excep.bstrDescription);
  SysFreeString(excep.bstrSource);
  ScopedVariant not_a_point = comhost::TextVariant("here");
  EXPECT_EQ(Call(app_, L"LmtQueuePoint", DISPATCH_METHOD, {*not_a_point.get()},
                 result.get()),
            DISP_E_EXCEPTION);
  DISPID named = 7;
  VARIANT arg = *not_a_point.get();
  DISPPARAMS with_name{&arg, &named, 1, 1};
  EXPECT_EQ(app_->Invoke(Id(app_, L"Quit"), IID_NULL, 0, DISPATCH_METHOD,
                         &with_name, result.get(), nullptr, nullptr),
            DISP_E_NONAMEDARGS);
  // Not a collection: no enumerator.
  EXPECT_EQ(app_->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_METHOD, &none,
                         result.get(), nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
}

TEST_F(ServerObjectTest, EnumeratorSkipsResetsAndClones) {
  ScopedVariant documents;
  ASSERT_EQ(Call(app_, L"Documents", DISPATCH_PROPERTYGET, {}, documents.get()),
            S_OK);
  IDispatch* docs = V_DISPATCH(documents.get());
  ScopedVariant path = comhost::TextVariant(LMT_TESTDATA_DIR "/example.dxf");
  for (int i = 0; i < 3; ++i) {
    ScopedVariant opened;
    ASSERT_EQ(Call(docs, L"Open", DISPATCH_METHOD, {*path.get()}, opened.get()),
              S_OK);
  }
  ScopedVariant enum_result;
  DISPPARAMS none{};
  ASSERT_EQ(docs->Invoke(DISPID_NEWENUM, IID_NULL, 0, DISPATCH_METHOD, &none,
                         enum_result.get(), nullptr, nullptr),
            S_OK);
  comhost::ComPtr<IEnumVARIANT> e;
  ASSERT_EQ(
      V_UNKNOWN(enum_result.get())
          ->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(e.Out())),
      S_OK);
  VARIANT items[4];
  ULONG fetched = 0;
  EXPECT_EQ(e->Skip(1), S_OK);
  EXPECT_EQ(e->Next(4, items, &fetched), S_FALSE);  // fewer than asked
  EXPECT_EQ(fetched, 2u);
  for (ULONG i = 0; i < fetched; ++i) VariantClear(&items[i]);
  EXPECT_EQ(e->Skip(1), S_FALSE);
  comhost::ComPtr<IEnumVARIANT> clone;
  ASSERT_EQ(e->Reset(), S_OK);
  ASSERT_EQ(e->Clone(clone.Out()), S_OK);
  EXPECT_EQ(clone->Next(3, items, &fetched), S_OK);
  EXPECT_EQ(fetched, 3u);
  for (ULONG i = 0; i < fetched; ++i) VariantClear(&items[i]);
}

// Extended data and views as the programs' type library types them: typed
// arrays in, VARIANT variables out, a registered application first, a view
// centre of two numbers.
TEST_F(ServerObjectTest, ExtendedDataAndViewsAreTypedAsThePrograms) {
  auto object = [&](IDispatch* from, const wchar_t* name,
                    std::vector<VARIANT> reversed = {}) {
    ScopedVariant out;
    EXPECT_EQ(Call(from, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                   std::move(reversed), out.get()),
              S_OK)
        << name;
    return out;
  };
  ScopedVariant documents = object(app_, L"Documents");
  ScopedVariant path = comhost::TextVariant(LMT_TESTDATA_DIR "/example.dxf");
  ScopedVariant doc =
      object(V_DISPATCH(documents.get()), L"Open", {*path.get()});
  ScopedVariant model = object(V_DISPATCH(doc.get()), L"ModelSpace");
  ScopedVariant corners = comhost::DoublesVariant({0, 0, 1, 0, 1, 1});
  ScopedVariant line = object(V_DISPATCH(model.get()),
                              L"AddLightWeightPolyline", {*corners.get()});
  IDispatch* entity = V_DISPATCH(line.get());

  host::SelectionFilter data;
  data.Add(1001, std::string("LMT_TEST"));
  data.Add(1000, std::string("one"));
  ScopedVariant codes, values;
  comhost::FilterVariants(data, codes, values);
  EXCEPINFO excep{};
  // Not registered yet.
  EXPECT_EQ(Call(entity, L"SetXData", DISPATCH_METHOD,
                 {*values.get(), *codes.get()}, nullptr, &excep),
            DISP_E_EXCEPTION);
  EXPECT_EQ(excep.scode, comhost::ScodeForStatus(StatusCode::kInvalidArgument));
  SysFreeString(excep.bstrDescription);
  SysFreeString(excep.bstrSource);
  ScopedVariant apps = object(V_DISPATCH(doc.get()), L"RegisteredApplications");
  ScopedVariant name = comhost::TextVariant("lmt_test");
  object(V_DISPATCH(apps.get()), L"Add", {*name.get()});
  // Codes that are not 16-bit integers.
  ScopedVariant doubles = comhost::DoublesVariant({1001, 1000});
  EXPECT_EQ(Call(entity, L"SetXData", DISPATCH_METHOD,
                 {*values.get(), *doubles.get()}, nullptr),
            DISP_E_EXCEPTION);
  ASSERT_EQ(Call(entity, L"SetXData", DISPATCH_METHOD,
                 {*values.get(), *codes.get()}, nullptr),
            S_OK);

  ScopedVariant got_codes, got_values;
  ScopedVariant by_ref_codes = comhost::RefVariant(got_codes);
  ScopedVariant by_ref_values = comhost::RefVariant(got_values);
  ScopedVariant app_name = comhost::TextVariant("LMT_TEST");
  ASSERT_EQ(Call(entity, L"GetXData", DISPATCH_METHOD,
                 {*by_ref_values.get(), *by_ref_codes.get(), *app_name.get()},
                 nullptr),
            S_OK);
  EXPECT_EQ(got_codes.type(), VT_ARRAY | VT_I2);
  EXPECT_EQ(got_values.type(), VT_ARRAY | VT_VARIANT);
  EXPECT_EQ(comhost::ReadFilter(*got_codes.get(), *got_values.get())
                .value_or(host::SelectionFilter{}),
            data);
  // Plain values where variables are wanted.
  EXPECT_EQ(Call(entity, L"GetXData", DISPATCH_METHOD,
                 {*values.get(), *codes.get(), *app_name.get()}, nullptr),
            DISP_E_EXCEPTION);

  ScopedVariant views = object(V_DISPATCH(doc.get()), L"Views");
  const int32_t before =
      comhost::ReadI4(*object(V_DISPATCH(views.get()), L"Count").get())
          .value_or(-1);
  ScopedVariant view_name = comhost::TextVariant("North");
  ScopedVariant view =
      object(V_DISPATCH(views.get()), L"Add", {*view_name.get()});
  EXPECT_EQ(Call(V_DISPATCH(views.get()), L"Add", DISPATCH_METHOD,
                 {*view_name.get()}, nullptr),
            DISP_E_EXCEPTION);  // the name is taken
  ScopedVariant point = comhost::PointVariant({5, 6, 0});
  EXPECT_EQ(Call(V_DISPATCH(view.get()), L"Center", DISPATCH_PROPERTYPUT,
                 {*point.get()}, nullptr),
            DISP_E_EXCEPTION);
  ScopedVariant centre = comhost::DoublesVariant({5, 6});
  ASSERT_EQ(Call(V_DISPATCH(view.get()), L"Center", DISPATCH_PROPERTYPUT,
                 {*centre.get()}, nullptr),
            S_OK);
  ScopedVariant lower = comhost::TextVariant("north");
  ScopedVariant found =
      object(V_DISPATCH(views.get()), L"Item", {*lower.get()});
  EXPECT_EQ(
      comhost::ReadDoubles(*object(V_DISPATCH(found.get()), L"Center").get())
          .value_or(std::vector<double>{}),
      (std::vector<double>{5, 6}));
  EXPECT_EQ(comhost::ReadI4(*object(V_DISPATCH(views.get()), L"Count").get())
                .value_or(-1),
            before + 1);
  object(V_DISPATCH(found.get()), L"Delete");
  EXPECT_EQ(comhost::ReadI4(*object(V_DISPATCH(views.get()), L"Count").get())
                .value_or(-1),
            before);
}

TEST(ServerRegistrationTest, OneStableClassPerIdentifierWhateverItsCase) {
  const CLSID a = ClassForProgId(L"AutoCAD.Application");
  EXPECT_TRUE(IsEqualCLSID(a, ClassForProgId(L"autocad.application")));
  EXPECT_FALSE(IsEqualCLSID(a, ClassForProgId(L"Icad.Application")));
  EXPECT_FALSE(IsEqualCLSID(ClassForProgId(L"ZWCAD.Application"),
                            ClassForProgId(L"ZWcad+.Application")));
  // Registered, found by the identifier; gone after unregistering.
  const std::wstring id = L"Layomat.RegistrationTest";
  ASSERT_EQ(RegisterProgId(id, L"C:\\nowhere\\server.exe", 3), S_OK);
  CLSID found{};
  ASSERT_EQ(CLSIDFromProgID(id.c_str(), &found), S_OK);
  EXPECT_TRUE(IsEqualCLSID(found, ClassForProgId(id)));
  ASSERT_EQ(UnregisterProgId(id), S_OK);
  EXPECT_NE(CLSIDFromProgID(id.c_str(), &found), S_OK);
  EXPECT_EQ(UnregisterProgId(id), S_OK);  // already gone
}

}  // namespace
}  // namespace lmt::automation
