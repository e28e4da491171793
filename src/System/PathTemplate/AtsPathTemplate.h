#pragma once
// CAtsPathTemplate: the templates of ATS packages: a presentation manifest and transport stream media.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CAtsPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pats");

  CAtsPathTemplate();
  ~CAtsPathTemplate() override;

  void Clear() override;

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate);
  CString* GetPresentation() const { return presentation_; }
  Result GetPresentation(CString*& out, CContext* context) const;

 protected:
  explicit CAtsPathTemplate(unsigned int type);
  bool SetNamedTemplate(const char* name, CString* path) override;
  Result VerifyNamedTemplates() override;

 private:
  void SetDefaults();

  CString* presentation_ = nullptr;
};

}  // namespace Corvane::Mox
