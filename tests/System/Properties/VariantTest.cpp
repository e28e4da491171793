#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "System/Properties/PropertiesTestSupport.h"
#include "System/Variant.h"

using namespace Corvane::Mox;
using PropertiesTest::BytesOf;
using PropertiesTest::IntArray;
using PropertiesTest::Take;

namespace {

using VariantTest = LeakCheckedTest;

// An object with a text of its own, to see that variants defer to it.
class NamedObject : public CObject {
 public:
  CString* ToString() const override { return new CString("named object"); }
};

std::string BytesText(CByteArray* bytes) {
  RObject<CByteArray> held(bytes);
  if (!held) return "<null>";
  return std::string(reinterpret_cast<const char*>(held->GetData()), static_cast<std::size_t>(held->GetLength()));
}

template <class T>
std::string HostBytes(T value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

TEST_F(VariantTest, ConstructorsStoreTheNaturalTypeOrTheOneAsked) {
  EXPECT_EQ(RObject<CVariant>(new CVariant(true))->GetVariantType(), CVariant::Boolean);
  EXPECT_EQ(RObject<CVariant>(new CVariant('c'))->GetVariantType(), CVariant::Char);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<signed char>(1)))->GetVariantType(), CVariant::Int8);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<unsigned char>(1)))->GetVariantType(), CVariant::UInt8);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<short>(1)))->GetVariantType(), CVariant::Int16);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<unsigned short>(1)))->GetVariantType(), CVariant::UInt16);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1))->GetVariantType(), CVariant::Int32);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1u))->GetVariantType(), CVariant::UInt32);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1L))->GetVariantType(), CVariant::Long);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1UL))->GetVariantType(), CVariant::ULong);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1LL))->GetVariantType(), CVariant::Int64);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1ULL))->GetVariantType(), CVariant::UInt64);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1.0f))->GetVariantType(), CVariant::Float);
  EXPECT_EQ(RObject<CVariant>(new CVariant(1.0))->GetVariantType(), CVariant::Double);
  int local = 0;
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<void*>(&local)))->GetVariantType(), CVariant::Pointer);
  EXPECT_EQ(RObject<CVariant>(new CVariant("text"))->GetVariantType(), CVariant::String);

  // The type argument marks a value: an unsigned code as a four-character code,
  // an int as a double (converted), a double as an int (toward zero).
  RObject<CVariant> code(new CVariant(FourCC("vid "), CVariant::Four));
  EXPECT_EQ(code->GetVariantType(), CVariant::Four);
  EXPECT_EQ(code->ToFour(), FourCC("vid "));
  RObject<CVariant> asDouble(new CVariant(5, CVariant::Double));
  EXPECT_EQ(asDouble->GetVariantType(), CVariant::Double);
  EXPECT_EQ(Take(asDouble->ToString()), "5.000000");
  RObject<CVariant> asInt(new CVariant(-3.9, CVariant::Int32));
  EXPECT_EQ(asInt->GetVariantType(), CVariant::Int32);
  EXPECT_EQ(Take(asInt->ToString()), "-3");
  // A reference type cannot hold a number: the natural type stays.
  EXPECT_EQ(RObject<CVariant>(new CVariant(5, CVariant::String))->GetVariantType(), CVariant::Int32);
}

TEST_F(VariantTest, ObjectsAreStoredAsTheKindTheyReallyAre) {
  RObject<CString> text(new CString("abc"));
  RObject<CProperties> bag(new CProperties());
  RObject<NamedObject> plain(new NamedObject());
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CObject*>(text.Get()), CVariant::String))->GetVariantType(),
            CVariant::String);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CObject*>(bag.Get()), CVariant::Properties))->GetVariantType(),
            CVariant::Properties);
  // Claiming a plain object is a string must not make it one.
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CObject*>(plain.Get()), CVariant::String))->GetVariantType(),
            CVariant::Object);
  EXPECT_EQ(RObject<CVariant>(new CVariant(bag.Get()))->GetVariantType(), CVariant::Properties);

  int before = text->GetReferences();
  {
    RObject<CVariant> holder(new CVariant(text.Get()));
    EXPECT_EQ(text->GetReferences(), before + 1);  // the variant holds one reference
  }
  EXPECT_EQ(text->GetReferences(), before);
}

