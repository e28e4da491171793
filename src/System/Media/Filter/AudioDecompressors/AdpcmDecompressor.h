#pragma once
// CAdpcmDecompressor ("DPCM"): the decompressor of Microsoft ADPCM,
// producing 16-bit PCM ("sowt") through CAdpcmDecode.

#include "System/Media/Filter/AudioDecompressors/AdpcmDecode.h"
#include "System/Media/Filter/AudioDecompressors/BlockDecompressorT.h"

namespace Corvane::Mox {

class CAdpcmDecompressor : public CBlockDecompressorT<CAdpcmDecode> {
 public:
  static constexpr unsigned int ComponentCode = FourCC("DPCM");

  CAdpcmDecompressor();
};

}  // namespace Corvane::Mox
