#include "System/Media/Filter/AudioDecompressors/AdpcmDecompressor.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730002u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CAdpcmDecompressor::CAdpcmDecompressor() : CBlockDecompressorT(ComponentCode, kRows) {}

}  // namespace Corvane::Mox
