// VARIANT conversions both ways, as the object model's servers send them:
// points and coordinate lists, filters, by-reference values, arrays of
// VT_VARIANT, numbers as text, and what must fail instead of guessing.
#include "comhost/variants.h"

#include <gtest/gtest.h>
#include <oleauto.h>

namespace lmt::comhost {
namespace {

TEST(VariantsTest, ValuesRoundTrip) {
  EXPECT_EQ(ReadText(*TextVariant("Лист 1").get()).value_or(""), "Лист 1");
  EXPECT_EQ(ReadText(*TextVariant("").get()).value_or("?"), "");
  // VT_BOOL true is -1 on the wire.
  ScopedVariant yes = BoolVariant(true);
  EXPECT_EQ(V_BOOL(yes.get()), VARIANT_TRUE);
  EXPECT_TRUE(ReadBool(*yes.get()).value_or(false));
  EXPECT_EQ(ReadI8(*I8Variant(int64_t{1} << 40).get()).value_or(0),
            int64_t{1} << 40);
  host::Point p{1.5, -2, 3};
  EXPECT_EQ(ReadPoint(*PointVariant(p).get()).value_or(host::Point{}), p);
  std::vector<double> coords = {0, 0, 420, 0, 420, 297, 0, 297};
  EXPECT_EQ(ReadDoubles(*DoublesVariant(coords).get())
                .value_or(std::vector<double>{}),
            coords);
  for (const host::Variant& v :
       {host::Variant(int16_t{1}), host::Variant(int32_t{70000}),
        host::Variant(0.25), host::Variant(std::string("*TOPVIEW*")),
        host::Variant(host::Point{0, 0, 1})}) {
    Result<host::Variant> back = ReadHostVariant(*HostVariant(v).get());
    ASSERT_TRUE(back.ok());
    EXPECT_EQ(*back, v);
  }
}

TEST(VariantsTest, LenientWhereServersAreLoose) {
  // A point as an array of VT_VARIANT numbers, and two coordinates.
  std::vector<ScopedVariant> parts;
  parts.push_back(I4Variant(10));
  parts.push_back(R8Variant(20.5));
  EXPECT_EQ(ReadPoint(*VariantArrayVariant(std::move(parts)).get())
                .value_or(host::Point{}),
            (host::Point{10, 20.5, 0}));
  // A number held as text; a by-reference value.
  EXPECT_EQ(ReadR8(*TextVariant("2.5").get()).value_or(0), 2.5);
  ScopedVariant target = I4Variant(7);
  ScopedVariant ref;
  V_VT(ref.get()) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(ref.get()) = target.get();
  EXPECT_EQ(ReadI4(*ref.get()).value_or(0), 7);
  EXPECT_TRUE(IsMissing(*MissingVariant().get()));
  EXPECT_TRUE(IsMissing(ScopedVariant().get()[0]));
}

TEST(VariantsTest, WrongShapesFail) {
  EXPECT_EQ(ReadPoint(*DoublesVariant({1, 2, 3, 4}).get()).status().code(),
            StatusCode::kInvalidArgument);
  EXPECT_EQ(ReadPoint(*R8Variant(1).get()).status().code(),
            StatusCode::kInvalidArgument);
  EXPECT_FALSE(ReadI4(*TextVariant("twelve").get()).ok());
  EXPECT_FALSE(ReadDispatch(*R8Variant(1).get()).ok());
  EXPECT_FALSE(ReadHostVariant(*MissingVariant().get()).ok());
}

TEST(VariantsTest, FiltersTravelAsTwoParallelArrays) {
  host::SelectionFilter filter;
  filter.Add(-4, std::string("<OR"));
  filter.Add(0, std::string("LWPOLYLINE"));
  filter.Add(62, int16_t{3});
  filter.Add(370, int32_t{-1});
  filter.Add(40, 2.5);
  filter.Add(-4, std::string("OR>"));
  ScopedVariant codes, values;
  FilterVariants(filter, codes, values);
  EXPECT_EQ(codes.type(), VT_ARRAY | VT_I2);
  EXPECT_EQ(values.type(), VT_ARRAY | VT_VARIANT);
  Result<host::SelectionFilter> back = ReadFilter(*codes.get(), *values.get());
  ASSERT_TRUE(back.ok()) << back.status().ToString();
  EXPECT_EQ(*back, filter);
  // No filter at all, and arrays that do not pair up.
  EXPECT_TRUE(
      ReadFilter(*MissingVariant().get(), *MissingVariant().get())->empty());
  EXPECT_FALSE(
      ReadFilter(*DoublesVariant({1, 2}).get(), *DoublesVariant({1}).get())
          .ok());
}

// An object that counts its references.
class Counted final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch)) {
      *out = this;
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
  ULONG STDMETHODCALLTYPE Release() override { return --refs; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID,
                                          DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*,
                                   VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  ULONG refs = 1;
};

// Object arrays once stored the address of each interface pointer instead
// of the pointer (a crash on the first call through an element).
TEST(VariantsTest, ObjectArraysHoldTheObjectsAndTheirReferences) {
  Counted a, b;
  {
    ScopedVariant array = DispatchArrayVariant({&a, &b});
    EXPECT_EQ(a.refs, 2u);
    Result<std::vector<ComPtr<IDispatch>>> back =
        ReadDispatchArray(*array.get());
    ASSERT_TRUE(back.ok()) << back.status().ToString();
    ASSERT_EQ(back->size(), 2u);
    EXPECT_EQ((*back)[0].get(), &a);
    EXPECT_EQ((*back)[1].get(), &b);
  }
  EXPECT_EQ(a.refs, 1u);
  EXPECT_EQ(b.refs, 1u);
}

// Arrays that crossed processes under Wine arrived without their own
// element type; the variant's type is what counts.
TEST(VariantsTest, ArrayWithoutItsOwnElementTypeIsRead) {
  ScopedVariant array = DoublesVariant({1, 2, 3});
  V_ARRAY(array.get())->fFeatures &= ~FADF_HAVEVARTYPE;
  EXPECT_EQ(ReadPoint(*array.get()).value_or(host::Point{}),
            (host::Point{1, 2, 3}));
}

}  // namespace
}  // namespace lmt::comhost
