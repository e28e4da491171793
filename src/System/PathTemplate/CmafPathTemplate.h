#pragma once
// CCmafPathTemplate: the templates of CMAF packages: a DASH presentation, an HLS manifest and playlists, and the segments they share.
// The defaults are set at construction; FromProperties replaces them by name.

#include "System/PathTemplate/PathTemplate.h"

namespace Corvane::Mox {

class CCmafPathTemplate : public CPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcmf");

  CCmafPathTemplate();
  ~CCmafPathTemplate() override;

  void Clear() override;

  // Presentation template ("presentation" in properties); the resolved name for context.
  void SetPresentation(const char* pathTemplate);
  CString* GetPresentation() const { return presentation_; }
  Result GetPresentation(CString*& out, CContext* context) const;

  // Manifest template ("manifest" in properties); the resolved name for context.
  void SetManifest(const char* pathTemplate);
  CString* GetManifest() const { return manifest_; }
  Result GetManifest(CString*& out, CContext* context) const;

  // Playlist template ("playlist" in properties); the resolved name for context.
  void SetPlaylist(const char* pathTemplate);
  CString* GetPlaylist() const { return playlist_; }
  Result GetPlaylist(CString*& out, CContext* context) const;

 protected:
  explicit CCmafPathTemplate(unsigned int type);
  bool SetNamedTemplate(const char* name, CString* path) override;
  Result VerifyNamedTemplates() override;

 private:
  void SetDefaults();

  CString* presentation_ = nullptr;
  CString* manifest_ = nullptr;
  CString* playlist_ = nullptr;
};

}  // namespace Corvane::Mox
