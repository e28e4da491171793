#include "System/Media/Container/VideoContainerWriter.h"

#include "System/Collections/Value.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

CVideoContainerWriter::CVideoContainerWriter() : CSingleVideoTrackWriter(ComponentCode), pictureSize_(0) {}

CVideoContainerWriter::~CVideoContainerWriter() { CloseOutput(); }

CFormatList* CVideoContainerWriter::GetVideoFormats() const {
  auto* formats = new CFormatList();
  for (int row = 0; row < VideoFormat::GetRowCount(); ++row) {
    const unsigned int code = VideoFormat::GetRow(row)->code;
    // A code may have several rows (names and aliases); list it once.
    if (!formats->ContainsValue(code)) formats->AddValue(code);
  }
  return formats;
}

Result CVideoContainerWriter::BeginIndex() {
  if (!properties_) return ResultInvalidOperation("no video track");
  // Planar and packed formats have a sample length; compressed ones do not.
  pictureSize_ = properties_->GetSampleLength(0);
  return OpenStream(stream_.Out());
}

Result CVideoContainerWriter::WriteVideoSample(int track, CVideoSample* sample) {
  if (!sample) return Result();
  RObject<CLockedDataReference> data;
  Result result = LockTrackSample(track, sample, pictureSize_, data.Out());
  if (result.Failed()) return result;
  // A picture is its planes' bytes; compressed samples are written whole.
  return stream_->Write(data->GetData(), pictureSize_ > 0 ? pictureSize_ : data->GetLength());
}

}  // namespace Corvane::Mox
