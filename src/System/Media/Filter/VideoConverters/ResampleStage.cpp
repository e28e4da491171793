#include "System/Media/Filter/VideoConverters/ResampleStage.h"

#include <algorithm>
#include <cmath>

#include "System/FourString.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/StageGroups.h"

namespace Corvane::Mox {

namespace {

constexpr int kSubsamplings[] = {0x11, 0x12, 0x21, 0x22, 0x41, 0x42, 0x44};

bool IsKnownSubsampling(int subsampling) {
  return std::find(std::begin(kSubsamplings), std::end(kSubsamplings), subsampling) != std::end(kSubsamplings);
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
  Taps taps;
  const double ratio = static_cast<double>(outputFactor) / inputFactor;  // input samples per output sample
  const double support = std::max(1.0, ratio);
  taps.width = static_cast<int>(std::ceil(support)) * 2 + 1;
  taps.first.resize(outputCount);
  taps.weights.assign(static_cast<size_t>(outputCount) * taps.width, 0.0f);
  for (int o = 0; o < outputCount; ++o) {
    const double position = centred ? (o + 0.5) * ratio - 0.5 : o * ratio;
    const int first = static_cast<int>(std::floor(position - support)) + 1;
    taps.first[o] = first;
    double total = 0;
    float* w = &taps.weights[static_cast<size_t>(o) * taps.width];
    for (int k = 0; k < taps.width; ++k) {
      const double weight = std::max(0.0, 1.0 - std::abs(first + k - position) / support);
      w[k] = static_cast<float>(weight);
      total += weight;
    }
    for (int k = 0; k < taps.width; ++k) w[k] = static_cast<float>(w[k] / total);
  }
  (void)inputCount;
  return taps;
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

void CResampleStage::ResampleChromaLine(const SamplePlanes& input, SamplePlanes& output, int y) const {
  thread_local ChromaScratch scratch;
  const int width = output_->GetWidth(), height = output_->GetHeight();
  const int inW = inputCodec_->GetChromaWidth(width), outW = outputCodec_->GetChromaWidth(width);
  const int inH = (height + inputCodec_->verticalFactor - 1) / inputCodec_->verticalFactor;
  const int capacity = LineCodec::GetSlotCapacity(width);
  ComponentLines& decoded = GetScratch(1, capacity);
  ComponentLines& result = GetScratch(2, capacity);
  const int line = y / outputCodec_->verticalFactor;
  for (auto& sums : scratch.sums) sums.assign(static_cast<size_t>(inW) + 1, 0.0f);
  const float* vw = &vertical_.weights[static_cast<size_t>(line) * vertical_.width];
  for (int k = 0; k < vertical_.width; ++k) {
    if (vw[k] == 0.0f) continue;
    const int source = std::clamp(vertical_.first[line] + k, 0, inH - 1);
    inputCodec_->Decode(input, width, source * inputCodec_->verticalFactor, decoded, LineCodec::Chroma);
    for (int c = 0; c < 2; ++c) {
      float* sums = scratch.sums[c].data();
      const uint16_t* values = decoded.slot[1 + c];
      for (int x = 0; x < inW; ++x) sums[x] += vw[k] * values[x];
    }
  }
  const float maximum = static_cast<float>(outputCodec_->GetMaximum());
  for (int c = 0; c < 2; ++c) {
    const float* sums = scratch.sums[c].data();
    uint16_t* out = result.slot[1 + c];
    for (int x = 0; x < outW; ++x) {
      const float* hw = &horizontal_.weights[static_cast<size_t>(x) * horizontal_.width];
      float v = 0.5f;
      for (int k = 0; k < horizontal_.width; ++k) v += hw[k] * sums[std::clamp(horizontal_.first[x] + k, 0, inW - 1)];
      out[x] = static_cast<uint16_t>(std::min(v, maximum));
    }
  }
  outputCodec_->Encode(result, width, y, output, LineCodec::Chroma);
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
    if (y % outputCodec_->verticalFactor == 0) ResampleChromaLine(input, output, y);
  }
}

}  // namespace Corvane::Mox
