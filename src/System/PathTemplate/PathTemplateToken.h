#pragma once
// CPathTemplate::CToken: a "$name$" token with its optional printf format
// and prefix and suffix characters. A token without a value in the context
// evaluates to nothing, prefix and suffix included.

#include <string>

#include "System/PathTemplate/PathTemplateSyntaxElement.h"

namespace Corvane::Mox {

class CVariant;

class CPathTemplate::CToken : public CPathTemplate::CSyntaxElement {
 public:
  static constexpr unsigned int TypeCode = FourCC("ptok");

  // name and format are acquired; format may be null; 0 means no prefix or suffix.
  CToken(CString* name, CString* format, char prefix, char suffix);
  ~CToken() override;

  CString* GetName() const { return name_; }
  CString* GetFormat() const { return format_; }
  char GetPrefix() const { return prefix_; }
  char GetSuffix() const { return suffix_; }

  CString* Evaluate(CContext* context) const override;

  // value printed through a printf format that holds one integer conversion;
  // the format's own length modifier is replaced to fit the value's width.
  // False (out unchanged) for a format that is not of that shape.
  static bool FormatInteger(const char* format, long long value, bool wide, std::string& out);

 private:
  // The value's text, through the format when there is one.
  std::string FormatValue(CVariant* value) const;

  CString* name_;
  CString* format_;
  char prefix_;
  char suffix_;
};

}  // namespace Corvane::Mox
