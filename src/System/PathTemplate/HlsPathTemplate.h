#pragma once
// CHlsPathTemplate: the templates of HLS packages: the master manifest, the media playlists, key files and segments.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CHlsPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("phls");

  CHlsPathTemplate();

  // Manifest template ("manifest" in properties); the resolved name for context.
  void SetManifest(const char* pathTemplate) { SetNamed("manifest", pathTemplate); }
  CString* GetManifest() const { return GetNamed("manifest"); }
  Result GetManifest(CString*& out, CContext* context) const { return ResolveNamed("manifest", context, out); }

  // Playlist template ("playlist" in properties); the resolved name for context.
  void SetPlaylist(const char* pathTemplate) { SetNamed("playlist", pathTemplate); }
  CString* GetPlaylist() const { return GetNamed("playlist"); }
  Result GetPlaylist(CString*& out, CContext* context) const { return ResolveNamed("playlist", context, out); }

  // Key template ("key" in properties); the resolved name for context.
  void SetKey(const char* pathTemplate) { SetNamed("key", pathTemplate); }
  CString* GetKey() const { return GetNamed("key"); }
  Result GetKey(CString*& out, CContext* context) const { return ResolveNamed("key", context, out); }
};

}  // namespace Corvane::Mox
