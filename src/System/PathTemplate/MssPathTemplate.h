#pragma once
// CMssPathTemplate: the templates of Smooth Streaming packages: the client and server manifests and the media files.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CMssPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pmss");

  CMssPathTemplate();
  ~CMssPathTemplate() override;

  void Clear() override;

  // Client template ("client" in properties); the resolved name for context.
  void SetClient(const char* pathTemplate);
  CString* GetClient() const { return client_; }
  Result GetClient(CString*& out, CContext* context) const;

  // Server template ("server" in properties); the resolved name for context.
  void SetServer(const char* pathTemplate);
  CString* GetServer() const { return server_; }
  Result GetServer(CString*& out, CContext* context) const;

 protected:
  explicit CMssPathTemplate(unsigned int type);
  bool SetNamedTemplate(const char* name, CString* path) override;
  Result VerifyNamedTemplates() override;

 private:
  void SetDefaults();

  CString* client_ = nullptr;
  CString* server_ = nullptr;
};

}  // namespace Corvane::Mox
