#pragma once
// CDashPathTemplate: the templates of DASH packages: the presentation (MPD) and the segments.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CDashPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pdsh");

  CDashPathTemplate();

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate) { SetNamed("presentation", pathTemplate); }
  CString* GetPresentation() const { return GetNamed("presentation"); }
  Result GetPresentation(CString*& out, CContext* context) const { return ResolveNamed("presentation", context, out); }
};

}  // namespace Corvane::Mox
