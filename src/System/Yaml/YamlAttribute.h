#pragma once
// CYamlAttribute: one "name: value" pair of a YAML node.

#include "System/Object.h"

namespace Corvane::Mox {

class CYamlAttribute : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ymla");

  // Both are acquired; null texts count as empty.
  CYamlAttribute(CString* name, CString* value);
  CYamlAttribute(const char* name, const char* value);
  ~CYamlAttribute() override;

  // Borrowed; never null.
  CString* GetName() const { return name_; }
  CString* GetValue() const { return value_; }
  // Replaces the value (acquired; null counts as empty).
  void SetValue(CString* value);

  // "name: value"
  CString* ToString() const override;

 private:
  CString* name_;
  CString* value_;
};

}  // namespace Corvane::Mox
