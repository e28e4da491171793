#include "System/Media/Filter/VideoConverters/ResampleStage.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "System/FourString.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/StageGroups.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace {

constexpr int kSubsamplings[] = {0x11, 0x12, 0x21, 0x22, 0x41, 0x42, 0x44};

bool IsKnownSubsampling(int subsampling) {
  return std::find(std::begin(kSubsamplings), std::end(kSubsamplings), subsampling) != std::end(kSubsamplings);
}

// sums += weight × values over one chroma line.
MOX_VECTOR_CLONES void Accumulate(float* sums, const uint16_t* values, float weight, int width) {
  for (int x = 0; x < width; ++x) sums[x] += weight * values[x];
}

// sums = weight × values: the first tap, without clearing the sums first.
MOX_VECTOR_CLONES void Scale(float* sums, const uint16_t* values, float weight, int width) {
  for (int x = 0; x < width; ++x) sums[x] = weight * values[x];
}

struct ChromaScratch {
  std::vector<float> sums[2];
};

}  // namespace

CResampleStage::CResampleStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CResampleStage::GetStageMap() {
  static const std::vector<Row> map = [] {
    std::vector<Row> rows;
    auto F = [](const char(&code)[5]) { return FourCC(code); };
    auto differ = [](unsigned int in, unsigned int out) {
      return PixelFormatDescriptor::GetSubsampling(in) != PixelFormatDescriptor::GetSubsampling(out);
    };
#define MOX_RESAMPLE_GROUP(...) AddGroupRows(rows, {__VA_ARGS__}, differ);
#include "System/Media/Filter/VideoConverters/ResampleStageGroups.def"
#undef MOX_RESAMPLE_GROUP
    (void)F;
    return rows;
  }();
  return map;
}

bool CResampleStage::NeedsNeighbourLines() const {
  return CStage::NeedsNeighbourLines() || !outputCodec_ || inputCodec_->verticalFactor != outputCodec_->verticalFactor;
}

bool CResampleStage::Offers(const Row& row, const CVideoProperties* input) const {
  const int target = GetTarget().subsampling;
  if (PixelFormatDescriptor::GetSubsampling(row.output.format) != target) return false;
  // Identity-matrix pictures are RGB: they are never subsampled.
  return target == 0x11 || PixelFormatDescriptor::Resolve(input).matrix != 0;
}

void CResampleStage::ApplyTarget(CVideoProperties* output) const {
  if (GetTarget().chromaSiting != 0) output->SetChromaSiting(GetTarget().chromaSiting);
}

CResampleStage::Taps CResampleStage::Taps::Build(int outputCount, int inputCount, int outputFactor, int inputFactor,
                                                 bool centred) {
  const double ratio = static_cast<double>(outputFactor) / inputFactor;  // input samples per output sample
  const double support = std::max(1.0, ratio);
  const int span = static_cast<int>(std::ceil(support)) * 2 + 1;
  std::vector<std::vector<std::pair<int, double>>> all(static_cast<size_t>(outputCount));
  size_t width = 1;
  for (int o = 0; o < outputCount; ++o) {
    const double position = centred ? (o + 0.5) * ratio - 0.5 : o * ratio;
    const int first = static_cast<int>(std::floor(position - support)) + 1;
    double total = 0;
    for (int k = 0; k < span; ++k) {
      const double weight = 1.0 - std::abs(first + k - position) / support;
      if (weight <= 1e-9) continue;
      all[o].emplace_back(std::clamp(first + k, 0, inputCount - 1), weight);
      total += weight;
    }
    for (auto& tap : all[o]) tap.second /= total;
    width = std::max(width, all[o].size());
  }
  Taps taps;
  taps.width = static_cast<int>(width);
  taps.index.assign(static_cast<size_t>(outputCount) * width, 0);
  taps.weights.assign(static_cast<size_t>(outputCount) * width, 0.0f);
  for (int o = 0; o < outputCount; ++o)
    for (size_t k = 0; k < all[o].size(); ++k) {
      taps.index[o * width + k] = all[o][k].first;
      taps.weights[o * width + k] = static_cast<float>(all[o][k].second);
    }
  taps.FindRegularInterior(outputCount, outputFactor, inputFactor);
  return taps;
}

bool CResampleStage::Taps::IsRegular(int block, int outputCount) const {
  for (int p = 0; p < period; ++p) {
    const int o = block * period + p;
    if (o >= outputCount) return false;
    for (int k = 0; k < width; ++k) {
      const size_t t = static_cast<size_t>(o) * width + k;
      const size_t r = static_cast<size_t>(p) * width + k;
      if (weights[t] != phase[r] || (phase[r] != 0.0f && index[t] != block * step + offset[r])) return false;
    }
  }
  return true;
}

