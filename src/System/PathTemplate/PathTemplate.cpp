#include "System/PathTemplate/PathTemplate.h"

#include <cstring>
#include <string>
#include <vector>

#include "System/PathTemplate/PathTemplateContext.h"
#include "System/PathTemplate/PathTemplateParser.h"
#include "System/PathTemplate/PathTemplateSyntaxTree.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

const char* const CPathTemplate::ValidTokens[ValidTokenCount] = {
    "package",   "session",  "kid",       "segment",   "directory", "init",      "container", "uuid",
    "title",     "extension", "track",    "media",     "data",      "pid",       "format",    "video_format",
    "audio_format", "subtitle_format", "language", "LANGUAGE", "language3", "LANGUAGE3", "region", "REGION",
    "region3",   "REGION3",  "bps",       "kbps",      "mbps",      "date",      "now",       "time",
    "width",     "height",   "channels",  "layout",    "playlist_name",
};

namespace {

std::vector<std::string> SplitPath(const char* path) {
  std::vector<std::string> parts;
  std::string part;
  for (const char* p = path; *p; ++p) {
    if (*p == '/') {
      parts.push_back(part);
      part.clear();
    } else {
      part += *p;
    }
  }
  parts.push_back(part);
  return parts;
}

// The "Name" and "Path" texts of one element of a template array (acquired).
bool ReadEntry(CVariant* element, CString*& name, CString*& path) {
  name = path = nullptr;
  if (!element) return false;
  RObject<CProperties> entry(element->ToProperties());
  if (!entry) return false;
  entry->GetProperty(PropertyName("Name"), name);
  entry->GetProperty(PropertyName("Path"), path);
  if (name && path) return true;
  if (name) name->Release();
  if (path) path->Release();
  name = path = nullptr;
  return false;
}

}  // namespace

bool CPathTemplate::IsValidToken(const char* name) {
  if (!name) return false;
  for (const char* token : ValidTokens)
    if (std::strcmp(token, name) == 0) return true;
  return false;
}

CPathTemplate::CPathTemplate() : CPathTemplate(TypeCode) {}

CPathTemplate::CPathTemplate(unsigned int type)
    : CObject(type), media_(nullptr), video_(nullptr), audio_(nullptr), subtitle_(nullptr) {}

CPathTemplate::~CPathTemplate() { CPathTemplate::Clear(); }

void CPathTemplate::Assign(CString*& slot, CString* text) {
  if (text) text->Acquire();
  if (slot) slot->Release();
  slot = text;
}

void CPathTemplate::Assign(CString*& slot, const char* text) {
  RObject<CString> value(text ? new CString(text) : nullptr);
  Assign(slot, value.Get());
}

void CPathTemplate::Clear() {
  for (CString** slot : {&media_, &video_, &audio_, &subtitle_}) Assign(*slot, static_cast<CString*>(nullptr));
  for (NamedTemplate& named : named_) Assign(named.path, static_cast<CString*>(nullptr));
}

void CPathTemplate::DefineNamed(const char* name, const char* pathTemplate) {
  named_.push_back(NamedTemplate{name, nullptr});
  Assign(named_.back().path, pathTemplate);
}

CString* CPathTemplate::GetNamed(const char* name) const {
  for (const NamedTemplate& named : named_) {
    if (std::strcmp(named.name, name) == 0) return named.path;
  }
  return nullptr;
}

void CPathTemplate::SetNamed(const char* name, const char* pathTemplate) {
  RObject<CString> path(pathTemplate ? new CString(pathTemplate) : nullptr);
  SetNamedTemplate(name, path);
}

void CPathTemplate::SetMedia(const char* pathTemplate) { Assign(media_, pathTemplate); }
void CPathTemplate::SetVideo(const char* pathTemplate) { Assign(video_, pathTemplate); }
void CPathTemplate::SetAudio(const char* pathTemplate) { Assign(audio_, pathTemplate); }
void CPathTemplate::SetSubtitle(const char* pathTemplate) { Assign(subtitle_, pathTemplate); }

Result CPathTemplate::Verify(CString* pathTemplate) const {
  if (!pathTemplate) return ResultArgumentNull("path template must not be nullptr");
  try {
    CParser parser;
    RObject<CSyntaxTree> tree(parser.Parse(pathTemplate->GetChars()));
  } catch (const Result& failure) {
    return failure;
  }
  return ResultOK();
}

Result CPathTemplate::VerifyIfSet(CString* pathTemplate) const {
  return pathTemplate ? Verify(pathTemplate) : ResultOK();
}

Result CPathTemplate::Verify() {
  for (CString* pathTemplate : {media_, video_, audio_, subtitle_}) {
    Result result = VerifyIfSet(pathTemplate);
    if (result.Failed()) return result;
  }
  for (const NamedTemplate& named : named_) {
    Result result = VerifyIfSet(named.path);
    if (result.Failed()) return result;
  }
  return ResultOK();
}

