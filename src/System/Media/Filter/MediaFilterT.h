#pragma once
// CMediaFilterT<S, P>: a filter of one media kind. It checks the class of
// every description and sample it is given (P: CVideoProperties,
// CAudioProperties or CSubtitleProperties; S the matching sample class) and
// accepts a description whose format, or else its equivalent, categorical or
// canonical format, is among the input formats.

#include "System/Collections/Value.h"
#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/MediaSample.h"

namespace Corvane::Mox {

// True when formats holds format or, in that order, its equivalent,
// categorical or canonical format in the vocabulary of the media kind.
bool ContainsFormatOrRelative(unsigned int mediaKind, const CFormatList* formats, unsigned int format);

template <class S, class P>
class CMediaFilterT : public CMediaFilter {
 public:
  using Sample = S;
  using Properties = P;

  explicit CMediaFilterT(unsigned int componentCode) : CMediaFilter(componentCode) {}

  int Evaluate(const CMediaProperties* properties) const override {
    if (!properties || !properties->IsType(P::TypeCode)) return 0;
    return Evaluate(static_cast<const P*>(properties));
  }
  virtual int Evaluate(const P* properties) const {
    if (!properties) return 0;
    RObject<CFormatList> formats(GetInputFormats());
    return ContainsFormatOrRelative(P::TypeCode, formats, properties->GetFormat()) ? Acceptable : 0;
  }

  Result AddInputMedia(const CMediaProperties* properties) override {
    if (!properties) return ResultArgumentNull();
    if (!properties->IsType(P::TypeCode)) return ResultTypeMismatch();
    return AddInputMedia(static_cast<const P*>(properties));
  }
  virtual Result AddInputMedia(const P* properties) { return CMediaFilter::AddInputMedia(properties); }

  Result WriteSample(int track, CMediaSample* sample) override {
    if (sample && !sample->IsType(S::TypeCode)) throw ResultTypeMismatch();
    return CMediaFilter::WriteSample(track, sample);
  }
  virtual Result WriteSample(int track, S* sample) { return CMediaFilter::WriteSample(track, sample); }
  Result WriteSample(int track, std::nullptr_t) { return CMediaFilter::WriteSample(track, static_cast<CMediaSample*>(nullptr)); }

  Result ReadSample(int track, CMediaSample*& sample) override { return CMediaFilter::ReadSample(track, sample); }
  virtual Result ReadSample(int track, S*& sample) {
    CMediaSample* any = nullptr;
    Result read = CMediaFilter::ReadSample(track, any);
    sample = static_cast<S*>(any);
    return read;
  }

 protected:
  Result ProcessSample(int track, CMediaSample* sample) override {
    return ProcessSample(track, static_cast<S*>(sample));
  }
  virtual Result ProcessSample(int, S*) { return Result(); }

  void EnqueueOutputSample(int index, CMediaSample* sample) override {
    CMediaFilter::EnqueueOutputSample(index, sample);
  }
  virtual void EnqueueOutputSample(int index, S* sample) { CMediaFilter::EnqueueOutputSample(index, sample); }
};

}  // namespace Corvane::Mox
