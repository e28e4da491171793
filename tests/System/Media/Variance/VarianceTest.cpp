// Variances: recorded per thread, moved into a reader's "vrcp" extension by
// the thread that recorded them, and described as property bags.
#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>

#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Variance/SyntaxVariance.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Variance/VarianceProperties.h"
#include "System/Media/Variance/VarianceType.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"

using namespace Corvane::Mox;

namespace {

class VarianceTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    reader_ = new CContainerReader(FourCC("tvar"));
  }
  void TearDown() override {
    CVariance::Clear();
    reader_.Clear();
    LeakCheckedTest::TearDown();
  }

  // The property bags of the reader's variances, in order.
  std::vector<RObject<CProperties>> Elements() const {
    std::vector<RObject<CProperties>> elements;
    RObject<CContainerPropertiesExtension> extension(reader_->GetExtension(CVarianceProperties::TypeCode));
    if (!extension) return elements;
    RObject<CProperties> bag(new CProperties());
    extension->GetProperties(bag).ThrowIfFailed();
    RObject<CVariantArray> array;
    if (bag->GetProperty("CVariance", array.Out()).Failed() || !array) return elements;
    for (int i = 0; i < array->GetCount(); ++i) {
      RObject<CVariant> item;
      array->Get(i, item.Out());
      elements.emplace_back(item->ToProperties());
    }
    return elements;
  }

  static std::string Text(CProperties* bag, const char* key) {
    RObject<CString> text;
    if (bag->GetProperty(key, text.Out()).Failed() || !text) return "<absent>";
    return text->GetChars();
  }

  static std::string Description(CProperties* bag, const char* key) {
    RObject<CString> text;
    if (bag->GetPropertyDescription(key, text.Out()).Failed() || !text) return "<absent>";
    return text->GetChars();
  }

  RObject<CContainerReader> reader_;
};

TEST_F(VarianceTest, AReportBecomesOneElementOfTheReadersExtension) {
  EXPECT_TRUE(CVariance::IsEmpty());
  CVariance::Report(CVariance::Major, "Footer missing\n");
  EXPECT_FALSE(CVariance::IsEmpty());
  reader_->SynchronizeVariances();
  EXPECT_TRUE(CVariance::IsEmpty());
  EXPECT_EQ(reader_->GetExtensionCount(), 1);
  auto elements = Elements();
  ASSERT_EQ(elements.size(), 1u);
  EXPECT_EQ(Text(elements[0], "message"), "Footer missing");  // trailing line feed trimmed
  int severity = -1;
  ASSERT_TRUE(elements[0]->GetProperty("severity", severity).Succeeded());
  EXPECT_EQ(severity, 2);
  EXPECT_EQ(Description(elements[0], "severity"), "major");
  EXPECT_FALSE(elements[0]->ContainsProperty("position"));
}

TEST_F(VarianceTest, PositionalReportsAddThePositionAndOrderIsKept) {
  CVariance::Report(CVariance::Minor, "first %d", 1);
  CVariance::Report(4096LL, CVariance::Fatal, "bad key at %lld", 4096LL);
  reader_->SynchronizeVariances();
  CVariance::Report(CVariance::Trivial, "third");
  reader_->SynchronizeVariances();  // appended to the same extension
  auto elements = Elements();
  ASSERT_EQ(elements.size(), 3u);
  EXPECT_EQ(Text(elements[0], "message"), "first 1");
  EXPECT_EQ(Text(elements[1], "message"), "bad key at 4096");
  long long position = 0;
  ASSERT_TRUE(elements[1]->GetProperty("position", position).Succeeded());
  EXPECT_EQ(position, 4096);
  EXPECT_EQ(Description(elements[1], "severity"), "fatal");
  EXPECT_EQ(Description(elements[2], "severity"), "trivial");
  EXPECT_EQ(reader_->GetExtensionCount(), 1);
}

TEST_F(VarianceTest, SynchronizingTwiceChangesNothingTheSecondTime) {
  CVariance::Report(CVariance::Minor, "once");
  reader_->SynchronizeVariances();
  reader_->SynchronizeVariances();
  EXPECT_EQ(Elements().size(), 1u);
  RObject<CContainerReader> quiet(new CContainerReader(FourCC("tvaq")));
  quiet->SynchronizeVariances();
  EXPECT_EQ(quiet->GetExtensionCount(), 0);  // nothing recorded: no extension
}

TEST_F(VarianceTest, AnotherThreadsVariancesStayWithThatThread) {
  std::promise<void> reported;
  std::promise<void> synchronized;
  std::thread other([&] {
    CVariance::Report(CVariance::Major, "elsewhere");
    reported.set_value();
    synchronized.get_future().wait();
    const bool kept = !CVariance::IsEmpty();
    CVariance::Clear();
    EXPECT_TRUE(kept);
  });
  reported.get_future().wait();
  reader_->SynchronizeVariances();
  EXPECT_EQ(reader_->GetExtensionCount(), 0);
  synchronized.set_value();
  other.join();
}

TEST_F(VarianceTest, ClearingDiscardsTheThreadsVariances) {
  CVariance::Report(CVariance::Minor, "dropped");
  reader_->ClearVariances();
  EXPECT_TRUE(CVariance::IsEmpty());
  reader_->SynchronizeVariances();
  EXPECT_FALSE(reader_->ContainsExtension(CVarianceProperties::TypeCode));
}

TEST_F(VarianceTest, TypeNamesAndSeverityTexts) {
  EXPECT_STREQ(VarianceType::GetName(FourCC("sntx")), "Syntax");
  EXPECT_STREQ(VarianceType::GetName(FourCC("vrnc")), "Variance");
  EXPECT_EQ(VarianceType::GetName(FourCC("vrcp")), nullptr);
  RObject<CVariance> odd(new CVariance(nullptr, static_cast<CVariance::Severity>(7)));
  RObject<CProperties> bag(new CProperties());
  odd->GetProperties(bag);
  EXPECT_FALSE(bag->ContainsProperty("message"));  // no message, no key
  int severity = 0;
  bag->GetProperty("severity", severity);
  EXPECT_EQ(severity, 7);
  EXPECT_EQ(Description(bag, "severity"), "<absent>");
  RObject<CVarianceProperties> empty(new CVarianceProperties());
  RObject<CProperties> none(new CProperties());
  empty->GetProperties(none);
  EXPECT_EQ(none->GetPropertyCount(), 0);
}

}  // namespace
