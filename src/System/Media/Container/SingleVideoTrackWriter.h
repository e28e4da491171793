#pragma once
// CSingleVideoTrackWriter<Base>: what the writers of one video track share:
// the track's description (a second track is refused), the output stream,
// and closing it.

#include "System/IO/Stream.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

template <class Base>
class CSingleVideoTrackWriter : public Base {
 public:
  using Base::Base;

  int GetVideoMediaCount() const override { return properties_ ? 1 : 0; }
  CVideoProperties* GetVideoProperties(int track) const override {
    return track == 0 && properties_ ? new CVideoProperties(properties_) : nullptr;
  }
  Result AddVideoMedia(CVideoProperties* properties) override {
    if (!properties) return ResultArgumentNull();
    if (properties_) return ResultNotSupported("the format holds one video track");
    properties_ = new CVideoProperties(properties);
    return Result();
  }

 protected:
  // The sample's bytes for writing to the track (acquired): the track must
  // exist, the output be open, and the sample hold at least `minimum` bytes.
  Result LockTrackSample(int track, CMediaSample* sample, long long minimum, CLockedDataReference*& data) const {
    data = nullptr;
    if (track != 0 || !properties_) return ResultIndexOutOfRange();
    if (!stream_) return ResultInvalidOperation("the writer has not begun");
    RObject<CLockedDataReference> locked;
    Result result = Base::LockSampleData(sample, locked.Out());
    if (result.Failed()) return result;
    if (locked->GetLength() < minimum)
      return ResultInvalidArgument("the sample holds %d of the %lld bytes of a picture", locked->GetLength(), minimum);
    data = locked.Detach();
    return Result();
  }
  // Flushes and closes the output; ResultFalse when it is not open.
  Result CloseOutput() {
    if (!stream_) return ResultFalse();
    Result result = stream_->Flush();
    stream_->Close();
    stream_.Clear();
    return result;
  }

  RObject<CVideoProperties> properties_;
  RObject<CStream> stream_;
};

}  // namespace Corvane::Mox
