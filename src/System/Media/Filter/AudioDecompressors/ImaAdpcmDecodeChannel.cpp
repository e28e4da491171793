#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecodeChannel.h"

#include <algorithm>

namespace Corvane::Mox {

namespace {

const int kStepSizes[89] = {
    7,     8,     9,     10,    11,    12,    13,    14,    16,    17,    19,    21,    23,    25,    28,
    31,    34,    37,    41,    45,    50,    55,    60,    66,    73,    80,    88,    97,    107,   118,
    130,   143,   157,   173,   190,   209,   230,   253,   279,   307,   337,   371,   408,   449,   494,
    544,   598,   658,   724,   796,   876,   963,   1060,  1166,  1282,  1411,  1552,  1707,  1878,  2066,
    2272,  2499,  2749,  3024,  3327,  3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845,  8630,
    9493,  10442, 11487, 12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};

const int kIndexAdjust[16] = {-1, -1, -1, -1, 2, 4, 6, 8, -1, -1, -1, -1, 2, 4, 6, 8};

}  // namespace

CImaAdpcmDecodeChannel::CImaAdpcmDecodeChannel(int channels)
    : CObject(TypeCode), channels_(channels), index_(0), sample_(0), out_(nullptr) {}

void CImaAdpcmDecodeChannel::Start(int sample, int index, short* out) {
  sample_ = sample;
  index_ = std::clamp(index, 0, MaximumIndex);
  out_ = out;
  *out_ = static_cast<short>(sample_);
  out_ += channels_;
}

void CImaAdpcmDecodeChannel::Put(int nibble) {
  *out_ = static_cast<short>(Expand(nibble, sample_, index_));
  out_ += channels_;
}

int CImaAdpcmDecodeChannel::Expand(int nibble, int& predictor, int& index) {
  const int step = kStepSizes[index];
  // The difference is built from shifted steps, one per magnitude bit, so
  // that every decoder rounds the same way.
  int difference = step >> 3;
  if (nibble & 4) difference += step;
  if (nibble & 2) difference += step >> 1;
  if (nibble & 1) difference += step >> 2;
  predictor = std::clamp(nibble & 8 ? predictor - difference : predictor + difference, -32768, 32767);
  index = std::clamp(index + kIndexAdjust[nibble & 15], 0, MaximumIndex);
  return predictor;
}

}  // namespace Corvane::Mox