TEST_F(VariantTest, XsiTypesFollowTheTable) {
  const char* expected[] = {"four",
                            "xs:boolean",
                            "char",
                            "xs:byte",
                            "xs:unsignedByte",
                            "xs:short",
                            "xs:unsignedShort",
                            "xs:int",
                            "xs:unsignedInt",
                            "xs:long",
                            "xs:unsignedLong",
                            "xs:long",
                            "xs:unsignedLong",
                            "xs:float",
                            "xs:double",
                            nullptr,
                            nullptr,
                            "xs:string",
                            "xs:base64Binary",
                            "object",
                            "array"};
  for (int type = 0; type <= CVariant::VariantArray; ++type) {
    const char* actual = CVariant::GetXsiType(static_cast<CVariant::VariantType>(type));
    if (expected[type]) {
      ASSERT_NE(actual, nullptr) << type;
      EXPECT_STREQ(actual, expected[type]) << type;
    } else {
      EXPECT_EQ(actual, nullptr) << type;
    }
  }
  EXPECT_STREQ(RObject<CVariant>(new CVariant(1.5f))->GetXsiType(), "xs:float");
}

TEST_F(VariantTest, ToStringUsesEachTypesFormat) {
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(FourCC("vid "), CVariant::Four))->ToString()), "vid ");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(0x61620063u, CVariant::Four))->ToString()), "ab%00c");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(true))->ToString()), "true");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(false))->ToString()), "false");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant('x'))->ToString()), "x");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<signed char>(-5)))->ToString()), "-5");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<unsigned char>(250)))->ToString()), "250");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<short>(-300)))->ToString()), "-300");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<unsigned short>(65535)))->ToString()), "65535");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(std::numeric_limits<int>::min()))->ToString()), "-2147483648");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(4294967295u))->ToString()), "4294967295");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(-9000000000LL))->ToString()), "-9000000000");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(18446744073709551615ULL))->ToString()), "18446744073709551615");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(-7L))->ToString()), "-7");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(7UL))->ToString()), "7");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(1.25f))->ToString()), "1.250000");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(-0.5))->ToString()), "-0.500000");

  int local = 0;
  char pointerText[32];
  std::snprintf(pointerText, sizeof pointerText, "%p", static_cast<void*>(&local));
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<void*>(&local)))->ToString()), pointerText);

  RObject<NamedObject> object(new NamedObject());
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<CObject*>(object.Get())))->ToString()), "named object");

  // A string variant gives its own string back, acquired.
  RObject<CString> text(new CString("same"));
  RObject<CVariant> holder(new CVariant(text.Get()));
  RObject<CString> back(holder->ToString());
  EXPECT_EQ(back.Get(), text.Get());

  RObject<CByteArray> bytes(BytesOf({'h', 0xC3, 0xA9}));
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(bytes.Get()))->ToString()), "h\xC3\xA9");

  RObject<CProperties> bag(new CProperties());
  bag->SetProperty("a", 1);
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(bag.Get()))->ToString()), "{\n  \"a\": 1\n}");

  RObject<CVariantArray> array(new CVariantArray(3));
  RObject<CVariant> one(new CVariant(1));
  RObject<CVariant> word(new CVariant("x"));
  array->Set(0, one.Get());
  array->Set(2, word.Get());
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(array.Get()))->ToString()), "[ 1, <null>, x ]");
  EXPECT_EQ(Take(RObject<CVariantArray>(new CVariantArray(0))->ToString()), "[  ]");

  // Null references have no text.
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<CString*>(nullptr)))->ToString()), "<null>");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<CByteArray*>(nullptr)))->ToString()), "<null>");
  EXPECT_EQ(Take(RObject<CVariant>(new CVariant(static_cast<CProperties*>(nullptr)))->ToString()), "<null>");
}

