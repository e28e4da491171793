#include "System/PathTemplate/AtsPathTemplate.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CAtsPathTemplate::CAtsPathTemplate() : CAtsPathTemplate(TypeCode) {}

CAtsPathTemplate::CAtsPathTemplate(unsigned int type) : CPathTemplate(type) { SetDefaults(); }

CAtsPathTemplate::~CAtsPathTemplate() { CAtsPathTemplate::Clear(); }

void CAtsPathTemplate::SetDefaults() {
  Assign(presentation_, "$package$.mpd");
  SetMedia("$container$.ts");
}

void CAtsPathTemplate::Clear() {
  CPathTemplate::Clear();
  Assign(presentation_, static_cast<CString*>(nullptr));
}

void CAtsPathTemplate::SetPresentation(const char* pathTemplate) { Assign(presentation_, pathTemplate); }

Result CAtsPathTemplate::GetPresentation(CString*& out, CContext* context) const {
  return ResolveNamed("presentation", presentation_, context, out);
}

bool CAtsPathTemplate::SetNamedTemplate(const char* name, CString* path) {
  if (std::strcmp(name, "presentation") == 0) {
    Assign(presentation_, path);
    return true;
  }
  return CPathTemplate::SetNamedTemplate(name, path);
}

Result CAtsPathTemplate::VerifyNamedTemplates() {
  for (CString* pathTemplate : {presentation_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  return CPathTemplate::VerifyNamedTemplates();
}

}  // namespace Corvane::Mox
