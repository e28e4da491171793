#include "System/Media/Container/VideoContainerWriter.h"

#include "System/IO/Stream.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

CVideoContainerWriter::CVideoContainerWriter()
    : CIndexedContainerWriter(ComponentCode), stream_(nullptr), properties_(nullptr), pictureSize_(0) {}

CVideoContainerWriter::~CVideoContainerWriter() {
  EndIndex();
  if (properties_) properties_->Release();
}

int CVideoContainerWriter::GetVideoMediaCount() const { return properties_ ? 1 : 0; }

CVideoProperties* CVideoContainerWriter::GetVideoProperties(int track) const {
  return track == 0 && properties_ ? new CVideoProperties(properties_) : nullptr;
}

Result CVideoContainerWriter::AddVideoMedia(CVideoProperties* properties) {
  if (!properties) return ResultArgumentNull();
  if (properties_) return ResultNotSupported("an elementary video file holds one track");
  properties_ = new CVideoProperties(properties);
  return Result();
}

Result CVideoContainerWriter::BeginIndex() {
  if (!properties_) return ResultInvalidOperation("no video track");
  // Planar and packed formats have a sample length; compressed ones do not.
  pictureSize_ = properties_->GetSampleLength(0);
  return OpenStream(stream_);
}

Result CVideoContainerWriter::WriteVideoSample(int track, CVideoSample* sample) {
  if (!sample) return Result();
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  if (!stream_) return ResultInvalidOperation("the writer has not begun");
  RObject<CLockedDataReference> data;
  Result result = LockSampleData(sample, data.Out());
  if (result.Failed()) return result;
  int length = data->GetLength();
  if (pictureSize_ > 0) {
    if (length < pictureSize_)
      return ResultInvalidArgument("the sample holds %d of the %d bytes of a picture", length, pictureSize_);
    length = pictureSize_;
  }
  return stream_->Write(data->GetData(), length);
}

Result CVideoContainerWriter::EndIndex() {
  if (!stream_) return ResultFalse();
  Result result = stream_->Flush();
  stream_->Close();
  stream_->Release();
  stream_ = nullptr;
  return result;
}

}  // namespace Corvane::Mox
