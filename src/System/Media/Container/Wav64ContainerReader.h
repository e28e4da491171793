#pragma once
// CWav64ContainerReader ("wv64"): a Sony Wave64 file (GUID-identified chunks
// with 64-bit sizes, each padded to 8 bytes) as one PCM or float audio
// track, delivered in one-second samples by reference.

#include "System/Guid.h"
#include "System/Media/Container/SingleAudioTrackReader.h"

namespace Corvane::Mox {

class CAudioProperties;
class CBinaryReader;
class CWindowsAudioFormat;

class CWav64ContainerReader : public CSingleAudioTrackReader {
 public:
  static constexpr unsigned int ComponentCode = FourCC("wv64");

  // The published Wave64 chunk GUIDs.
  static const Guid riff;
  static const Guid wave;
  static const Guid fmt;
  static const Guid data;
  static const Guid bext;

  CWav64ContainerReader();
  ~CWav64ContainerReader() override;

  // 128 for the "riff" GUID, 8 bytes, the "wave" GUID.
  int Validate(CStream* stream) override;
  Result BeginIndex() override;
  Result EndIndex() override;

  // The PCM and float formats of the widths the reader takes.
  CFormatList* GetAudioFormats() const override;

  Result ReadAudioSample(int track, CAudioSample*& sample) override;
  CProperties* GetDocumentation() const override;

  // Reads a "bext" payload of `size` bytes and attaches it to the track.
  Result ReadBroadcastAudioExtension(CBinaryReader* reader, long long size);

 protected:
  CAudioProperties* GetTrack() const override;

 private:
  Result ReadHeader();
  // Walks the chunks up to "data"; format receives the "fmt " structure.
  Result ReadChunks(CWindowsAudioFormat*& format, long long& dataSize);
  Result DescribeTrack(CWindowsAudioFormat* format, long long dataSize);
  void Close();

  CBinaryReader* reader_;
  CAudioProperties* properties_;
  long long essenceStart_;
  long long frames_;
  long long delivered_;
};

}  // namespace Corvane::Mox