TEST_F(VariantTest, ToBooleanRules) {
  EXPECT_TRUE(RObject<CVariant>(new CVariant(FourCC("true"), CVariant::Four))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(FourCC("True"), CVariant::Four))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(1u, CVariant::Four))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(true))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(false))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(static_cast<signed char>(0)))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(static_cast<signed char>(-1)))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(static_cast<unsigned short>(256)))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(0x100000000LL))->ToBoolean());  // no truncation to 32 bits first
  EXPECT_FALSE(RObject<CVariant>(new CVariant(0ULL))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(0.1f))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(0.4))->ToBoolean());  // non-zero, not rounded
  EXPECT_FALSE(RObject<CVariant>(new CVariant(0.0))->ToBoolean());

  EXPECT_FALSE(RObject<CVariant>(new CVariant("False"))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant("FALSE"))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant("no"))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant("0"))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant("false "))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(""))->ToBoolean());

  RObject<CByteArray> zeroFirst(BytesOf({0, 1}));
  RObject<CByteArray> oneFirst(BytesOf({1, 0}));
  RObject<CByteArray> empty(new CByteArray(nullptr, 0));
  EXPECT_FALSE(RObject<CVariant>(new CVariant(zeroFirst.Get()))->ToBoolean());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(oneFirst.Get()))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(empty.Get()))->ToBoolean());

  int local = 0;
  EXPECT_TRUE(RObject<CVariant>(new CVariant(static_cast<void*>(&local)))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(static_cast<void*>(nullptr)))->ToBoolean());
  RObject<CProperties> bag(new CProperties());
  EXPECT_TRUE(RObject<CVariant>(new CVariant(bag.Get()))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(static_cast<CProperties*>(nullptr)))->ToBoolean());
  EXPECT_FALSE(RObject<CVariant>(new CVariant(static_cast<CString*>(nullptr)))->ToBoolean());
}

TEST_F(VariantTest, ToInt32TruncatesOrExtendsBySourceSignedness) {
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<signed char>(-1)))->ToInt32(), -1);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<unsigned char>(255)))->ToInt32(), 255);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<short>(-2)))->ToInt32(), -2);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<unsigned short>(65535)))->ToInt32(), 65535);
  EXPECT_EQ(RObject<CVariant>(new CVariant(0xFFFFFFFFu))->ToInt32(), -1);
  EXPECT_EQ(RObject<CVariant>(new CVariant(0x100000005LL))->ToInt32(), 5);
  EXPECT_EQ(RObject<CVariant>(new CVariant(true))->ToInt32(), 1);
  EXPECT_EQ(RObject<CVariant>(new CVariant('A'))->ToInt32(), 65);
  EXPECT_EQ(RObject<CVariant>(new CVariant(FourCC("abcd"), CVariant::Four))->ToInt32(), 0x61626364);
  // Floats go toward zero.
  EXPECT_EQ(RObject<CVariant>(new CVariant(-3.99))->ToInt32(), -3);
  EXPECT_EQ(RObject<CVariant>(new CVariant(2.7f))->ToInt32(), 2);
  // The other widths follow the same pattern.
  EXPECT_EQ(RObject<CVariant>(new CVariant(0x12345))->ToInt16(), 0x2345);
  EXPECT_EQ(RObject<CVariant>(new CVariant(-1))->ToUInt16(), 0xFFFF);
  EXPECT_EQ(RObject<CVariant>(new CVariant(0xFFFFFFFFu))->ToInt64(), 4294967295LL);
  EXPECT_EQ(RObject<CVariant>(new CVariant(-1))->ToInt64(), -1);
  EXPECT_EQ(RObject<CVariant>(new CVariant(-1))->ToUInt64(), 18446744073709551615ULL);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<signed char>(-2)))->ToUInt8(), 254);
  EXPECT_EQ(RObject<CVariant>(new CVariant(200))->ToInt8(), -56);

  // Text is parsed with base detection.
  EXPECT_EQ(RObject<CVariant>(new CVariant("42"))->ToInt32(), 42);
  EXPECT_EQ(RObject<CVariant>(new CVariant("-8"))->ToInt32(), -8);
  EXPECT_EQ(RObject<CVariant>(new CVariant("0x1F"))->ToInt32(), 31);
  EXPECT_EQ(RObject<CVariant>(new CVariant("017"))->ToInt32(), 15);
  EXPECT_EQ(RObject<CVariant>(new CVariant("12abc"))->ToInt32(), 12);
  EXPECT_EQ(RObject<CVariant>(new CVariant("abc"))->ToInt32(), 0);
  EXPECT_EQ(RObject<CVariant>(new CVariant("300"))->ToUInt8(), 44);
  EXPECT_EQ(RObject<CVariant>(new CVariant("0x123456789"))->ToInt64(), 0x123456789LL);

  // Bytes: the first four in host order, or 0 when there are fewer.
  RObject<CByteArray> four(BytesOf({0x78, 0x56, 0x34, 0x12, 0x99}));
  std::int32_t expected;
  std::memcpy(&expected, four->GetData(), 4);
  EXPECT_EQ(RObject<CVariant>(new CVariant(four.Get()))->ToInt32(), expected);
  RObject<CByteArray> three(BytesOf({1, 2, 3}));
  EXPECT_EQ(RObject<CVariant>(new CVariant(three.Get()))->ToInt32(), 0);
  EXPECT_NE(RObject<CVariant>(new CVariant(three.Get()))->ToInt16(), 0);  // two bytes suffice at 16 bits

  // References and their null forms have no number.
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(RObject<CVariant>(new CVariant(bag.Get()))->ToInt32(), 0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CString*>(nullptr)))->ToInt32(), 0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CByteArray*>(nullptr)))->ToInt32(), 0);
}

