// A client that knows Layomats.dll only by its ProgID, as the launcher does:
// CLSIDFromProgID, CoCreateInstance, GetIDsOfNames and Invoke. It needs the
// DLL registered (ctest does that with regsvr32 first) and links nothing of
// the server.
#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

// UTF-8 bytes to stdout: wprintf to a pipe under Wine loses everything from
// the first Cyrillic letter on.
void PrintUtf8(const std::wstring& label, const std::wstring& text) {
  std::wstring line = label + text + L"\n";
  int n = WideCharToMultiByte(CP_UTF8, 0, line.data(),
                              static_cast<int>(line.size()), nullptr, 0,
                              nullptr, nullptr);
  std::string bytes(n, '\0');
  WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()),
                      bytes.data(), n, nullptr, nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  std::fflush(stdout);
}

VARIANT Long(LONG v) {
  VARIANT x;
  VariantInit(&x);
  V_VT(&x) = VT_I4;
  V_I4(&x) = v;
  return x;
}

// Zero when the file does not exist.
FILETIME LastWrite(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
    return FILETIME{};
  }
  return data.ftLastWriteTime;
}

class LateBoundTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    ASSERT_EQ(CLSIDFromProgID(L"Layomats.LmtView", &clsid_), S_OK)
        << "not registered";
    ASSERT_EQ(CoCreateInstance(clsid_, nullptr, CLSCTX_INPROC_SERVER,
                               IID_IDispatch, reinterpret_cast<void**>(&view_)),
              S_OK);
    VariantInit(&result_);
  }
  void TearDown() override {
    VariantClear(&result_);
    if (view_ != nullptr) view_->Release();
    CoUninitialize();
  }

  // Invokes `name` with `args` in the caller's order; the result is in
  // result_.
  HRESULT Call(const wchar_t* name, std::vector<VARIANT> args = {}) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    DISPID id = DISPID_UNKNOWN;
    HRESULT hr =
        view_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(hr)) return hr;
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPPARAMS params = {reversed.data(), nullptr,
                         static_cast<UINT>(reversed.size()), 0};
    VariantClear(&result_);
    hr = view_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                       &params, &result_, nullptr, nullptr);
    for (VARIANT& v : args) VariantClear(&v);
    return hr;
  }
  bool ResultIsTrue() const {
    return V_VT(&result_) == VT_BOOL && V_BOOL(&result_) == VARIANT_TRUE;
  }
  std::wstring ResultText() const {
    return V_VT(&result_) == VT_BSTR ? std::wstring(V_BSTR(&result_))
                                     : L"<not text>";
  }

  CLSID clsid_{};
  IDispatch* view_ = nullptr;
  VARIANT result_;
};

