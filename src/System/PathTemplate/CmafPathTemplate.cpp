#include "System/PathTemplate/CmafPathTemplate.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CCmafPathTemplate::CCmafPathTemplate() : CCmafPathTemplate(TypeCode) {}

CCmafPathTemplate::CCmafPathTemplate(unsigned int type) : CPathTemplate(type) { SetDefaults(); }

CCmafPathTemplate::~CCmafPathTemplate() { CCmafPathTemplate::Clear(); }

void CCmafPathTemplate::SetDefaults() {
  Assign(presentation_, "$package$.mpd");
  Assign(manifest_, "$package$.m3u8");
  Assign(playlist_, "$container$/index.m3u8");
  SetMedia("$container$/segment$segment$$init$.$extension$");
}

void CCmafPathTemplate::Clear() {
  CPathTemplate::Clear();
  Assign(presentation_, static_cast<CString*>(nullptr));
  Assign(manifest_, static_cast<CString*>(nullptr));
  Assign(playlist_, static_cast<CString*>(nullptr));
}

void CCmafPathTemplate::SetPresentation(const char* pathTemplate) { Assign(presentation_, pathTemplate); }

Result CCmafPathTemplate::GetPresentation(CString*& out, CContext* context) const {
  return ResolveNamed("presentation", presentation_, context, out);
}

void CCmafPathTemplate::SetManifest(const char* pathTemplate) { Assign(manifest_, pathTemplate); }

Result CCmafPathTemplate::GetManifest(CString*& out, CContext* context) const {
  return ResolveNamed("manifest", manifest_, context, out);
}

void CCmafPathTemplate::SetPlaylist(const char* pathTemplate) { Assign(playlist_, pathTemplate); }

Result CCmafPathTemplate::GetPlaylist(CString*& out, CContext* context) const {
  return ResolveNamed("playlist", playlist_, context, out);
}

bool CCmafPathTemplate::SetNamedTemplate(const char* name, CString* path) {
  if (std::strcmp(name, "presentation") == 0) {
    Assign(presentation_, path);
    return true;
  }
  if (std::strcmp(name, "manifest") == 0) {
    Assign(manifest_, path);
    return true;
  }
  if (std::strcmp(name, "playlist") == 0) {
    Assign(playlist_, path);
    return true;
  }
  return CPathTemplate::SetNamedTemplate(name, path);
}

Result CCmafPathTemplate::VerifyNamedTemplates() {
  for (CString* pathTemplate : {presentation_, manifest_, playlist_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  return CPathTemplate::VerifyNamedTemplates();
}

}  // namespace Corvane::Mox
