#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecompressor.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730011u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CImaAdpcmDecompressor::CImaAdpcmDecompressor() : CBlockDecompressorT(ComponentCode, kRows) {}

}  // namespace Corvane::Mox
