// The value types: operators, conversions and texts of booleans, numbers,
// strings, time codes, objects and arrays, and the conversions to and from
// variants and property bags.
#include "WflTestHelper.h"

#include "System/ByteArray.h"
#include "System/Media/TimeCode/TimeCode.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/VariantArray.h"
#include "wfl/AstNode.h"
#include "wfl/ObjectValue.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/TimeCodeValue.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

TEST_F(WflTest, NumericOperators) {
  EXPECT_EQ(Print("1 / 0"), "INF");
  EXPECT_EQ(Print("-1 / 0"), "INF");  // every division by zero is +INF
  EXPECT_EQ(Print("0 / 0"), "INF");
  EXPECT_EQ(Print("5 % 0"), "NAN");
  EXPECT_EQ(Print("7 % 3"), "1");
  EXPECT_EQ(Print("-7 % 3"), "-1");
  EXPECT_EQ(Print("7.9 % 3"), "1");  // remainder of the integers 7 and 3
  EXPECT_EQ(Print("6 & 3"), "2");
  EXPECT_EQ(Print("6 | 3"), "7");
  EXPECT_EQ(Print("6 ^ 3"), "5");
  EXPECT_EQ(Print("~5"), "-6");
  EXPECT_EQ(Print("1 << 4"), "16");
  EXPECT_EQ(Print("-16 >> 2"), "-4");
  EXPECT_EQ(Print("1 << 65"), "2");  // shift counts are taken modulo 64
  EXPECT_EQ(Print("!0"), "true");
  EXPECT_EQ(Print("+3"), "3");
  EXPECT_EQ(Print("1 + '2'"), "3");  // the right operand converts to a number
}

TEST_F(WflTest, NumericTexts) {
  EXPECT_EQ(Print("1920"), "1920");
  EXPECT_EQ(Print("0.1 + 0.2"), "0.3");
  EXPECT_EQ(Print("1e20"), "1E+20");
  EXPECT_EQ(Print("-0.5"), "-0.5");
  EXPECT_EQ(Print("1/3"), "0.3333333333333333");
}

TEST_F(WflTest, IncrementAndCompoundAssignmentChangeValuesInPlace) {
  EXPECT_EQ(Run("var a = 5; print(a++); print(a); print(++a); print(a--); print(--a);"), "56775");
  EXPECT_EQ(Run("var b = 5; b -= 2; b *= 3; print(b); b /= 0; print(b);"), "9INF");
  EXPECT_EQ(Run("var c = 7; c %= 4; c <<= 2; c |= 1; c ^= 3; c &= 14; c >>= 1; print(c);"), "7");
  EXPECT_STREQ(RunFailing("var d; d += 1;").GetTitle(), "Null reference");
  EXPECT_STREQ(RunFailing("var e; e++;").GetTitle(), "Null reference");
  EXPECT_STREQ(RunFailing("var f; -f;").GetTitle(), "Null reference");
}

TEST_F(WflTest, CoalescingAssignmentStoresOnlyIntoMissing) {
  EXPECT_EQ(Run("var a; a ?\?= 3; a ?\?= 4; print(a);"), "3");
}

TEST_F(WflTest, BooleanOperators) {
  EXPECT_EQ(Print("true | 1"), "true");
  EXPECT_EQ(Print("true & 0"), "false");
  EXPECT_EQ(Print("true ^ true"), "false");
  EXPECT_EQ(Print("false < true"), "true");
  EXPECT_EQ(Print("true > false"), "true");
  EXPECT_EQ(Print("true <= false"), "false");
  EXPECT_EQ(Print("false >= true"), "false");
  EXPECT_EQ(Print("true == 1"), "true");
  // Booleans have no arithmetic.
  ResultParserError error = RunFailing("true + 1;");
  EXPECT_EQ(Format(error), "Invalid cast: line 1:5; '+' cannot be converted to the required type");
}

TEST_F(WflTest, StringOperators) {
  EXPECT_EQ(Print("'a' + 1"), "a1");
  // Arithmetic needs both operands, even for strings.
  EXPECT_STREQ(RunFailing("'a' + null;").GetTitle(), "Null reference");
  EXPECT_EQ(Print("'abc' < 'abd'"), "true");
  EXPECT_EQ(Print("'b' >= 'a'"), "true");
  EXPECT_EQ(Print("'x' == 'x'"), "true");
  EXPECT_EQ(Print("'x' != 'X'"), "true");
  // Only the exact text "false" is false.
  EXPECT_EQ(Print("!'false'"), "true");
  EXPECT_EQ(Print("!''"), "false");
  EXPECT_EQ(Run("if ('') print('empty is true');"), "empty is true");
  // Hexadecimal text converts as an integer; other text must be a whole number.
  EXPECT_EQ(Print("1 << '0x2'"), "4");
  EXPECT_STREQ(RunFailing("sqrt('abc');").GetTitle(), "Invalid cast");
  EXPECT_STREQ(RunFailing("'a' - 1;").GetTitle(), "Invalid cast");
  // += changes the string in place; a copied variable keeps its own text.
  EXPECT_EQ(Run("var s = 'a'; var t = s; s += 'b'; print(s); print(t);"), "aba");
}