bool CPathTemplate::SetNamedTemplate(const char* name, CString* path) {
  if (std::strcmp(name, "media") == 0) {
    Assign(media_, path);
  } else if (std::strcmp(name, "video") == 0) {
    Assign(video_, path);
  } else if (std::strcmp(name, "audio") == 0) {
    Assign(audio_, path);
  } else if (std::strcmp(name, "subtitle") == 0) {
    Assign(subtitle_, path);
  } else {
    for (NamedTemplate& named : named_) {
      if (std::strcmp(named.name, name) == 0) {
        Assign(named.path, path);
        return true;
      }
    }
    return false;
  }
  return true;
}

Result CPathTemplate::SelectTemplate(CContext* context, CString*& out) const {
  out = nullptr;
  CString* selected = media_;
  if (context) {
    if (video_ && context->IsVideoOnly()) selected = video_;
    if (audio_ && context->IsAudioOnly()) selected = audio_;
    if (subtitle_ && context->IsSubtitleOnly()) selected = subtitle_;
  }
  if (!selected) return ResultError("CPathTemplate::SelectTemplate: path template not found");
  selected->Acquire();
  out = selected;
  return ResultOK();
}

Result CPathTemplate::Resolve(CContext* context, CString* pathTemplate, CString*& out) const {
  out = nullptr;
  if (!pathTemplate) return ResultError("CPathTemplate::Resolve: missing path template");
  // Syntax errors are thrown by the parser and pass through to the caller.
  CParser parser;
  RObject<CSyntaxTree> tree(parser.Parse(pathTemplate->GetChars()));
  if (!tree) return ResultError("CPathTemplate::Resolve: template parse error");
  RObject<CString> text(tree->Evaluate(context));
  if (!text) return ResultError("CPathTemplate::Resolve: error evaluating path template");
  out = text.Detach();
  return ResultOK();
}

Result CPathTemplate::ResolveNamed(const char* name, CContext* context, CString*& out) const {
  out = nullptr;
  CString* pathTemplate = GetNamed(name);
  if (!pathTemplate) return ResultError("CPathTemplate: the %s path template is not set", name);
  return Resolve(context, pathTemplate, out);
}

Result CPathTemplate::GetMediaFileName(CContext* context, CString*& out) const {
  out = nullptr;
  RObject<CString> selected;
  Result result = SelectTemplate(context, selected.Out());
  if (result.Failed()) return result;
  return Resolve(context, selected, out);
}

Result CPathTemplate::GetMediaFileName(CString*& out, CContext* context) const { return GetMediaFileName(context, out); }

CString* CPathTemplate::GetMediaFileName(CContext* context) const {
  CString* name = nullptr;
  GetMediaFileName(context, name);
  return name;
}

Result CPathTemplate::FromProperties(const CVariantArray* array) {
  if (!array) return ResultArgumentNull("template array must not be nullptr");
  for (CVariant* element : *array) {
    RObject<CString> name;
    RObject<CString> path;
    if (ReadEntry(element, name.Out(), path.Out())) SetNamedTemplate(name->GetChars(), path);
  }
  return ResultOK();
}

Result CPathTemplate::FromProperties(CString*& out, const char* name, const CVariantArray* array) {
  out = nullptr;
  if (!array || !name) return ResultArgumentNull("template name and array must not be nullptr");
  for (CVariant* element : *array) {
    RObject<CString> entryName;
    RObject<CString> path;
    if (ReadEntry(element, entryName.Out(), path.Out()) && entryName->Equals(name)) {
      out = path.Detach();
      return ResultOK();
    }
  }
  return ResultFalse();
}

CString* CPathTemplate::GetRelativeTo(CString* path, CString* base) {
  if (!path) return nullptr;
  std::vector<std::string> target = SplitPath(path->GetChars());
  std::vector<std::string> from = base ? SplitPath(base->GetChars()) : std::vector<std::string>();
  // An empty base (or one ending in "/") has no component of its own there.
  if (!from.empty() && from.back().empty()) from.pop_back();
  std::size_t common = 0;
  while (common < target.size() && common < from.size() && target[common] == from[common]) ++common;
  std::string relative;
  for (std::size_t i = common; i < from.size(); ++i) relative += "../";
  for (std::size_t i = common; i < target.size(); ++i) {
    relative += target[i];
    if (i + 1 < target.size()) relative += '/';
  }
  return new CString(relative.c_str(), static_cast<int>(relative.size()));
}

CString* CPathTemplate::GetRelativeFrom(CString* path, CString* base) { return GetRelativeTo(base, path); }

}  // namespace Corvane::Mox
