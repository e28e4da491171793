#include "System/PathTemplate/DashPathTemplate.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CDashPathTemplate::CDashPathTemplate() : CDashPathTemplate(TypeCode) {}

CDashPathTemplate::CDashPathTemplate(unsigned int type) : CPathTemplate(type) { SetDefaults(); }

CDashPathTemplate::~CDashPathTemplate() { CDashPathTemplate::Clear(); }

void CDashPathTemplate::SetDefaults() {
  Assign(presentation_, "$package$.mpd");
  SetMedia("$container$/segment$segment$$time$$init$.$extension$");
}

void CDashPathTemplate::Clear() {
  CPathTemplate::Clear();
  Assign(presentation_, static_cast<CString*>(nullptr));
}

void CDashPathTemplate::SetPresentation(const char* pathTemplate) { Assign(presentation_, pathTemplate); }

Result CDashPathTemplate::GetPresentation(CString*& out, CContext* context) const {
  return ResolveNamed("presentation", presentation_, context, out);
}

bool CDashPathTemplate::SetNamedTemplate(const char* name, CString* path) {
  if (std::strcmp(name, "presentation") == 0) {
    Assign(presentation_, path);
    return true;
  }
  return CPathTemplate::SetNamedTemplate(name, path);
}

Result CDashPathTemplate::VerifyNamedTemplates() {
  for (CString* pathTemplate : {presentation_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  return CPathTemplate::VerifyNamedTemplates();
}

}  // namespace Corvane::Mox
