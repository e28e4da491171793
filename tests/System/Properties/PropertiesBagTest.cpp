#include <cstring>

#include "System/Properties/PropertiesTestSupport.h"

using namespace Corvane::Mox;
using PropertiesTest::BytesOf;
using PropertiesTest::IntArray;
using PropertiesTest::Take;

namespace {

using PropertiesBagTest = LeakCheckedTest;

// A bag that computes one property instead of storing it, to check that the
// derived operations go through the virtual lookup.
class ComputedBag : public CProperties {
 public:
  using CProperties::GetProperty;
  Result GetProperty(CString* name, CVariant*& value) const override {
    if (name && name->Equals("Answer")) {
      value = new CVariant(42);
      return ResultOK();
    }
    return CProperties::GetProperty(name, value);
  }
};

TEST_F(PropertiesBagTest, StoringTwiceKeepsOneEntryAndNamesAreCaseSensitive) {
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(bag->SetProperty("A", 1), ResultOK());
  EXPECT_EQ(bag->SetProperty("A", 2), ResultOK());
  EXPECT_EQ(bag->GetPropertyCount(), 1);
  int value = 0;
  EXPECT_EQ(bag->GetProperty("A", value), ResultOK());
  EXPECT_EQ(value, 2);
  int untouched = 77;
  EXPECT_EQ(bag->GetProperty("a", untouched), ResultFalse());
  EXPECT_EQ(untouched, 77);
  EXPECT_FALSE(bag->ContainsProperty("a"));
  EXPECT_TRUE(bag->ContainsProperty("A"));
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("a")).Get(), nullptr);
}

TEST_F(PropertiesBagTest, InsertionOrderIsKeptWhenValuesAreReplaced) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("first", 1);
  bag->SetProperty("second", 2);
  bag->SetProperty("third", 3);
  bag->SetProperty("first", 10);
  ASSERT_EQ(bag->GetPropertyCount(), 3);
  EXPECT_EQ(Take(bag->GetPropertyName(0)), "first");
  EXPECT_EQ(Take(bag->GetPropertyName(1)), "second");
  EXPECT_EQ(Take(bag->GetPropertyName(2)), "third");
  EXPECT_EQ(Take(bag->GetPropertyName(3)), "<null>");
  EXPECT_EQ(Take(bag->GetPropertyName(-1)), "<null>");
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("first"))->ToInt32(), 10);
}

TEST_F(PropertiesBagTest, ANeverWrittenBagAnswersOkAndLeavesTheOutputAlone) {
  RObject<CProperties> bag(new CProperties());
  RObject<CVariant> sentinel(new CVariant(5));
  int before = sentinel->GetReferences();
  CVariant* out = sentinel.Get();
  RObject<CString> name(new CString("missing"));
  EXPECT_EQ(bag->GetProperty(name.Get(), out), ResultOK());
  EXPECT_EQ(out, sentinel.Get());
  EXPECT_EQ(sentinel->GetReferences(), before);
  EXPECT_EQ(bag->GetPropertyCount(), 0);
  EXPECT_EQ(RObject<IProperties::Dictionary>(bag->GetProperties()).Get(), nullptr);

  // Once written, a missing name gives ResultFalse and a null output.
  bag->SetProperty("present", 1);
  out = sentinel.Get();
  EXPECT_EQ(bag->GetProperty(name.Get(), out), ResultFalse());
  EXPECT_EQ(out, nullptr);
}

TEST_F(PropertiesBagTest, ANullValueKeepsItsKeyButReadsAsAbsent) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("gone", 3);
  EXPECT_EQ(bag->SetProperty("gone", static_cast<CVariant*>(nullptr)), ResultOK());
  EXPECT_EQ(bag->GetPropertyCount(), 1);
  EXPECT_EQ(Take(bag->GetPropertyName(0)), "gone");
  RObject<CVariant> value;
  EXPECT_EQ(bag->GetProperty("gone", value.Out()), ResultFalse());
  EXPECT_EQ(value.Get(), nullptr);
  EXPECT_FALSE(bag->ContainsProperty("gone"));
  double d = 1.5;
  EXPECT_EQ(bag->GetProperty("gone", d), ResultFalse());
  EXPECT_EQ(d, 1.5);
  EXPECT_EQ(bag->SetProperty("text", static_cast<const char*>(nullptr)), ResultOK());
  EXPECT_FALSE(bag->ContainsProperty("text"));
  EXPECT_EQ(bag->GetPropertyCount(), 2);
}

