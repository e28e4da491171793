#pragma once
// Literal expressions (true/false, null, numbers, strings, time codes),
// array and dictionary literals, and variable declarations.

#include <vector>

#include "wfl/AstNode.h"

namespace Corvane::Mox::WFL {

class CLiteralExpression : public CExpression {
 protected:
  CLiteralExpression(unsigned int type, CToken* token);
};

class CBooleanLiteral : public CLiteralExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("bool");
  explicit CBooleanLiteral(CToken* token) : CLiteralExpression(TypeCode, token) {}
  CSymbol* Evaluate() const override;
};

class CNullLiteral : public CLiteralExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("null");
  explicit CNullLiteral(CToken* token) : CLiteralExpression(TypeCode, token) {}
  CSymbol* Evaluate() const override;
};

class CNumericLiteral : public CLiteralExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("nlit");
  explicit CNumericLiteral(CToken* token) : CLiteralExpression(TypeCode, token) {}
  CSymbol* Evaluate() const override;
};

class CStringLiteral : public CLiteralExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("slit");
  explicit CStringLiteral(CToken* token) : CLiteralExpression(TypeCode, token) {}
  CSymbol* Evaluate() const override;

  // The text between the first quote character of the token (either kind)
  // and the last occurrence of that same character.
  static CString* GetContent(const CToken* token);
};

// hours:minutes:seconds(: or ;)frames@rate.
class CTimeCodeLiteral : public CLiteralExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("tlit");
  CTimeCodeLiteral(CToken* token, CNumericLiteral* hours, CNumericLiteral* minutes, CNumericLiteral* seconds,
                   CNumericLiteral* frames, CNumericLiteral* rate, bool dropFrame);
  ~CTimeCodeLiteral() override;

  CSymbol* Evaluate() const override;

 private:
  CNumericLiteral* parts_[5];
  bool dropFrame_;
};

class CArrayLiteral : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("alit");
  explicit CArrayLiteral(CToken* token) : CExpression(TypeCode, token) {}
  ~CArrayLiteral() override;

  void AddItem(CExpression* item);
  CSymbol* Evaluate() const override;

 private:
  std::vector<CExpression*> items_;
};

// One "key: value" entry of a dictionary literal; the token is the key.
class CPropertyNameValue : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("pnvl");
  CPropertyNameValue(CToken* key, CExpression* value);
  ~CPropertyNameValue() override;

  // The key: an identifier's or number's text, or a string literal's content.
  CString* GetName() const;
  CSymbol* Evaluate() const override;

 private:
  CExpression* value_;
};

class CDictionaryLiteral : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("dlit");
  explicit CDictionaryLiteral(CToken* token) : CExpression(TypeCode, token) {}
  ~CDictionaryLiteral() override;

  void AddProperty(CPropertyNameValue* property);
  CSymbol* Evaluate() const override;

 private:
  std::vector<CPropertyNameValue*> properties_;
};

// "name" or "name = expression" of a var statement (and "var x" of a
// for-each loop). Evaluating it declares the name in the innermost scope and
// answers the new slot.
class CVariableDeclaration : public CExpression {
 public:
  static constexpr unsigned int TypeCode = FourCC("vdcl");
  explicit CVariableDeclaration(CToken* name);
  ~CVariableDeclaration() override;

  void SetExpression(CExpression* initializer);
  CSymbol* Evaluate() const override;

 private:
  CExpression* initializer_;
};

}  // namespace Corvane::Mox::WFL
