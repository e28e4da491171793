#pragma once
// CPcmDecompressor: the common frame of the decompressors that turn one
// compressed audio buffer into 16-bit little-endian PCM ("sowt") in one call:
// their conversions are a table of input codes to "sowt"; Decompress locks
// the input, makes an output sample large enough for what the buffer can
// decode to, and lets the codec fill it.

#include "System/Media/Filter/Codecs.h"

namespace Corvane::Mox {

class CWindowsAudioFormat;

class CPcmDecompressor : public CAudioDecompressor {
 public:
  const Row* GetConfigurationTable() const override { return rows_; }
  using CAudioDecompressor::CreateOutputProperties;
  Result CreateOutputProperties(unsigned int format, CAudioProperties*& properties) const override;
  using CAudioDecompressor::Decompress;
  Result Decompress(CAudioSample* in, CAudioSample*& out) override;

 protected:
  // rows: {input, "sowt"} pairs ended by a zero row, in static storage.
  CPcmDecompressor(unsigned int componentCode, const Row* rows) : CAudioDecompressor(componentCode), rows_(rows) {}

  // The most frames `length` input bytes can decode to.
  virtual long long GetOutputFrames(int length) const = 0;
  // Decodes length bytes; frames receives the frames written.
  virtual Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) = 0;

  // The WAVE format structure of the input: the decoder configuration the
  // reader attached, or one made from the description (acquired; null when
  // there is no input).
  CWindowsAudioFormat* CreateWindowsFormat() const;
  int GetInputChannels() const;

 private:
  const Row* rows_;
};

}  // namespace Corvane::Mox
