#pragma once
// Helpers of the path template tests: resolving a template text against a
// context, and a context for a typical 1.5 Mbit/s H.264 + AAC file.

#include <gtest/gtest.h>

#include <string>

#include "System/LeakCheckedTest.h"
#include "System/PathTemplate/PathTemplate.h"
#include "System/PathTemplate/PathTemplateContext.h"
#include "System/Text.h"

namespace Corvane::Mox::PathTemplateTesting {

using Context = CPathTemplate::CContext;

inline unsigned short Pack(const char* letters) {
  return static_cast<unsigned short>(((letters[0] & 31) << 10) | ((letters[1] & 31) << 5) | (letters[2] & 31));
}

// The resolved text, or "<error: details>" for a returned or thrown failure.
inline std::string Resolve(const char* text, Context* context) {
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  RObject<CString> templateText(new CString(text));
  RObject<CString> out;
  try {
    Result result = pathTemplate->Resolve(context, templateText, out.Out());
    if (result.Failed()) return std::string("<error: ") + (result.GetDetails() ? result.GetDetails() : "") + ">";
  } catch (const Result& failure) {
    return std::string("<error: ") + (failure.GetDetails() ? failure.GetDetails() : "") + ">";
  }
  return out->GetChars();
}

inline Context::MediaInfo Video(unsigned int format, long long bitRate, int width, int height) {
  Context::MediaInfo info;
  info.format = format;
  info.bitRate = bitRate;
  info.width = width;
  info.height = height;
  return info;
}

inline Context::MediaInfo Audio(unsigned int format, long long bitRate, const char* language, int channels) {
  Context::MediaInfo info;
  info.format = format;
  info.bitRate = bitRate;
  info.language = language ? Pack(language) : 0;
  info.channels = channels;
  return info;
}

}  // namespace Corvane::Mox::PathTemplateTesting