void CResampleStage::Taps::FindRegularInterior(int outputCount, int outputFactor, int inputFactor) {
  period = std::max(1, inputFactor / outputFactor);
  step = std::max(1, outputFactor / inputFactor);
  const int blocks = outputCount / period;
  begin = end = 0;
  if (blocks < 3) return;
  const int middle = blocks / 2;
  offset.assign(static_cast<size_t>(period) * width, 0);
  phase.assign(static_cast<size_t>(period) * width, 0.0f);
  for (int p = 0; p < period; ++p)
    for (int k = 0; k < width; ++k) {
      const size_t t = static_cast<size_t>(middle * period + p) * width + k;
      offset[static_cast<size_t>(p) * width + k] = weights[t] != 0.0f ? index[t] - middle * step : 0;
      phase[static_cast<size_t>(p) * width + k] = weights[t];
    }
  begin = middle;
  while (begin > 0 && IsRegular(begin - 1, outputCount)) --begin;
  end = middle + 1;
  while (end < blocks && IsRegular(end, outputCount)) ++end;
}

namespace {

// The regular interior with compile-time period, step and taps.
template <int P, int Q, int W>
MOX_VECTOR_CLONES void ApplyRegular(const float* sums, uint16_t* out, const CResampleStage::Taps& taps, float maximum) {
  float w[P][W];
  int d[P][W];
  for (int p = 0; p < P; ++p)
    for (int k = 0; k < W; ++k) {
      w[p][k] = taps.phase[p * W + k];
      d[p][k] = taps.offset[p * W + k];
    }
  for (int j = taps.begin; j < taps.end; ++j)
    for (int p = 0; p < P; ++p) {
      float v = 0.5f;
      for (int k = 0; k < W; ++k) v += w[p][k] * sums[Q * j + d[p][k]];
      out[P * j + p] = static_cast<uint16_t>(std::min(v, maximum));
    }
}

using RegularKernel = void (*)(const float*, uint16_t*, const CResampleStage::Taps&, float);

struct RegularShape {
  int period, step, width;
  RegularKernel kernel;
};

constexpr RegularShape kRegularShapes[] = {
    {1, 1, 1, &ApplyRegular<1, 1, 1>},  // unchanged in this direction
    {2, 1, 2, &ApplyRegular<2, 1, 2>},  // 2:1 up
    {1, 2, 4, &ApplyRegular<1, 2, 4>},  // 2:1 down, centred
    {1, 2, 3, &ApplyRegular<1, 2, 3>},  // 2:1 down, cosited
    {4, 1, 2, &ApplyRegular<4, 1, 2>},  // 4:1 up
};

}  // namespace

void CResampleStage::Taps::Apply(const float* sums, uint16_t* out, int outputCount, float maximum) const {
  auto general = [&](int from, int to) {
    for (int x = from; x < to; ++x) {
      const float* w = &weights[static_cast<size_t>(x) * width];
      const int* i = &index[static_cast<size_t>(x) * width];
      float v = 0.5f;
      for (int k = 0; k < width; ++k) v += w[k] * sums[i[k]];
      out[x] = static_cast<uint16_t>(std::min(v, maximum));
    }
  };
  for (const RegularShape& shape : kRegularShapes) {
    if (shape.period != period || shape.step != step || shape.width != width || begin >= end) continue;
    general(0, begin * period);
    shape.kernel(sums, out, *this, maximum);
    general(end * period, outputCount);
    return;
  }
  general(0, outputCount);
}

Result CResampleStage::Prepare() {
  const int from = inputCodec_->horizontalFactor << 4 | inputCodec_->verticalFactor;
  const int to = outputCodec_->horizontalFactor << 4 | outputCodec_->verticalFactor;
  if (!IsKnownSubsampling(to)) return ResultNotSupported("Unexpected subsampling 0x%x", to);
  if (inputCodec_->rgb || outputCodec_->rgb || inputCodec_->bitDepth != outputCodec_->bitDepth || from == to)
    return ResultNotSupported("unsupported subsampling conversion '%s'->'%s'",
                              FourString(input_->GetFormat()).GetChars(), FourString(output_->GetFormat()).GetChars());
  const int siting = input_->GetChromaSiting();
  const bool centredH = siting != 1 && siting != 3;
  const bool centredV = true;
  const int width = input_->GetWidth(), height = input_->GetHeight();
  const int inW = inputCodec_->GetChromaWidth(width), outW = outputCodec_->GetChromaWidth(width);
  const int inH = (height + inputCodec_->verticalFactor - 1) / inputCodec_->verticalFactor;
  const int outH = (height + outputCodec_->verticalFactor - 1) / outputCodec_->verticalFactor;
  horizontal_ = Taps::Build(outW, inW, outputCodec_->horizontalFactor, inputCodec_->horizontalFactor, centredH);
  vertical_ = Taps::Build(outH, inH, outputCodec_->verticalFactor, inputCodec_->verticalFactor, centredV);
  return Result();
}

