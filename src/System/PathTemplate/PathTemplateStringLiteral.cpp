#include "System/PathTemplate/PathTemplateStringLiteral.h"

#include "System/Text.h"

namespace Corvane::Mox {

CPathTemplate::CStringLiteral::CStringLiteral(CString* text)
    : CSyntaxElement(TypeCode), text_(text ? text : new CString("")) {
  if (text) text->Acquire();
}

CPathTemplate::CStringLiteral::~CStringLiteral() { text_->Release(); }

CString* CPathTemplate::CStringLiteral::Evaluate(CContext*) const {
  text_->Acquire();
  return text_;
}

}  // namespace Corvane::Mox
