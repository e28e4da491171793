#include "System/Media/Container/SingleAudioTrackReader.h"

#include "System/IO/Stream.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/StorageDataReference.h"

namespace Corvane::Mox {

int CSingleAudioTrackReader::GetAudioMediaCount() const { return GetTrack() ? 1 : 0; }

CAudioProperties* CSingleAudioTrackReader::GetAudioProperties(int track) const {
  CAudioProperties* properties = GetTrack();
  if (track != 0 || !properties) return nullptr;
  return new CAudioProperties(properties);
}

Result CSingleAudioTrackReader::CheckReadable(int track) const {
  if (track != 0 || !GetTrack()) return ResultIndexOutOfRange();
  if (!stream_) return ResultInvalidOperation("the reader is not indexing");
  return Result();
}

Result CSingleAudioTrackReader::ReadAudioData(int track, CContainerDataReference* reference, CDataReference*& data) {
  data = nullptr;
  Result readable = CheckReadable(track);
  if (readable.Failed()) return readable;
  CAutoLock lock(stream_);
  return ReadData(stream_, reference, data);
}

Result CSingleAudioTrackReader::ResolveAudioData(int track, CContainerDataReference* reference,
                                                 CStreamDataReference*& data) {
  data = nullptr;
  Result readable = CheckReadable(track);
  if (readable.Failed()) return readable;
  return ResolveData(stream_, reference, data);
}

}  // namespace Corvane::Mox
