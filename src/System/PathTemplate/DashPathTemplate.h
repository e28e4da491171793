#pragma once
// CDashPathTemplate: the templates of DASH packages: the presentation (MPD) and the segments.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CDashPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pdsh");

  CDashPathTemplate();
  ~CDashPathTemplate() override;

  void Clear() override;

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate);
  CString* GetPresentation() const { return presentation_; }
  Result GetPresentation(CString*& out, CContext* context) const;

 protected:
  explicit CDashPathTemplate(unsigned int type);
  bool SetNamedTemplate(const char* name, CString* path) override;
  Result VerifyNamedTemplates() override;

 private:
  void SetDefaults();

  CString* presentation_ = nullptr;
};

}  // namespace Corvane::Mox
