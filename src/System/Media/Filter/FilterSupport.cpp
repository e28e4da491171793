// Helpers shared by the typed and media-kind filter layers.

#include "System/Collections/Value.h"
#include "System/Media/Analysis.h"
#include "System/Media/Filter/MediaKindFilterT.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/Formats/SubtitleFormat.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/Metadata/Metadata.h"

namespace Corvane::Mox {

namespace {

struct Relatives {
  unsigned int (*equivalent)(unsigned int);
  unsigned int (*categorical)(unsigned int);
  unsigned int (*canonical)(unsigned int);
};

Relatives RelativesOf(unsigned int mediaKind) {
  switch (mediaKind) {
    case FourCC("aud "):
      return {&AudioFormat::GetEquivalentFormat, &AudioFormat::GetCategoricalFormat, &AudioFormat::GetCanonicalFormat};
    case FourCC("sub "):
      return {&SubtitleFormat::GetEquivalentFormat, &SubtitleFormat::GetCategoricalFormat,
              &SubtitleFormat::GetCanonicalFormat};
    default:
      return {&VideoFormat::GetEquivalentFormat, &VideoFormat::GetCategoricalFormat, &VideoFormat::GetCanonicalFormat};
  }
}

}  // namespace

bool ContainsFormatOrRelative(unsigned int mediaKind, const CFormatList* formats, unsigned int format) {
  if (!formats || format == 0) return false;
  if (formats->ContainsValue(format)) return true;
  const Relatives relatives = RelativesOf(mediaKind);
  for (auto relative : {relatives.equivalent, relatives.categorical, relatives.canonical}) {
    const unsigned int code = relative(format);
    if (code != 0 && formats->ContainsValue(code)) return true;
  }
  return false;
}

Result CopyCommonSampleMetadata(CMediaSample* to, const CMediaSample* from) {
  if (!to || !from) return ResultArgumentNull();
  RObject<CMetadata> metadata(from->GetMetadata());
  if (metadata) {
    RObject<CMetadata> copy(new CMetadata());
    Result copied = copy->Copy(metadata);
    if (copied.Failed()) return copied;
    to->SetMetadata(copy);
  }
  RObject<CAnalysis> analysis(from->GetAnalysis());
  to->SetAnalysis(analysis);
  RObject<CObject> userData(from->GetUserData());
  to->SetUserData(userData);
  Result properties = to->SetProperties(from);
  if (properties.Failed()) return properties;
  to->SetTime(from->GetTime());
  to->SetHint(from->GetHint());
  to->SetDuration(from->GetDuration());
  to->SetTrim(from->GetTrim());
  return Result();
}

}  // namespace Corvane::Mox
