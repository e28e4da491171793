// Generated property namespaces: names usable as constants, documentation
// bags in the shape hosts read, and lookup by qualified name.
#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "gen/CodeBookProperty.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;

namespace {

class PropertiesDocumentationTest : public LeakCheckedTest {};

std::string TextAt(CProperties* bag, const char* key) {
  CString* text = nullptr;
  if (bag->GetProperty(key, text).Failed() || !text) return "<absent>";
  std::string result = text->GetChars();
  text->Release();
  return result;
}

RObject<CProperties> BagAt(CProperties* bag, const char* key) {
  CProperties* child = nullptr;
  bag->GetProperty(key, child);
  return RObject<CProperties>(child);
}

TEST_F(PropertiesDocumentationTest, NamesAreTheIdentifiers) {
  EXPECT_STREQ(CodeBookProperty::MediaFilter::OutputFormat, "OutputFormat");
  EXPECT_STREQ(ContainerProperty::Container::QueueSize, "QueueSize");
  EXPECT_EQ(static_cast<int>(CodeBookProperty::SelectableCompute::ComputeModes::Metal), 4);
}

TEST_F(PropertiesDocumentationTest, BagHasPropertiesAndEnumerationsWithOptionalFieldsOmitted) {
  RObject<CProperties> doc(IPropertiesDocumentation::GetDocumentationT<CodeBookProperty::SelectableCompute>());
  ASSERT_TRUE(doc);
  EXPECT_EQ(TextAt(doc, "brief"), "SelectableCompute configuration properties.");
  EXPECT_EQ(TextAt(doc, "details"), "<absent>");
  ASSERT_TRUE(BagAt(doc, "comments"));

  RObject<CProperties> properties(BagAt(doc, "properties"));
  ASSERT_TRUE(properties);
  RObject<CProperties> mode(BagAt(properties, "ComputeMode"));
  ASSERT_TRUE(mode);
  EXPECT_EQ(TextAt(mode, "type"), "type:   \\ref ComputeModes");
  EXPECT_EQ(TextAt(mode, "brief"), "Determines the mode of computation.\n");
  EXPECT_EQ(TextAt(mode, "note"), "<absent>");

  RObject<CProperties> values(BagAt(BagAt(BagAt(doc, "enumerations"), "ComputeModes"), "values"));
  ASSERT_TRUE(values);
  EXPECT_EQ(values->GetPropertyCount(), 5);
  RObject<CProperties> gpu(BagAt(values, "GPU"));
  ASSERT_TRUE(gpu);
  int value = -1;
  ASSERT_TRUE(gpu->GetProperty("value", value).Succeeded());
  EXPECT_EQ(value, 1);
  EXPECT_EQ(TextAt(gpu, "brief"), "GPU computation mode. Selects metal on OSX and CUDA on Windows/Linux.");
}

TEST_F(PropertiesDocumentationTest, LookupByQualifiedNameMatchesTheTemplate) {
  RObject<CProperties> byName(PropertiesDocumentation::Create("CodeBookProperty::MediaFilter"));
  RObject<CProperties> byType(IPropertiesDocumentation::GetDocumentationT<CodeBookProperty::MediaFilter>());
  ASSERT_TRUE(byName && byType);
  RObject<CString> a(byName->ToJson()), b(byType->ToJson());
  EXPECT_STREQ(a->GetChars(), b->GetChars());
  EXPECT_EQ(TextAt(BagAt(BagAt(byName, "properties"), "UsingHardwareAcceleration"), "note"), "read only");
  EXPECT_EQ(PropertiesDocumentation::Create("CodeBookProperty::NoSuchThing"), nullptr);

  bool sawContainer = false;
  for (int i = 0; i < PropertiesDocumentation::GetCount(); ++i)
    sawContainer |= std::string(PropertiesDocumentation::GetName(i)) == "ContainerProperty::Container";
  EXPECT_TRUE(sawContainer);
  EXPECT_EQ(PropertiesDocumentation::GetName(-1), nullptr);
}

}  // namespace