void CResampleStage::ResampleChroma(const SamplePlanes& input, int y, ComponentLines& result) const {
  thread_local ChromaScratch scratch;
  const int width = output_->GetWidth();
  const int inW = inputCodec_->GetChromaWidth(width), outW = outputCodec_->GetChromaWidth(width);
  ComponentLines& decoded = GetScratch(2, LineCodec::GetSlotCapacity(width));
  const int line = y / outputCodec_->verticalFactor;
  for (auto& sums : scratch.sums) {
    sums.resize(static_cast<size_t>(inW) + 1);
    sums[inW] = 0.0f;
  }
  const float* vw = &vertical_.weights[static_cast<size_t>(line) * vertical_.width];
  const int* vi = &vertical_.index[static_cast<size_t>(line) * vertical_.width];
  bool first = true;
  for (int k = 0; k < vertical_.width; ++k) {
    if (vw[k] == 0.0f) continue;
    const int source = vi[k];
    inputCodec_->Decode(input, width, source * inputCodec_->verticalFactor, decoded, LineCodec::Chroma);
    for (int c = 0; c < 2; ++c)
      (first ? Scale : Accumulate)(scratch.sums[c].data(), decoded.slot[1 + c], vw[k], inW);
    first = false;
  }
  if (first)
    for (auto& sums : scratch.sums) std::fill(sums.begin(), sums.end(), 0.0f);
  ApplyHorizontal(scratch.sums, result, outW);
}

void CResampleStage::ApplyHorizontal(const std::vector<float> (&sums)[2], ComponentLines& result, int outW) const {
  const float maximum = static_cast<float>(outputCodec_->GetMaximum());
  for (int c = 0; c < 2; ++c) horizontal_.Apply(sums[c].data(), result.slot[1 + c], outW, maximum);
}

void CResampleStage::ProduceLine(const SamplePlanes& input, int y, ComponentLines& lines, ComponentLines&) const {
  const int width = output_->GetWidth();
  inputCodec_->Decode(input, width, y, lines, LineCodec::Luma | LineCodec::Alpha);
  FillAlpha(lines, width);
  if (y % outputCodec_->verticalFactor == 0) ResampleChroma(input, y, lines);
}

void CResampleStage::ProcessLine(ComponentLines& lines, ComponentLines& spare, int y) const {
  // Only the horizontal direction changes (a stage that resamples lines
  // runs first, from its input picture).
  thread_local ChromaScratch scratch;
  const int width = output_->GetWidth();
  FillAlpha(lines, width);
  if (y % outputCodec_->verticalFactor != 0) return;
  const int inW = inputCodec_->GetChromaWidth(width), outW = outputCodec_->GetChromaWidth(width);
  for (int c = 0; c < 2; ++c) {
    scratch.sums[c].resize(static_cast<size_t>(inW) + 1);
    std::copy(lines.slot[1 + c], lines.slot[1 + c] + inW, scratch.sums[c].begin());
    scratch.sums[c][inW] = 0.0f;
  }
  ApplyHorizontal(scratch.sums, spare, outW);
  for (int c = 1; c < 3; ++c) std::swap(lines.slot[c], spare.slot[c]);
}

void CResampleStage::TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  const int width = output_->GetWidth();
  ComponentLines& lines = GetScratch(0, LineCodec::GetSlotCapacity(width));
  const unsigned lumaMask = (LineCodec::Luma | LineCodec::Alpha) & ~GetCopiedSlots();
  for (int y = firstLine; y < lastLine; ++y) {
    CopyPlaneLines(input, output, y);
    if (lumaMask) {
      inputCodec_->Decode(input, width, y, lines, lumaMask);
      FillAlpha(lines, width);
      outputCodec_->Encode(lines, width, y, output, lumaMask);
    }
    if (y % outputCodec_->verticalFactor != 0) continue;
    ResampleChroma(input, y, lines);
    outputCodec_->Encode(lines, width, y, output, LineCodec::Chroma);
  }
}

}  // namespace Corvane::Mox