TEST_F(VariantTest, FloatingConversionsNeverOverflow) {
  EXPECT_EQ(RObject<CVariant>(new CVariant(1e20))->ToInt32(), std::numeric_limits<int>::max());
  EXPECT_EQ(RObject<CVariant>(new CVariant(-1e20))->ToInt32(), std::numeric_limits<int>::min());
  EXPECT_EQ(RObject<CVariant>(new CVariant(-5.0))->ToUInt32(), 0u);
  EXPECT_EQ(RObject<CVariant>(new CVariant(std::nan("")))->ToInt64(), 0);
  EXPECT_TRUE(std::isinf(RObject<CVariant>(new CVariant(1e300))->ToFloat()));
  EXPECT_EQ(RObject<CVariant>(new CVariant(1e30))->ToInt16(), std::numeric_limits<short>::max());
  // Text converts as an integer: the exponent is trailing text.
  EXPECT_EQ(RObject<CVariant>(new CVariant("1e30"))->ToInt16(), 1);
}

TEST_F(VariantTest, ToDoubleRules) {
  EXPECT_EQ(RObject<CVariant>(new CVariant(-7))->ToDouble(), -7.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(4294967295u))->ToDouble(), 4294967295.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<signed char>(-128)))->ToDouble(), -128.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<unsigned char>(200)))->ToDouble(), 200.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(-9000000000LL))->ToDouble(), -9e9);
  EXPECT_EQ(RObject<CVariant>(new CVariant(18446744073709551615ULL))->ToDouble(), 18446744073709551615.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(true))->ToDouble(), 1.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(false))->ToDouble(), 0.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(0.25f))->ToDouble(), 0.25);
  EXPECT_EQ(RObject<CVariant>(new CVariant("2.5e3"))->ToDouble(), 2500.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(" -1.5x"))->ToDouble(), -1.5);
  EXPECT_EQ(RObject<CVariant>(new CVariant("pi"))->ToDouble(), 0.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant("0x10"))->ToDouble(), 16.0);  // strtod reads hexadecimal too
  double value = 6.5;
  RObject<CByteArray> eight(new CByteArray(reinterpret_cast<const unsigned char*>(&value), 8));
  EXPECT_EQ(RObject<CVariant>(new CVariant(eight.Get()))->ToDouble(), 6.5);
  RObject<CByteArray> short_(BytesOf({1, 2, 3, 4}));
  EXPECT_EQ(RObject<CVariant>(new CVariant(short_.Get()))->ToDouble(), 0.0);
  EXPECT_EQ(RObject<CVariant>(new CVariant(static_cast<CString*>(nullptr)))->ToDouble(), 0.0);
}

