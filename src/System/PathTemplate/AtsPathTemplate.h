#pragma once
// CAtsPathTemplate: the templates of ATS packages: a presentation manifest and transport stream media.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CAtsPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pats");

  CAtsPathTemplate();

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate) { SetNamed("presentation", pathTemplate); }
  CString* GetPresentation() const { return GetNamed("presentation"); }
  Result GetPresentation(CString*& out, CContext* context) const { return ResolveNamed("presentation", context, out); }
};

}  // namespace Corvane::Mox
