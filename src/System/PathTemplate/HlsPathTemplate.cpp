#include "System/PathTemplate/HlsPathTemplate.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CHlsPathTemplate::CHlsPathTemplate() : CHlsPathTemplate(TypeCode) {}

CHlsPathTemplate::CHlsPathTemplate(unsigned int type) : CPathTemplate(type) { SetDefaults(); }

CHlsPathTemplate::~CHlsPathTemplate() { CHlsPathTemplate::Clear(); }

void CHlsPathTemplate::SetDefaults() {
  Assign(manifest_, "$package$.m3u8");
  Assign(playlist_, "$container$/$playlist_name$");
  Assign(key_, "$package$_$kid$.bin");
  SetMedia("$container$/segment$_segment$.$extension$");
}

void CHlsPathTemplate::Clear() {
  CPathTemplate::Clear();
  Assign(manifest_, static_cast<CString*>(nullptr));
  Assign(playlist_, static_cast<CString*>(nullptr));
  Assign(key_, static_cast<CString*>(nullptr));
}

void CHlsPathTemplate::SetManifest(const char* pathTemplate) { Assign(manifest_, pathTemplate); }

Result CHlsPathTemplate::GetManifest(CString*& out, CContext* context) const {
  return ResolveNamed("manifest", manifest_, context, out);
}

void CHlsPathTemplate::SetPlaylist(const char* pathTemplate) { Assign(playlist_, pathTemplate); }

Result CHlsPathTemplate::GetPlaylist(CString*& out, CContext* context) const {
  return ResolveNamed("playlist", playlist_, context, out);
}

void CHlsPathTemplate::SetKey(const char* pathTemplate) { Assign(key_, pathTemplate); }

Result CHlsPathTemplate::GetKey(CString*& out, CContext* context) const {
  return ResolveNamed("key", key_, context, out);
}

bool CHlsPathTemplate::SetNamedTemplate(const char* name, CString* path) {
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

Result CHlsPathTemplate::VerifyNamedTemplates() {
  for (CString* pathTemplate : {manifest_, playlist_, key_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  return CPathTemplate::VerifyNamedTemplates();
}

}  // namespace Corvane::Mox
