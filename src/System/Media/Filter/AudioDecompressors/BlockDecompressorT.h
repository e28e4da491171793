#pragma once
// CBlockDecompressorT<Decoder>: a decompressor of a WAVE block codec whose
// decoder is built from the stream's format structure and turns whole blocks
// of block-alignment bytes into a fixed number of frames each (Microsoft
// ADPCM, IMA ADPCM).

#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

template <class Decoder>
class CBlockDecompressorT : public CPcmDecompressor {
 public:
  ~CBlockDecompressorT() override { Finalize(); }

 protected:
  CBlockDecompressorT(unsigned int componentCode, const Row* rows) : CPcmDecompressor(componentCode, rows) {}

  Result Initialize() override {
    Finalize();
    format_ = CreateWindowsFormat();
    if (!format_) return ResultNullPointer("input properties not set");
    decoder_ = new Decoder(format_);
    return Result();
  }
  Result Finalize() override {
    decoder_ = nullptr;
    format_ = nullptr;
    return Result();
  }
  long long GetOutputFrames(int length) const override {
    const int block = format_ ? format_->GetBlockAlignment() : 0;
    return decoder_ && block > 0 ? static_cast<long long>(length / block) * decoder_->GetFramesPerBlock() : 0;
  }
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override {
    frames = 0;
    if (!decoder_) return ResultNullPointer("the decoder is not initialised");
    int count = 0;
    Result decoded = decoder_->Decode(out, &count, in, length);
    frames = count;
    return decoded;
  }

 private:
  RObject<CWindowsAudioFormat> format_;
  RObject<Decoder> decoder_;
};

}  // namespace Corvane::Mox
