#pragma once
// CPathTemplate::CStringLiteral: literal text of a path template, copied as is.

#include "System/PathTemplate/PathTemplateSyntaxElement.h"

namespace Corvane::Mox {

class CPathTemplate::CStringLiteral : public CPathTemplate::CSyntaxElement {
 public:
  static constexpr unsigned int TypeCode = FourCC("ptsl");

  // text is acquired (null counts as empty).
  explicit CStringLiteral(CString* text);
  ~CStringLiteral() override;

  CString* GetText() const { return text_; }
  CString* Evaluate(CContext* context) const override;

 private:
  CString* text_;
};

}  // namespace Corvane::Mox
