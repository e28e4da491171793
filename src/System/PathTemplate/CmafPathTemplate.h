#pragma once
// CCmafPathTemplate: the templates of CMAF packages: a DASH presentation, an HLS manifest and playlists, and the segments they share.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CCmafPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcmf");

  CCmafPathTemplate();

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate) { SetNamed("presentation", pathTemplate); }
  CString* GetPresentation() const { return GetNamed("presentation"); }
  Result GetPresentation(CString*& out, CContext* context) const { return ResolveNamed("presentation", context, out); }

  // Manifest template ("manifest" in properties); the resolved name for context.
  void SetManifest(const char* pathTemplate) { SetNamed("manifest", pathTemplate); }
  CString* GetManifest() const { return GetNamed("manifest"); }
  Result GetManifest(CString*& out, CContext* context) const { return ResolveNamed("manifest", context, out); }

  // Playlist template ("playlist" in properties); the resolved name for context.
  void SetPlaylist(const char* pathTemplate) { SetNamed("playlist", pathTemplate); }
  CString* GetPlaylist() const { return GetNamed("playlist"); }
  Result GetPlaylist(CString*& out, CContext* context) const { return ResolveNamed("playlist", context, out); }

 protected:
  explicit CCmafPathTemplate(unsigned int type);
};

}  // namespace Corvane::Mox
