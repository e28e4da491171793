#pragma once
// CWavContainerReader ("wav "): a RIFF or RF64 WAVE file as one audio track.
// Indexing reads the chunk list; samples are computed from the essence
// position and size, never queued: PCM in one-second samples, block codecs
// a block per sample, MPEG audio a frame per sample. The Broadcast Wave,
// iXML, ADM and Dolby chunks become extensions of the track description.

#include "System/Media/Container/SingleAudioTrackReader.h"

namespace Corvane::Mox {

class CAudioReaderProperties;
class CBinaryReader;
class CWaveList;
class CWindowsAudioFormat;

class CWavContainerReader : public CSingleAudioTrackReader {
 public:
  static constexpr unsigned int ComponentCode = FourCC("wav ");

  CWavContainerReader();
  ~CWavContainerReader() override;

  // 128 for "RIFF" or "RF64", 4 bytes, "WAVE".
  int Validate(CStream* stream) override;
  Result BeginIndex() override;
  // Releases the stream.
  Result EndIndex() override;

  // The audio formats the reader hands out: the block codecs, PCM and
  // float of every width and byte order, MPEG audio.
  CFormatList* GetAudioFormats() const override;

  Result ReadAudioSample(int track, CAudioSample*& sample) override;
  CProperties* GetDocumentation() const override;

  // Runs the channel-coding analyzer ("m773") over the first PCM samples
  // and records its findings in the track description.
  Result AnalyzeChannelCoding();
  Result ReadPcmAudioSample(CAudioSample*& sample);
  Result ReadAdpcmAudioSample(CAudioSample*& sample);
  Result ReadMpegAudioSample(CAudioSample*& sample);

  // Track description from a WAVEFORMAT structure, as the container's word.
  static Result SetProperties(CAudioReaderProperties* properties, CWindowsAudioFormat* format);

 protected:
  CAudioProperties* GetTrack() const override;

 private:
  enum class Kind { None, Pcm, Block, Mpeg };

  Result ReadChunks(CWaveList*& list);
  Result DescribeTrack(CWaveList* list);
  // Essence size of the "data" chunk, from "ds64" when the header says so,
  // cut to what the file holds.
  Result GetDataSize(CWaveList* list, long long& size) const;
  Result DescribeEssence(CWaveList* list);
  Result DescribeMpeg(CWaveList* list);
  void AttachExtensions(CWaveList* list);
  // A new sample of count frames at position, length bytes.
  CAudioSample* CreateSample(long long count, long long position, long long length) const;
  void Close();

  CBinaryReader* reader_;
  CAudioReaderProperties* properties_;
  Kind kind_;
  long long essenceStart_;
  long long essenceEnd_;
  long long frames_;
  long long delivered_;
};

}  // namespace Corvane::Mox