TEST_F(PropertiesBagTest, TypedSettersStoreTheMatchingVariantType) {
  RObject<CProperties> bag(new CProperties());
  int local = 0;
  RObject<CString> text(new CString("s"));
  RObject<CByteArray> bytes(BytesOf({1}));
  RObject<CVariantArray> array(IntArray({1}));
  RObject<CProperties> inner(new CProperties());
  bag->SetProperty("bool", true);
  bag->SetProperty("char", 'c');
  bag->SetProperty("int8", static_cast<signed char>(-1));
  bag->SetProperty("uint8", static_cast<unsigned char>(1));
  bag->SetProperty("int16", static_cast<short>(-1));
  bag->SetProperty("uint16", static_cast<unsigned short>(1));
  bag->SetProperty("int32", -1);
  bag->SetProperty("uint32", 1u);
  bag->SetProperty("long", -1L);
  bag->SetProperty("ulong", 1UL);
  bag->SetProperty("int64", -1LL);
  bag->SetProperty("uint64", 1ULL);
  bag->SetProperty("float", 1.0f);
  bag->SetProperty("double", 1.0);
  bag->SetProperty("pointer", static_cast<void*>(&local));
  bag->SetProperty("object", static_cast<CObject*>(inner.Get()));
  bag->SetProperty("string", text.Get());
  bag->SetProperty("narrow", "n");
  bag->SetProperty("wide", L"w\u00e9");
  bag->SetProperty("bytes", bytes.Get());
  bag->SetProperty("bag", inner.Get());
  bag->SetProperty("array", array.Get());
  bag->SetFourProperty("four", FourCC("mp4a"));
  const struct {
    const char* name;
    CVariant::VariantType type;
  } expected[] = {{"bool", CVariant::Boolean},       {"char", CVariant::Char},       {"int8", CVariant::Int8},
                  {"uint8", CVariant::UInt8},        {"int16", CVariant::Int16},     {"uint16", CVariant::UInt16},
                  {"int32", CVariant::Int32},        {"uint32", CVariant::UInt32},   {"long", CVariant::Long},
                  {"ulong", CVariant::ULong},        {"int64", CVariant::Int64},     {"uint64", CVariant::UInt64},
                  {"float", CVariant::Float},        {"double", CVariant::Double},   {"pointer", CVariant::Pointer},
                  {"object", CVariant::Object},      {"string", CVariant::String},   {"narrow", CVariant::String},
                  {"wide", CVariant::String},        {"bytes", CVariant::ByteArray}, {"bag", CVariant::Properties},
                  {"array", CVariant::VariantArray}, {"four", CVariant::Four}};
  for (const auto& entry : expected) {
    RObject<CVariant> value(bag->GetProperty(entry.name));
    ASSERT_TRUE(value) << entry.name;
    EXPECT_EQ(value->GetVariantType(), entry.type) << entry.name;
  }
  EXPECT_EQ(Take(RObject<CVariant>(bag->GetProperty("wide"))->ToString()), "w\xC3\xA9");
}

