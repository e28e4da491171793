// Arbitrary text as a path template: parsing either throws a Result or gives
// a tree that evaluates against a filled-in context without failing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "System/PathTemplate/PathTemplate.h"
#include "System/PathTemplate/PathTemplateContext.h"
#include "System/PathTemplate/PathTemplateParser.h"
#include "System/PathTemplate/PathTemplateSyntaxTree.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

CPathTemplate::CContext* NewContext() {
  auto* context = new CPathTemplate::CContext();
  context->SetPackage("pkg");
  context->SetSession("live");
  context->SetContainer("v1");
  context->SetExtension("ts");
  context->SetSegmentIndex(42);
  context->SetPresentationTime(900000000000LL);
  context->SetDirectoryIndex(3);
  context->SetTrackIndex(1);
  CPathTemplate::CContext::MediaInfo video;
  video.format = FourCC("avc1");
  video.bitRate = 1499999;
  video.width = 1280;
  video.height = 720;
  video.pid = 256;
  context->AddVideo(video);
  CPathTemplate::CContext::MediaInfo audio;
  audio.format = FourCC("mp4a");
  audio.bitRate = 128000;
  audio.language = ('e' & 31) << 10 | ('n' & 31) << 5 | ('g' & 31);
  audio.channels = 6;
  context->AddAudio(audio);
  return context;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;
  std::string text(reinterpret_cast<const char*>(data), size);
  RObject<CPathTemplate::CContext> context(NewContext());
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  RObject<CString> templateText(new CString(text.c_str()));
  Result verified = pathTemplate->Verify(templateText);
  try {
    CPathTemplate::CParser parser;
    RObject<CPathTemplate::CSyntaxTree> tree(parser.Parse(templateText->GetChars()));
    Check(verified.Succeeded() && tree);
    RObject<CString> resolved;
    Result result = pathTemplate->Resolve(context, templateText, resolved.Out());
    Check(result.Succeeded() == (tree->GetCount() > 0));
  } catch (const Result& failure) {
    Check(verified.Failed() && failure.GetDetails());
  }
  return 0;
}
