#pragma once
// CPathTemplate::CSyntaxElement: one piece of a parsed path template, either
// literal text or a token, evaluated against the context of a file.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CPathTemplate::CSyntaxElement : public CObject {
 public:
  explicit CSyntaxElement(unsigned int type) : CObject(type) {}

  // The element's text for context (acquired, possibly empty).
  virtual CString* Evaluate(CContext* context) const = 0;
};

}  // namespace Corvane::Mox
