#pragma once
// CHlsPathTemplate: the templates of HLS packages: the master manifest, the media playlists, key files and segments.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CHlsPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("phls");

  CHlsPathTemplate();
  ~CHlsPathTemplate() override;

  void Clear() override;

  // Manifest template ("manifest" in properties); the resolved name for context.
  void SetManifest(const char* pathTemplate);
  CString* GetManifest() const { return manifest_; }
  Result GetManifest(CString*& out, CContext* context) const;

  // Playlist template ("playlist" in properties); the resolved name for context.
  void SetPlaylist(const char* pathTemplate);
  CString* GetPlaylist() const { return playlist_; }
  Result GetPlaylist(CString*& out, CContext* context) const;

  // Key template; the resolved name for context.
  void SetKey(const char* pathTemplate);
  CString* GetKey() const { return key_; }
  Result GetKey(CString*& out, CContext* context) const;

 protected:
  explicit CHlsPathTemplate(unsigned int type);
  bool SetNamedTemplate(const char* name, CString* path) override;
  Result VerifyNamedTemplates() override;

 private:
  void SetDefaults();

  CString* manifest_ = nullptr;
  CString* playlist_ = nullptr;
  CString* key_ = nullptr;
};

}  // namespace Corvane::Mox
