#pragma once
// CComponentExpression: "new <Keyword>(arguments)". Creates a filter through
// its family's registry, or a reader, writer, signal, package or package
// container through the container framework, and answers the component
// value that stands for it in the script.

#include "wfl/AstExpressions.h"

namespace Corvane::Mox {
class CContainerReader;
class CContainerWriter;
class CMediaFilter;
class CSignalReader;
class CSignalWriter;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CComponentExpression : public CCallExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("cmpe");

  // The token is the component keyword.
  explicit CComponentExpression(CToken* keyword);

  CSymbol* Evaluate() const override;

  // The first available filter of the code, trying the families in turn
  // (the caller owns it); null when there is none.
  static CMediaFilter* CreateComponent(unsigned int code);

 private:
  // The argument at index converted to a four-character code (0 when missing).
  unsigned int GetCodeArgument(int index) const;
  CSymbol* CreateFilter() const;
  CSymbol* CreateMediaFilter() const;
  CSymbol* CreateContainerReader() const;
  CSymbol* CreateContainerWriter() const;
  CSymbol* CreateSignalReader() const;
  CSymbol* CreateSignalWriter() const;
  CSymbol* CreatePackage() const;
  CSymbol* CreatePackageContainer() const;
};

}  // namespace Corvane::Mox::WFL