TEST_F(PropertiesBagTest, TypedGettersConvertTheStoredValue) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("n", "0x20");
  bag->SetProperty("yes", "yes");
  bag->SetProperty("code", "avc1");
  bag->SetProperty("real", 2.75);
  bool b = false;
  char c = 0;
  signed char i8 = 0;
  unsigned char u8 = 0;
  short i16 = 0;
  unsigned short u16 = 0;
  int i32 = 0;
  unsigned int u32 = 0;
  long l = 0;
  unsigned long ul = 0;
  long long i64 = 0;
  unsigned long long u64 = 0;
  float f = 0;
  double d = 0;
  unsigned int four = 0;
  EXPECT_EQ(bag->GetProperty("yes", b), ResultOK());
  EXPECT_TRUE(b);
  EXPECT_EQ(bag->GetProperty("code", c), ResultOK());
  EXPECT_EQ(c, 'a');
  EXPECT_EQ(bag->GetProperty("n", i8), ResultOK());
  EXPECT_EQ(i8, 32);
  EXPECT_EQ(bag->GetProperty("n", u8), ResultOK());
  EXPECT_EQ(u8, 32);
  EXPECT_EQ(bag->GetProperty("n", i16), ResultOK());
  EXPECT_EQ(i16, 32);
  EXPECT_EQ(bag->GetProperty("n", u16), ResultOK());
  EXPECT_EQ(u16, 32);
  EXPECT_EQ(bag->GetProperty("n", i32), ResultOK());
  EXPECT_EQ(i32, 32);
  EXPECT_EQ(bag->GetProperty("n", u32), ResultOK());
  EXPECT_EQ(u32, 32u);
  EXPECT_EQ(bag->GetProperty("real", l), ResultOK());
  EXPECT_EQ(l, 2);
  EXPECT_EQ(bag->GetProperty("real", ul), ResultOK());
  EXPECT_EQ(ul, 2u);
  EXPECT_EQ(bag->GetProperty("real", i64), ResultOK());
  EXPECT_EQ(i64, 2);
  EXPECT_EQ(bag->GetProperty("real", u64), ResultOK());
  EXPECT_EQ(u64, 2u);
  EXPECT_EQ(bag->GetProperty("real", f), ResultOK());
  EXPECT_EQ(f, 2.75f);
  EXPECT_EQ(bag->GetProperty("n", d), ResultOK());
  EXPECT_EQ(d, 32.0);
  EXPECT_EQ(bag->GetFourProperty("code", four), ResultOK());
  EXPECT_EQ(four, FourCC("avc1"));

  RObject<CString> text;
  EXPECT_EQ(bag->GetProperty("real", text.Out()), ResultOK());
  EXPECT_STREQ(text->GetChars(), "2.750000");
  RObject<CByteArray> bytes;
  EXPECT_EQ(bag->GetProperty("code", bytes.Out()), ResultOK());
  EXPECT_TRUE(bytes->Equals(reinterpret_cast<const unsigned char*>("avc1"), 4));
  RObject<CByteArray> viaName(bag->GetByteArray("code"));
  EXPECT_TRUE(viaName->Equals(reinterpret_cast<const unsigned char*>("avc1"), 4));
  EXPECT_EQ(RObject<CByteArray>(bag->GetByteArray("nothing")).Get(), nullptr);

  // Reference getters only answer for their own kinds, acquired.
  RObject<CProperties> inner(new CProperties());
  RObject<CVariantArray> array(IntArray({4}));
  bag->SetProperty("inner", inner.Get());
  bag->SetProperty("array", array.Get());
  RObject<CProperties> gotBag;
  EXPECT_EQ(bag->GetProperty("inner", gotBag.Out()), ResultOK());
  EXPECT_EQ(gotBag.Get(), inner.Get());
  RObject<CVariantArray> gotArray;
  EXPECT_EQ(bag->GetProperty("array", gotArray.Out()), ResultOK());
  EXPECT_EQ(gotArray.Get(), array.Get());
  RObject<CObject> gotObject;
  EXPECT_EQ(bag->GetProperty("inner", gotObject.Out()), ResultOK());
  EXPECT_EQ(gotObject.Get(), static_cast<CObject*>(inner.Get()));
  void* pointer = nullptr;
  EXPECT_EQ(bag->GetProperty("inner", pointer), ResultOK());
  EXPECT_EQ(pointer, static_cast<void*>(static_cast<CObject*>(inner.Get())));
  RObject<CProperties> notABag;
  EXPECT_EQ(bag->GetProperty("array", notABag.Out()), ResultOK());
  EXPECT_EQ(notABag.Get(), nullptr);
}

