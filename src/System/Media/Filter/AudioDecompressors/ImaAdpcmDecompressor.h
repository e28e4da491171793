#pragma once
// CImaAdpcmDecompressor ("IMA "): the decompressor of IMA ADPCM in WAVE
// files, producing 16-bit PCM ("sowt") through CImaAdpcmDecode.

#include "System/Media/Filter/AudioDecompressors/BlockDecompressorT.h"
#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecode.h"

namespace Corvane::Mox {

class CImaAdpcmDecompressor : public CBlockDecompressorT<CImaAdpcmDecode> {
 public:
  static constexpr unsigned int ComponentCode = FourCC("IMA ");

  CImaAdpcmDecompressor();
};

}  // namespace Corvane::Mox
