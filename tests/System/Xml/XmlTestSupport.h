#pragma once
// Helpers of the XML tests: owned strings to std::string, result kinds, and
// a document parsed from a literal.

#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/Text.h"
#include "System/Xml/XmlDocument.h"

namespace Corvane::Mox::XmlTesting {

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

inline std::string Details(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }

// The text of an owned string, which is released; "<null>" for null.
inline std::string Take(CString* s) {
  if (!s) return "<null>";
  std::string text = s->GetChars();
  s->Release();
  return text;
}

inline CXmlDocument* Parse(const char* text) {
  RObject<CString> s(new CString(text));
  return CXmlDocument::CreateWithString(s);
}

}  // namespace Corvane::Mox::XmlTesting