TEST_F(WflTest, EqualityAndOrderingWithNull) {
  EXPECT_EQ(Print("null < null"), "true");
  EXPECT_EQ(Print("null <= null"), "true");
  EXPECT_EQ(Print("null >= null"), "true");
  EXPECT_EQ(Print("null > null"), "false");
  EXPECT_EQ(Print("null == null"), "true");
  EXPECT_EQ(Print("null != null"), "false");
  EXPECT_EQ(Print("1 == null"), "false");
  EXPECT_EQ(Print("null != 1"), "true");
  ResultParserError error = RunFailing("var one = 1; var none; one < none;");
  EXPECT_STREQ(error.GetTitle(), "Null reference");
  EXPECT_STREQ(error.GetDetails(), "'none' is null");
}

TEST_F(WflTest, ObjectsAndArraysAreSharedByReference) {
  EXPECT_EQ(Print("{a: 1} == {a: 1}"), "false");
  EXPECT_EQ(Run("var o = {}; var p = o; print(o == p); p.x = 1; print(o.x);"), "true1");
  EXPECT_EQ(Print("typeof [1]"), "array");
  EXPECT_EQ(Print("typeof {}"), "object");
  EXPECT_EQ(Print("typeof 'x'"), "string");
  EXPECT_EQ(Print("typeof 1"), "number");
  EXPECT_EQ(Print("typeof true"), "boolean");
  EXPECT_EQ(Print("{a: 1, b: null, c: 'x'}"), "{ a : 1, b : (null), c : x }");
  EXPECT_EQ(Print("{}"), "{  }");
  EXPECT_EQ(Run("var a = [1]; a[3] = 4; print(a);"), "[ 1, (null), (null), 4 ]");
  EXPECT_EQ(Print("[[1, 2], {k: true}]"), "[ [ 1, 2 ], { k : true } ]");
  // Array literals store copies of the item slots, sharing the values.
  EXPECT_EQ(Run("var n = 1; var arr = [n]; n++; print(arr[0]);"), "2");
  EXPECT_STREQ(RunFailing("var o2 = {}; o2 - 1;").GetTitle(), "Invalid cast");
}

TEST_F(WflTest, SelfContainingObjectsPrintWithoutCrashing) {
  Result result = RunRaising("var o = {}; o.self = o; print(o);");
  EXPECT_EQ(result.GetType(), ResultOverflow().GetType());
}

TEST_F(WflTest, TimeCodeValues) {
  EXPECT_EQ(Run("var t = 00:00:01:00@25; print(t + 5);"), "00:00:01:05");
  EXPECT_EQ(Run("var t2 = 00:00:01:00@25; print(t2.seconds); print(t2.modulus); print(t2.dropFrame);"), "125false");
  EXPECT_EQ(Run("var t3 = 00:00:01:00@25; print(t3 - 1); print(t3 > 24); print(t3 == 25);"), "00:00:00:24truetrue");
  // A time code before midnight has no text.
  EXPECT_EQ(Run("var t6 = 00:00:00:00@25; print(t6 - 1);"), "(null)");
  EXPECT_EQ(Run("var t4 = 00:00:00:10@25; print(t4 % 4); print(t4 % 0);"), "00:00:00:02NAN");
  EXPECT_EQ(Run("var t5 = 00:00:00:00@25; t5++; ++t5; t5 += 10; print(t5); t5 -= 2; print(t5);"), "00:00:00:1200:00:00:10");
  // Drop frame at 29.97: the frame after 00:00:59;29 is labelled 00:01:00;02.
  EXPECT_EQ(Run("var d = 00:00:59;29@29.97; print(d + 1); print(d.dropFrame); print(d + 0 == 1799);"),
            "00:01:00;02truetrue");
  EXPECT_STREQ(RunFailing("var z = 00:00:00:00@0;").GetTitle(), "Invalid cast");
}

