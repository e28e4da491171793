#include "System/PathTemplate/PathTemplateSyntaxTree.h"

#include <string>

#include "System/Collections/List.h"
#include "System/PathTemplate/PathTemplateSyntaxElement.h"
#include "System/Text.h"

namespace Corvane::Mox {

CPathTemplate::CSyntaxTree::CSyntaxTree() : CObject(TypeCode), elements_(new CList<CSyntaxElement>()) {}

CPathTemplate::CSyntaxTree::~CSyntaxTree() { elements_->Release(); }

void CPathTemplate::CSyntaxTree::Add(CSyntaxElement* element) {
  if (element) elements_->Add(element);
}

int CPathTemplate::CSyntaxTree::GetCount() const { return elements_->GetCount(); }

CString* CPathTemplate::CSyntaxTree::Evaluate(CContext* context) const {
  if (elements_->IsEmpty()) return nullptr;
  std::string text;
  for (CSyntaxElement* element : *elements_) {
    RObject<CString> piece(element->Evaluate(context));
    if (piece) text += piece->GetChars();
  }
  return new CString(text.c_str(), static_cast<int>(text.size()));
}

}  // namespace Corvane::Mox
