#pragma once
// CMpegAudioHeader: the 4-byte header of an MPEG-1/2/2.5 audio frame (layers
// I to III): version, layer, bit rate, sample rate, channel mode, and the
// frame length and sample count that follow from them.

#include "System/Object.h"

namespace Corvane::Mox {

class CAudioProperties;

class CMpegAudioHeader : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mpgh");
  static constexpr int Size = 4;

  CMpegAudioHeader();

  // Parses 4 bytes; ResultFormatError for a missing sync word or a reserved
  // version, layer, bit rate or sample rate (free format included: it has no
  // frame length).
  Result Parse(const unsigned char* bytes);

  // 1 (MPEG-1), 2 (MPEG-2) or 25 (MPEG-2.5).
  int GetVersion() const { return version_; }
  int GetLayer() const { return layer_; }
  int GetBitRate() const { return bitRate_; }
  int GetSampleRate() const { return sampleRate_; }
  int GetChannels() const { return channels_; }
  // Bytes in the frame, header and padding included.
  int GetFrameLength() const { return frameLength_; }
  int GetSamplesPerFrame() const { return samplesPerFrame_; }

  // Format "mpga", sample rate, channels, bit rate and frames per packet.
  Result GetProperties(CAudioProperties* properties) const;

 private:
  int version_;
  int layer_;
  int bitRate_;
  int sampleRate_;
  int channels_;
  int frameLength_;
  int samplesPerFrame_;
};

}  // namespace Corvane::Mox
