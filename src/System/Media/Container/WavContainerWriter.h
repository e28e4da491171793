#pragma once
// CWavContainerWriter ("wav ", extension "wav"): writes one PCM or G.711
// audio track as a WAVE file. The headers go first with a "JUNK" chunk
// reserved where "ds64" belongs; samples are written straight through; at
// EndIndex the sizes are patched, and a file that outgrew 32-bit sizes
// becomes RF64 in place (the "JUNK" chunk turns into "ds64"). ForceRf64
// writes RF64 from the start, ExtensibleFormat the extensible format,
// IncludeBroadcastExtension a "bext" chunk (with the iXML time code the
// track carries). Metadata a track brings from the WAV it was read from
// travels on unread: the ADM document with its channel allocation ("axml",
// "chna") and Dolby metadata ("dbmd").

#include "System/Media/Container/ContainerWriter.h"

namespace Corvane::Mox {

class CBinaryWriter;
class CByteArray;
class CWaveBroadcastExtension;
class CWindowsAudioFormat;

class CWavContainerWriter : public CContainerWriter {
 public:
  static constexpr unsigned int ComponentCode = FourCC("wav ");
  // RIFF sizes at or above this value do not fit a 32-bit size field.
  static constexpr long long DefaultRf64Threshold = 0xFFFFFFFFll;

  CWavContainerWriter();
  ~CWavContainerWriter() override;

  const char* GetDefaultExtension() const override { return "wav"; }
  // The output's file name.
  CString* GetFileIdentifier(CString* name) const override { return GetOutputFileName(name); }
  // The formats a WAVE format tag expresses, and Dolby E (written as PCM).
  CFormatList* GetAudioFormats() const override;
  int GetAudioMediaCount() const override;
  CAudioProperties* GetAudioProperties(int track) const override;
  // One track; formats without a WAVE tag are refused here, naming the
  // format and the remedy.
  Result AddAudioMedia(CAudioProperties* properties) override;
  // Opens the output and writes every header.
  Result BeginIndex() override;
  // Writes the sample's bytes as they are.
  Result WriteAudioSample(int track, CAudioSample* sample) override;
  // Pads, patches the sizes (switching to RF64 when needed) and closes.
  Result EndIndex() override;
  CProperties* GetDocumentation() const;

  // Whether the finished file is RF64.
  bool IsRf64() const { return rf64_; }

 private:
  bool GetBoolSetting(const PropertyName& name) const;
  Result CreateFormat(CWindowsAudioFormat*& format) const;
  // The "bext" chunk from the track's Broadcast Wave properties, then the
  // WavMetadata settings.
  Result CreateBroadcastExtension(CWaveBroadcastExtension*& extension) const;
  Result WriteHeaders();
  // The iXML, ADM and Dolby chunks of the track's extensions.
  Result WriteCarriedMetadata();
  Result WriteChunk(unsigned int id, CByteArray* payload);
  Result PatchRiff(long long fileSize, long long dataSize);
  Result PatchRf64(long long fileSize, long long dataSize);
  void CloseOutput();

  RObject<CAudioProperties> properties_;
  RObject<CStream> stream_;
  RObject<CBinaryWriter> writer_;
  long long junkPosition_;
  long long factPosition_;
  long long dataPosition_;
  long long dataSize_;
  bool rf64_;
};

}  // namespace Corvane::Mox