TEST_F(PropertiesBagTest, RawBytesCopyOutWithSizeChecks) {
  RObject<CProperties> bag(new CProperties());
  unsigned char buffer[8] = {};
  EXPECT_EQ(bag->GetProperty("data", sizeof buffer, buffer), ResultFalse());  // no dictionary yet
  const unsigned char six[] = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(bag->SetProperty("data", 6, six), ResultOK());
  EXPECT_EQ(RObject<CVariant>(bag->GetProperty("data"))->GetVariantType(), CVariant::ByteArray);
  EXPECT_EQ(bag->GetProperty("data", 4, buffer), ResultBufferTooSmall());
  EXPECT_EQ(buffer[0], 0);  // nothing copied
  EXPECT_EQ(bag->GetProperty("data", 6, nullptr), ResultOK());
  EXPECT_EQ(bag->GetProperty("data", 6, buffer), ResultOK());
  EXPECT_EQ(std::memcmp(buffer, six, 6), 0);
  EXPECT_EQ(bag->GetProperty("other", 6, buffer), ResultFalse());

  // The stored copy is independent of the caller's buffer.
  unsigned char changing[] = {9, 9};
  bag->SetProperty("copy", 2, changing);
  changing[0] = 0;
  unsigned char out[2] = {};
  EXPECT_EQ(bag->GetProperty("copy", 2, out), ResultOK());
  EXPECT_EQ(out[0], 9);

  // Any value converts: an int gives its four host-order bytes.
  bag->SetProperty("number", 0x01020304);
  unsigned char number[4];
  EXPECT_EQ(bag->GetProperty("number", 4, number), ResultOK());
  int back;
  std::memcpy(&back, number, 4);
  EXPECT_EQ(back, 0x01020304);
  // A bag has no bytes; neither has an empty array.
  RObject<CProperties> inner(new CProperties());
  bag->SetProperty("inner", inner.Get());
  EXPECT_EQ(bag->GetProperty("inner", 4, number), ResultFalse());
  EXPECT_EQ(bag->SetProperty("empty", 0, nullptr), ResultOK());
  EXPECT_EQ(bag->GetProperty("empty", 4, number), ResultFalse());
  EXPECT_EQ(bag->SetProperty("bad", -1, six), ResultArgumentOutOfRange());
}

TEST_F(PropertiesBagTest, CopiesShareVariantsAndMergesFollowTheStoreRule) {
  RObject<CProperties> source(new CProperties());
  source->SetProperty("a", 1);
  source->SetProperty("b", 2);
  RObject<CProperties> copy(new CProperties(source.Get()));
  ASSERT_EQ(copy->GetPropertyCount(), 2);
  RObject<CVariant> fromSource(source->GetProperty("a"));
  RObject<CVariant> fromCopy(copy->GetProperty("a"));
  EXPECT_EQ(fromSource.Get(), fromCopy.Get());  // shared, not cloned
  // Describing the shared variant shows in both bags.
  copy->SetPropertyDescription("a", "shared");
  EXPECT_EQ(Take(RObject<CVariant>(source->GetProperty("a"))->GetDescription()), "shared");
  // The dictionaries themselves are separate.
  copy->SetProperty("c", 3);
  EXPECT_EQ(source->GetPropertyCount(), 2);

  RObject<CProperties> target(new CProperties());
  target->SetProperty("b", 20);
  target->SetProperty("z", 26);
  EXPECT_EQ(target->SetProperties(copy.Get()), ResultOK());
  ASSERT_EQ(target->GetPropertyCount(), 4);
  EXPECT_EQ(Take(target->GetPropertyName(0)), "b");
  EXPECT_EQ(Take(target->GetPropertyName(1)), "z");
  EXPECT_EQ(Take(target->GetPropertyName(2)), "a");
  EXPECT_EQ(Take(target->GetPropertyName(3)), "c");
  EXPECT_EQ(RObject<CVariant>(target->GetProperty("b"))->ToInt32(), 2);

  // Merging a bag into itself changes nothing.
  EXPECT_EQ(target->SetProperties(target.Get()), ResultOK());
  EXPECT_EQ(target->GetPropertyCount(), 4);
  RObject<IProperties::Dictionary> entries(source->GetProperties());
  RObject<CProperties> fromDictionary(new CProperties());
  EXPECT_EQ(fromDictionary->SetProperties(entries.Get()), ResultOK());
  EXPECT_EQ(fromDictionary->GetPropertyCount(), 2);
  EXPECT_EQ(fromDictionary->SetProperties(static_cast<const IProperties*>(nullptr)), ResultArgumentNull());
  // Copying an empty bag gives an empty bag.
  RObject<CProperties> empty(new CProperties());
  EXPECT_EQ(RObject<CProperties>(new CProperties(empty.Get()))->GetPropertyCount(), 0);
}