TEST_F(LateBoundTest, FollowsTheLaunchersCallingProtocol) {
  ASSERT_EQ(Call(L"LmtStartDLL"), S_OK);
  EXPECT_TRUE(ResultIsTrue());
  ASSERT_EQ(Call(L"LmtGetProg"), S_OK);
  const std::wstring product = ResultText();
  PrintUtf8(L"product name: ", product);
  EXPECT_TRUE(product == L"Лайомат" || product == L"Layomat") << "see above";
  ASSERT_EQ(Call(L"LmtPutFileINIform"), S_OK);
  const std::wstring ini = ResultText();
  PrintUtf8(L"launcher's file: ", ini);
  const std::wstring tail = L"\\Layomat\\FormViewport.ini";
  ASSERT_GT(ini.size(), tail.size());
  EXPECT_EQ(ini.substr(ini.size() - tail.size()), tail);

  ASSERT_EQ(Call(L"LmtStartProg"), S_OK);
  EXPECT_TRUE(ResultIsTrue());
  for (int i = 0; i < 3; ++i) {  // the launcher repeats these at will
    ASSERT_EQ(Call(L"LmtParent"), S_OK);
    EXPECT_EQ(V_VT(&result_), VT_I4);
    ASSERT_EQ(Call(L"LmtResize", {Long(12000 + i), Long(9000)}), S_OK);
    EXPECT_EQ(V_VT(&result_), VT_EMPTY);
  }
  VARIANT width;
  VariantInit(&width);
  V_VT(&width) = VT_BSTR;
  V_BSTR(&width) = SysAllocString(L"15000");
  EXPECT_EQ(Call(L"LmtResize", {width, Long(9000)}), S_OK);

  VARIANT empty;
  VariantInit(&empty);
  V_VT(&empty) = VT_BSTR;
  V_BSTR(&empty) = SysAllocString(L"");
  ASSERT_EQ(Call(L"FunctionCommands", {empty}), S_OK);
  EXPECT_TRUE(ResultIsTrue());

  // Only the canonical true acts; 0 and 1 return true and change nothing:
  // the settings file beside the launcher's is not written and the object
  // answers as before.
  const std::wstring settings =
      ini.substr(0, ini.size() - std::wstring(L"FormViewport.ini").size()) +
      L"LayomatNas.ini";
  const FILETIME written_before = LastWrite(settings);
  ASSERT_EQ(Call(L"LmtExit", {Long(0)}), S_OK);
  EXPECT_TRUE(ResultIsTrue());
  ASSERT_EQ(Call(L"LmtExit", {Long(1)}), S_OK);
  EXPECT_TRUE(ResultIsTrue());
  const FILETIME written_after = LastWrite(settings);
  EXPECT_EQ(CompareFileTime(&written_before, &written_after), 0);
  ASSERT_EQ(Call(L"LmtGetProg"), S_OK);
  EXPECT_EQ(ResultText(), product);

  VARIANT save;
  VariantInit(&save);
  V_VT(&save) = VT_BOOL;
  V_BOOL(&save) = VARIANT_TRUE;
  ASSERT_EQ(Call(L"LmtExit", {save}), S_OK);
  EXPECT_TRUE(ResultIsTrue());
}

TEST_F(LateBoundTest, TypeLibraryListsTheMethodsWithTheDispatchIds) {
  const wchar_t* expected[] = {L"LmtStartDLL",       L"LmtGetProg",
                               L"LmtPutFileINIform", L"LmtParent",
                               L"LmtResize",         L"LmtStartProg",
                               L"LmtExit",           L"FunctionCommands"};
  UINT count = 0;
  ASSERT_EQ(view_->GetTypeInfoCount(&count), S_OK);
  ASSERT_EQ(count, 1u);
  ITypeInfo* info = nullptr;
  ASSERT_EQ(view_->GetTypeInfo(0, 0, &info), S_OK);
  TYPEATTR* attr = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attr), S_OK);
  EXPECT_EQ(attr->typekind, TKIND_DISPATCH);
  ASSERT_EQ(attr->cFuncs, 8);
  info->ReleaseTypeAttr(attr);
  for (UINT i = 0; i < 8; ++i) {
    FUNCDESC* func = nullptr;
    ASSERT_EQ(info->GetFuncDesc(i, &func), S_OK);
    BSTR name = nullptr;
    ASSERT_EQ(
        info->GetDocumentation(func->memid, &name, nullptr, nullptr, nullptr),
        S_OK);
    EXPECT_EQ(std::wstring(name), expected[i]);
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(view_->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
    EXPECT_EQ(id, func->memid) << "type library and dispatcher disagree";
    SysFreeString(name);
    info->ReleaseFuncDesc(func);
  }
  info->Release();
}

TEST_F(LateBoundTest, RegisteredAsApartmentThreadedInProcessServer) {
  wchar_t clsid_text[40] = {};
  StringFromGUID2(clsid_, clsid_text, 40);
  std::wstring key =
      std::wstring(L"CLSID\\") + clsid_text + L"\\InprocServer32";
  wchar_t model[32] = {};
  DWORD size = sizeof(model);
  ASSERT_EQ(RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), L"ThreadingModel",
                         RRF_RT_REG_SZ, nullptr, model, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(std::wstring(model), L"Apartment");
  wchar_t path[MAX_PATH] = {};
  size = sizeof(path);
  ASSERT_EQ(RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ,
                         nullptr, path, &size),
            ERROR_SUCCESS);
  std::wstring dll(path);
  EXPECT_EQ(dll.substr(dll.size() - 13), L"\\Layomats.dll");
}

}  // namespace
