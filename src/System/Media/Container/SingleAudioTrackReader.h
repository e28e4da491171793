#pragma once
// CSingleAudioTrackReader: what readers of files holding exactly one audio
// track share (WAV, Wave64): the track count, copies of its description, the
// file's name as identifier, readiness (the samples are computed from the
// index, never queued) and the bytes behind a sample's reference, read from
// the reader's one stream.

#include "System/Media/Container/ContainerReader.h"

namespace Corvane::Mox {

class CAudioProperties;

class CSingleAudioTrackReader : public CContainerReader {
 public:
  // The file's name.
  CString* GetFileIdentifier(CString* name) const override { return GetContextFileName(name); }
  int GetAudioMediaCount() const override;
  CAudioProperties* GetAudioProperties(int track) const override;
  bool IsAudioReady(int) const override { return true; }
  bool WaitForMedia(int) const override { return true; }

  using CContainerReader::ReadAudioData;
  Result ReadAudioData(int track, CContainerDataReference* reference, CDataReference*& data) override;
  Result ResolveAudioData(int track, CContainerDataReference* reference, CStreamDataReference*& data) override;

 protected:
  explicit CSingleAudioTrackReader(unsigned int type) : CContainerReader(type) {}

  // The track's description (borrowed), null until indexing has described it.
  virtual CAudioProperties* GetTrack() const = 0;
  // Why track cannot be read now, or success.
  Result CheckReadable(int track) const;

  CStream* stream_ = nullptr;  // the open file while indexing
};

}  // namespace Corvane::Mox
