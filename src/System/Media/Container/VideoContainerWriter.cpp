#include "System/Media/Container/VideoContainerWriter.h"

#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

CVideoContainerWriter::CVideoContainerWriter() : CSingleVideoTrackWriter(ComponentCode), pictureSize_(0) {}

CVideoContainerWriter::~CVideoContainerWriter() { CloseOutput(); }

Result CVideoContainerWriter::BeginIndex() {
  if (!properties_) return ResultInvalidOperation("no video track");
  // Planar and packed formats have a sample length; compressed ones do not.
  pictureSize_ = properties_->GetSampleLength(0);
  return OpenStream(stream_.Out());
}

Result CVideoContainerWriter::WriteVideoSample(int track, CVideoSample* sample) {
  if (!sample) return Result();
  Result result = CheckTrack(track);
  if (result.Failed()) return result;
  RObject<CLockedDataReference> data;
  result = LockSampleData(sample, data.Out());
  if (result.Failed()) return result;
  int length = data->GetLength();
  if (pictureSize_ > 0) {
    if (length < pictureSize_)
      return ResultInvalidArgument("the sample holds %d of the %d bytes of a picture", length, pictureSize_);
    length = pictureSize_;
  }
  return stream_->Write(data->GetData(), length);
}

}  // namespace Corvane::Mox
