#include "System/PathTemplate/MssPathTemplate.h"

#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

CMssPathTemplate::CMssPathTemplate() : CMssPathTemplate(TypeCode) {}

CMssPathTemplate::CMssPathTemplate(unsigned int type) : CPathTemplate(type) { SetDefaults(); }

CMssPathTemplate::~CMssPathTemplate() { CMssPathTemplate::Clear(); }

void CMssPathTemplate::SetDefaults() {
  Assign(client_, "$package$.ismc");
  Assign(server_, "$package$.ism");
  SetMedia("$package$_$kbps$kbps.$extension$");
  SetVideo("$package$_$kbps$.ismv");
  SetAudio("$package$_a$kbps$_$language3$.isma");
  SetSubtitle("$package$_s$language3$.ismt");
}

void CMssPathTemplate::Clear() {
  CPathTemplate::Clear();
  Assign(client_, static_cast<CString*>(nullptr));
  Assign(server_, static_cast<CString*>(nullptr));
}

void CMssPathTemplate::SetClient(const char* pathTemplate) { Assign(client_, pathTemplate); }

Result CMssPathTemplate::GetClient(CString*& out, CContext* context) const {
  return ResolveNamed("client", client_, context, out);
}

void CMssPathTemplate::SetServer(const char* pathTemplate) { Assign(server_, pathTemplate); }

Result CMssPathTemplate::GetServer(CString*& out, CContext* context) const {
  return ResolveNamed("server", server_, context, out);
}

bool CMssPathTemplate::SetNamedTemplate(const char* name, CString* path) {
  if (std::strcmp(name, "client") == 0) {
    Assign(client_, path);
    return true;
  }
  if (std::strcmp(name, "server") == 0) {
    Assign(server_, path);
    return true;
  }
  return CPathTemplate::SetNamedTemplate(name, path);
}

Result CMssPathTemplate::VerifyNamedTemplates() {
  for (CString* pathTemplate : {client_, server_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  return CPathTemplate::VerifyNamedTemplates();
}

}  // namespace Corvane::Mox
