#pragma once
// Shared helpers of the text tests: a fixture that fails any test leaving
// objects alive, and conversions of results into standard containers so that
// expectations read as plain values.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/Collections/Array.h"
#include "System/Collections/List.h"
#include "System/Diagnostics/Leaks.h"
#include "System/Text.h"

namespace Corvane::Mox::Testing {

class TextTest : public ::testing::Test {
 protected:
  void SetUp() override { CLeaks::Mark(1, 0); }
  void TearDown() override { EXPECT_EQ(CLeaks::ShowLeaksSinceMark(), 0) << "objects created by the test are still alive"; }
};

using RString = RObject<CString>;

// The UTF-8 text of s, or "<null>".
inline std::string Text(const CString* s) { return s ? std::string(s->GetChars()) : std::string("<null>"); }

inline std::wstring Wide(const CString* s) { return s ? std::wstring(s->GetWChars()) : std::wstring(L"<null>"); }

inline std::vector<std::string> Texts(CArray<CString>* array) {
  std::vector<std::string> out;
  for (int i = 0; i < array->GetCount(); ++i) {
    RString item;
    EXPECT_TRUE(array->Get(i, item.Out()).Succeeded());
    out.push_back(Text(item));
  }
  return out;
}

inline std::vector<std::string> Texts(CList<CString>* list) {
  std::vector<std::string> out;
  for (int i = 0; i < list->GetCount(); ++i) {
    RString item;
    EXPECT_TRUE(list->Get(i, item.Out()).Succeeded());
    out.push_back(Text(item));
  }
  return out;
}

inline std::vector<unsigned char> Bytes(CByteArray* bytes) {
  if (!bytes) return {};
  const unsigned char* data = bytes->GetData();
  return std::vector<unsigned char>(data, data + bytes->GetLength());
}

// A new byte array holding the given bytes (owned by the caller).
inline CByteArray* NewBytes(const std::vector<unsigned char>& bytes) {
  return new CByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

}  // namespace Corvane::Mox::Testing
