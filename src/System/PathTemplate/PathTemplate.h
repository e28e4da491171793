#pragma once
// CPathTemplate: output-name templates such as "$container$/segment$_segment$.$extension$".
// "$name$" tokens are replaced by the values of the file being named (a
// CPathTemplate::CContext); a token may carry a prefix and a suffix character
// (" ", "-", ".", "/", "_", written only when the token has a value) and a
// printf format for integers ("$directory:/dir%d$"). A backslash escapes the
// next character of literal text. The four base templates (media, video,
// audio, subtitle) are chosen by the kinds of media in the file; package
// kinds add named templates in subclasses.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CVariantArray;

class CPathTemplate : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("ptmp");

  class CContext;
  class CSyntaxElement;
  class CStringLiteral;
  class CToken;
  class CSyntaxTree;
  class CParser;

  // The token names a template may use (case-sensitive).
  static constexpr int ValidTokenCount = 37;
  static const char* const ValidTokens[ValidTokenCount];
  static bool IsValidToken(const char* name);

  CPathTemplate();
  ~CPathTemplate() override;

  // Removes every template.
  virtual void Clear();
  // Parses every template that is set; the first syntax error is the result.
  Result Verify();
  // Parses one template; a null template is ResultArgumentNull.
  Result Verify(CString* pathTemplate) const;

  // The template for the media of context: video, audio or subtitle when it is
  // set and the context holds only that kind of media, else media.
  Result SelectTemplate(CContext* context, CString*& out) const;
  // The template evaluated for context. Syntax errors are thrown as Results.
  Result Resolve(CContext* context, CString* pathTemplate, CString*& out) const;
  // SelectTemplate, then Resolve; the first form gives null on failure.
  CString* GetMediaFileName(CContext* context) const;
  Result GetMediaFileName(CContext* context, CString*& out) const;
  Result GetMediaFileName(CString*& out, CContext* context) const;

  void SetMedia(const char* pathTemplate);
  void SetVideo(const char* pathTemplate);
  void SetAudio(const char* pathTemplate);
  void SetSubtitle(const char* pathTemplate);
  // Borrowed; null when not set.
  CString* GetMedia() const { return media_; }
  CString* GetVideo() const { return video_; }
  CString* GetAudio() const { return audio_; }
  CString* GetSubtitle() const { return subtitle_; }

  // Each element is a property bag with "Name" and "Path"; the path becomes
  // the template of that name. Unknown names are ignored.
  Result FromProperties(const CVariantArray* array);
  // The "Path" of the element named name (acquired); ResultFalse when absent.
  static Result FromProperties(CString*& out, const char* name, const CVariantArray* array);

  // path relative to the folder base: the common leading "/" components are
  // dropped and each remaining component of base becomes "..".
  static CString* GetRelativeTo(CString* path, CString* base);
  // The other direction: base relative to the folder path.
  static CString* GetRelativeFrom(CString* path, CString* base);

 protected:
  explicit CPathTemplate(unsigned int type);

  // Package kinds add their templates (a manifest, a playlist, ...) by name
  // here, in their constructors; the base then clears, verifies and sets them
  // from properties like its own four. name must be a literal.
  void DefineNamed(const char* name, const char* pathTemplate);
  // The template called name (borrowed); null when not set or not defined.
  CString* GetNamed(const char* name) const;
  void SetNamed(const char* name, const char* pathTemplate);
  // The template called name evaluated for context; an error when it is not set.
  Result ResolveNamed(const char* name, CContext* context, CString*& out) const;
  // Stores path as the template called name; false for a name this class does not have.
  bool SetNamedTemplate(const char* name, CString* path);
  static void Assign(CString*& slot, const char* text);
  static void Assign(CString*& slot, CString* text);
  Result VerifyIfSet(CString* pathTemplate) const;

 private:
  CString* media_;
  CString* video_;
  CString* audio_;
  CString* subtitle_;
  struct NamedTemplate {
    const char* name;
    CString* path;
  };
  std::vector<NamedTemplate> named_;  // in definition order
};

}  // namespace Corvane::Mox
