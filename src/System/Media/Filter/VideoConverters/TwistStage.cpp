#include "System/Media/Filter/VideoConverters/TwistStage.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/StageMap.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace {

// The three output components of a line: m · (s0, s1, s2, 1), rounded and
// clamped. One pass converts each input once; the compiler vectorises it.
MOX_VECTOR_CLONES void MixLine(const float* __restrict__ m, const uint16_t* __restrict__ s0, const uint16_t* __restrict__ s1,
                               const uint16_t* __restrict__ s2,
                               uint16_t* __restrict__ o0, uint16_t* __restrict__ o1, uint16_t* __restrict__ o2, int width,
                               float maximum) {
  for (int x = 0; x < width; ++x) {
    const float a = s0[x], b = s1[x], c = s2[x];
    const float v0 = m[0] * a + m[1] * b + m[2] * c + m[3] + 0.5f;
    const float v1 = m[4] * a + m[5] * b + m[6] * c + m[7] + 0.5f;
    const float v2 = m[8] * a + m[9] * b + m[10] * c + m[11] + 0.5f;
    o0[x] = static_cast<uint16_t>(std::min(std::max(v0, 0.0f), maximum));
    o1[x] = static_cast<uint16_t>(std::min(std::max(v1, 0.0f), maximum));
    o2[x] = static_cast<uint16_t>(std::min(std::max(v2, 0.0f), maximum));
  }
}

}  // namespace

CTwistStage::CTwistStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CTwistStage::GetStageMap() {
  static const std::vector<Row> map = MOX_STAGE_MAP(TwistStageMap)
#include "System/Media/Filter/VideoConverters/TwistStageMap.def"
  MOX_STAGE_MAP_END;
  return map;
}

int CTwistStage::ResolveMatrix(const CVideoProperties* properties) {
  const int matrix = properties->GetMatrixCoefficients();
  if (PixelFormatDescriptor::IsRgb(properties->GetFormat())) return 0;
  if (matrix != 2) return matrix;
  const int implied = CVideoProperties::GetDefaultColorSpace(properties->GetHeight()).matrix;
  return implied != 2 ? implied : 1;
}

bool CTwistStage::Offers(const Row& row, const CVideoProperties*) const {
  // Only matrices with a linear form can be reached.
  ColorMatrix4 unused;
  const int target = GetTarget().matrix;
  if (target != 2 && !ColorMatrix4::FromRgb(target, unused)) return false;
  // RGB outputs carry the identity matrix; any other target is YUV.
  return target == 0 || !PixelFormatDescriptor::IsRgb(row.output.format);
}

void CTwistStage::ApplyTarget(CVideoProperties* output) const {
  output->SetMatrixCoefficients(static_cast<unsigned char>(GetTarget().matrix));
  output->SetVideoRange(GetTarget().videoRange);
}

Result CTwistStage::Prepare() {
  const int from = ResolveMatrix(input_), to = ResolveMatrix(output_);
  if (!ColorMatrix4::Compose(from, input_->GetVideoRange(), inputCodec_->bitDepth, to, output_->GetVideoRange(),
                             outputCodec_->bitDepth, matrix_))
    return ResultNotSupported("unsupported matrix coefficients %d->%d", from, to);
  packedMix_ = PackedMix::Find(*outputCodec_);
  return Result();
}

void CTwistStage::ProcessLine(ComponentLines& lines, ComponentLines& spare, int) const {
  const int width = output_->GetWidth();
  const float maximum = static_cast<float>(outputCodec_->GetMaximum());
  MixLine(matrix_.m, lines.slot[0], lines.slot[1], lines.slot[2], spare.slot[0], spare.slot[1], spare.slot[2], width,
          maximum);
  // The mixed components move over; alpha stays where it was decoded.
  for (int slot = 0; slot < 3; ++slot) std::swap(lines.slot[slot], spare.slot[slot]);
  FillAlpha(lines, width);
}

void CTwistStage::FinishLine(ComponentLines& lines, ComponentLines& spare, int y, SamplePlanes& output) const {
  if (!packedMix_) return CStage::FinishLine(lines, spare, y, output);
  const int width = output_->GetWidth();
  FillAlpha(lines, width);
  packedMix_.Run(matrix_.m, lines.slot[0], lines.slot[1], lines.slot[2], lines.slot[3],
                 output.data[0] + static_cast<long long>(y) * output.stride[0], width,
                 static_cast<float>(outputCodec_->GetMaximum()));
}

void CTwistStage::TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  const int capacity = LineCodec::GetSlotCapacity(output_->GetWidth());
  ComponentLines lines = GetScratch(0, capacity), spare = GetScratch(1, capacity);
  for (int y = firstLine; y < lastLine; ++y) {
    inputCodec_->Decode(input, output_->GetWidth(), y, lines);
    FinishLine(lines, spare, y, output);
  }
}

}  // namespace Corvane::Mox