TEST_F(PropertiesBagTest, DescriptionsRemovalAndClearing) {
  RObject<CProperties> bag(new CProperties());
  RObject<CString> description;
  EXPECT_EQ(bag->SetPropertyDescription("x", "nothing to describe"), ResultFalse());
  bag->SetProperty("x", 1);
  EXPECT_EQ(bag->GetPropertyDescription("x", description.Out()), ResultFalse());
  EXPECT_EQ(description.Get(), nullptr);
  EXPECT_EQ(bag->SetPropertyDescription("x", "the x"), ResultOK());
  EXPECT_EQ(bag->GetPropertyDescription("x", description.Out()), ResultOK());
  EXPECT_STREQ(description->GetChars(), "the x");
  // Replacing the value replaces the variant, and with it the description.
  bag->SetProperty("x", 2);
  EXPECT_EQ(bag->GetPropertyDescription("x", description.Out()), ResultFalse());

  bag->SetProperty("y", 2);
  EXPECT_EQ(bag->RemoveProperty("x"), ResultOK());
  EXPECT_EQ(bag->RemoveProperty("x"), ResultFalse());
  RObject<CString> y(new CString("y"));
  EXPECT_EQ(bag->RemoveProperty(y.Get()), ResultOK());
  EXPECT_EQ(bag->GetPropertyCount(), 0);
  bag->SetProperty("z", 3);
  bag->ClearProperties();
  EXPECT_EQ(bag->GetPropertyCount(), 0);
  EXPECT_FALSE(bag->ContainsProperty("z"));
}

TEST_F(PropertiesBagTest, FormatStringPointsToTheReplacements) {
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("a", 1);
  const char* expected = "FormatString has been deprecated, please use ToYaml or ToJson\n";
  EXPECT_EQ(Take(bag->FormatString("%s")), expected);
  EXPECT_EQ(Take(bag->FormatString(nullptr)), expected);
}

TEST_F(PropertiesBagTest, DerivedOperationsGoThroughTheVirtualLookup) {
  RObject<ComputedBag> bag(new ComputedBag());
  int answer = 0;
  EXPECT_EQ(bag->GetProperty("Answer", answer), ResultOK());
  EXPECT_EQ(answer, 42);
  EXPECT_TRUE(bag->ContainsProperty("Answer"));
  EXPECT_TRUE(bag->IsType(FourCC("prop")));
  EXPECT_FALSE(bag->IsType(FourCC("vrnt")));
}

TEST_F(PropertiesBagTest, PropertyNamesCompareByText) {
  char buffer[] = "Width";
  PropertyName literal("Width");
  PropertyName other(buffer);
  EXPECT_TRUE(literal == other);
  EXPECT_TRUE(literal == "Width");
  EXPECT_FALSE(literal == "width");
  EXPECT_STREQ(static_cast<const char*>(literal), "Width");

  // Created names outlive the text they came from and are shared per text.
  std::string runtime = "Dynamic";
  PropertyName created = PropertyName::Create(runtime.c_str());
  runtime = "changed";
  EXPECT_STREQ(created.GetName(), "Dynamic");
  EXPECT_EQ(PropertyName::Create("Dynamic").GetName(), created.GetName());
  EXPECT_STREQ(PropertyName(nullptr).GetName(), "");
}

}  // namespace