TEST_F(WflTest, SymbolConstructorsMakeTheMatchingValues) {
  RObject<CSymbol> number(new CSymbol(42));
  EXPECT_TRUE(number->GetValue()->IsType(CNumericValue::TypeCode));
  EXPECT_EQ(number->ToInt64(), 42);
  RObject<CSymbol> flag(new CSymbol(true));
  EXPECT_TRUE(flag->GetValue()->IsType(CBooleanValue::TypeCode));
  RObject<CSymbol> text(new CSymbol("hi"));
  RObject<CString> hi(text->ToString());
  EXPECT_STREQ(hi->GetChars(), "hi");
  RObject<CSymbol> empty(new CSymbol());
  RObject<CString> null(empty->ToString());
  EXPECT_STREQ(null->GetChars(), "(null)");
  EXPECT_FALSE(empty->ToBoolean());
  EXPECT_EQ(empty->ToDictionary(), nullptr);
  RObject<CSymbol> shared(new CSymbol(number.Get()));
  EXPECT_EQ(shared->GetValue(), number->GetValue());
  CTimeCode timeCode(25.0, false);
  timeCode.FromFrames(30);
  RObject<CSymbol> tc(new CSymbol(timeCode));
  RObject<CString> tcText(tc->ToString());
  EXPECT_STREQ(tcText->GetChars(), "00:00:01:05");
  EXPECT_EQ(tc->ToTimeCode().GetTotalFrames(), 30);
}

TEST_F(WflTest, VariantsBecomeValues) {
  RObject<CProperties> inner(new CProperties());
  inner->SetProperty(PropertyName("depth"), 8);
  RObject<CVariantArray> list(new CVariantArray(2));
  RObject<CVariant> first(new CVariant(1.5));
  RObject<CVariant> second(new CVariant("two"));
  list->Set(0, first);
  list->Set(1, second);
  RObject<CProperties> bag(new CProperties());
  bag->SetProperty(PropertyName("enabled"), true);
  bag->SetProperty(PropertyName("big"), 1LL << 40);
  bag->SetProperty(PropertyName("name"), "clip");
  bag->SetProperty(PropertyName("inner"), inner.Get());
  bag->SetProperty(PropertyName("list"), list.Get());
  RObject<CVariant> variant(new CVariant(bag.Get()));
  RObject<CSymbol> symbol(new CSymbol(variant.Get()));
  RObject<CString> text(symbol->ToString());
  EXPECT_STREQ(text->GetChars(),
               "{ enabled : true, big : 1099511627776, name : clip, inner : { depth : 8 }, list : [ 1.5, two ] }");
  EXPECT_TRUE(symbol->GetValue()->IsType(CObjectValue::TypeCode));
  RObject<CSymbol> none(new CSymbol(static_cast<CVariant*>(nullptr)));
  EXPECT_EQ(none->GetValue(), nullptr);
}

TEST_F(WflTest, ValuesBecomeVariantsAndProperties) {
  Run("var settings = {flag: true, width: 1280, name: 'out', list: [1, 'a'], sub: {x: 1}, "
      "tc: 01:02:03:04@25, missing: null};");
  RObject<CSymbol> settings(CAstNode::GetSymbolTable()->FindSymbol("settings"));
  ASSERT_TRUE(settings);
  RObject<CSymbolDictionary> members(settings->ToDictionary());
  RObject<CProperties> bag(members->ToProperties());
  // Members without a value are left out.
  EXPECT_EQ(bag->GetPropertyCount(), 6);
  RObject<CVariant> flag(bag->GetProperty(PropertyName("flag")));
  EXPECT_EQ(flag->GetVariantType(), CVariant::Boolean);
  RObject<CVariant> width(bag->GetProperty(PropertyName("width")));
  EXPECT_EQ(width->GetVariantType(), CVariant::Double);
  EXPECT_EQ(width->ToInt32(), 1280);
  RObject<CVariant> name(bag->GetProperty(PropertyName("name")));
  EXPECT_EQ(name->GetVariantType(), CVariant::String);
  RObject<CVariant> list(bag->GetProperty(PropertyName("list")));
  EXPECT_EQ(list->GetVariantType(), CVariant::VariantArray);
  RObject<CVariant> sub(bag->GetProperty(PropertyName("sub")));
  EXPECT_EQ(sub->GetVariantType(), CVariant::Properties);
  RObject<CByteArray> tc(bag->GetByteArray(PropertyName("tc")));
  ASSERT_TRUE(tc);
  ASSERT_EQ(tc->GetLength(), 4);
  EXPECT_EQ(tc->GetData(0), 1);
  EXPECT_EQ(tc->GetData(3), 4);
}
