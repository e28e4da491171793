#pragma once
// CPathTemplate::CSyntaxTree: a parsed path template, the list of its
// literal and token elements in order.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

template <class T>
class CList;

class CPathTemplate::CSyntaxTree : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ptst");

  CSyntaxTree();
  ~CSyntaxTree() override;

  // element is acquired.
  void Add(CSyntaxElement* element);
  int GetCount() const;
  // The elements, borrowed.
  CList<CSyntaxElement>* GetElements() const { return elements_; }
  // The texts of the elements joined (acquired); null for an empty tree.
  CString* Evaluate(CContext* context) const;

 private:
  CList<CSyntaxElement>* elements_;
};

}  // namespace Corvane::Mox
