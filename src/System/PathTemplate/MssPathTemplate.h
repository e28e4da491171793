#pragma once
// CMssPathTemplate: the templates of Smooth Streaming packages: the client and server manifests and the media files.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CMssPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pmss");

  CMssPathTemplate();

  // Client template ("client" in properties); the resolved name for context.
  void SetClient(const char* pathTemplate) { SetNamed("client", pathTemplate); }
  CString* GetClient() const { return GetNamed("client"); }
  Result GetClient(CString*& out, CContext* context) const { return ResolveNamed("client", context, out); }

  // Server template ("server" in properties); the resolved name for context.
  void SetServer(const char* pathTemplate) { SetNamed("server", pathTemplate); }
  CString* GetServer() const { return GetNamed("server"); }
  Result GetServer(CString*& out, CContext* context) const { return ResolveNamed("server", context, out); }
};

}  // namespace Corvane::Mox