TEST_F(VariantTest, ToByteArrayRules) {
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(FourCC("abcd"), CVariant::Four))->ToByteArray()), "abcd");
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(true))->ToByteArray()), std::string(1, '\x01'));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant('z'))->ToByteArray()), "z");
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(static_cast<unsigned char>(0xAB)))->ToByteArray()), "\xAB");
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(static_cast<short>(0x0102)))->ToByteArray()),
            HostBytes(static_cast<short>(0x0102)));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(0x01020304))->ToByteArray()), HostBytes(0x01020304));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(0x0102030405060708LL))->ToByteArray()),
            HostBytes(0x0102030405060708LL));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(-2L))->ToByteArray()), HostBytes(-2L));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(1.5f))->ToByteArray()), HostBytes(1.5f));
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(-2.25))->ToByteArray()), HostBytes(-2.25));
  int local = 0;
  void* pointer = &local;
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(pointer))->ToByteArray()), HostBytes(pointer));

  // Text gives its UTF-8 bytes; an array gives itself; a bag gives nothing.
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant("h\xC3\xA9llo"))->ToByteArray()), "h\xC3\xA9llo");
  RObject<CByteArray> bytes(BytesOf({9, 8, 7}));
  RObject<CByteArray> same(RObject<CVariant>(new CVariant(bytes.Get()))->ToByteArray());
  EXPECT_EQ(same.Get(), bytes.Get());
  RObject<CProperties> bag(new CProperties());
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(bag.Get()))->ToByteArray()), "<null>");

  // An object is its bytes only when it is a byte array.
  RObject<CByteArray> asObject(RObject<CVariant>(new CVariant(static_cast<CObject*>(bytes.Get())))->ToByteArray());
  EXPECT_EQ(asObject.Get(), bytes.Get());
  RObject<NamedObject> plain(new NamedObject());
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(static_cast<CObject*>(plain.Get())))->ToByteArray()), "<null>");

  // Variant arrays: one byte per element, null elements as 0.
  RObject<CVariantArray> array(IntArray({1, 300, 7}));
  array->Set(2, nullptr);
  EXPECT_EQ(BytesText(RObject<CVariant>(new CVariant(array.Get()))->ToByteArray()), std::string("\x01\x2C\x00", 3));
}

TEST_F(VariantTest, FourAndReferenceConversions) {
  EXPECT_EQ(RObject<CVariant>(new CVariant("vid "))->ToFour(), FourCC("vid "));
  EXPECT_EQ(RObject<CVariant>(new CVariant("%00%00%00%01"))->ToFour(), 1u);
  RObject<CByteArray> code(BytesOf({'m', 'p', '4', 'a'}));
  EXPECT_EQ(RObject<CVariant>(new CVariant(code.Get()))->ToFour(), FourCC("mp4a"));
  EXPECT_EQ(RObject<CVariant>(new CVariant(0x41424344))->ToFour(), FourCC("ABCD"));

  RObject<CProperties> bag(new CProperties());
  RObject<CVariant> bagValue(new CVariant(bag.Get()));
  int before = bag->GetReferences();
  RObject<CProperties> got(bagValue->ToProperties());
  EXPECT_EQ(got.Get(), bag.Get());
  EXPECT_EQ(bag->GetReferences(), before + 1);  // acquired for the caller
  RObject<CObject> object(bagValue->ToObject());
  EXPECT_EQ(object.Get(), static_cast<CObject*>(bag.Get()));
  EXPECT_EQ(bagValue->ToPointer(), static_cast<void*>(static_cast<CObject*>(bag.Get())));
  EXPECT_EQ(RObject<CVariantArray>(bagValue->ToVariantArray()).Get(), nullptr);

  // A bag stored as a plain object still converts to a bag.
  RObject<CVariant> asObject(new CVariant(static_cast<CObject*>(bag.Get()), CVariant::Object));
  EXPECT_EQ(RObject<CProperties>(asObject->ToProperties()).Get(), bag.Get());

  RObject<CVariantArray> array(IntArray({1}));
  RObject<CVariant> arrayValue(new CVariant(array.Get()));
  EXPECT_EQ(RObject<CVariantArray>(arrayValue->ToVariantArray()).Get(), array.Get());
  EXPECT_EQ(RObject<CProperties>(arrayValue->ToProperties()).Get(), nullptr);

  RObject<CVariant> number(new CVariant(5));
  EXPECT_EQ(number->ToPointer(), nullptr);
  EXPECT_EQ(RObject<CObject>(number->ToObject()).Get(), nullptr);
}

TEST_F(VariantTest, DescriptionsCanBeSetReplacedAndCleared) {
  RObject<CVariant> value(new CVariant(1));
  EXPECT_EQ(RObject<CString>(value->GetDescription()).Get(), nullptr);
  value->SetDescription("first");
  EXPECT_EQ(Take(value->GetDescription()), "first");
  RObject<CString> second(new CString("second"));
  value->SetDescription(second.Get());
  EXPECT_EQ(RObject<CString>(value->GetDescription()).Get(), second.Get());
  value->SetDescription(static_cast<const char*>(nullptr));
  EXPECT_EQ(RObject<CString>(value->GetDescription()).Get(), nullptr);
}

}  // namespace
