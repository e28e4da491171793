#include "System/Media/Filter/VideoConverters/TwistStage.h"

#include <algorithm>
#include <cmath>

#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/StageMap.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace {

// One output component of a line: m · (s0, s1, s2, 1), rounded and clamped.
// Plain loops over contiguous arrays that the compiler vectorises.
MOX_VECTOR_CLONES void MixLine(const float* row, const uint16_t* s0, const uint16_t* s1, const uint16_t* s2, uint16_t* out, int width,
             float maximum) {
  for (int x = 0; x < width; ++x) {
    const float v = row[0] * s0[x] + row[1] * s1[x] + row[2] * s2[x] + row[3] + 0.5f;
    out[x] = static_cast<uint16_t>(std::min(std::max(v, 0.0f), maximum));
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
  return Result();
}

void CTwistStage::TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  const int width = output_->GetWidth();
  const int capacity = LineCodec::GetSlotCapacity(width);
  ComponentLines& in = GetScratch(0, capacity);
  ComponentLines& out = GetScratch(1, capacity);
  const float maximum = static_cast<float>(outputCodec_->GetMaximum());
  for (int y = firstLine; y < lastLine; ++y) {
    inputCodec_->Decode(input, width, y, in);
    for (int c = 0; c < 3; ++c) MixLine(matrix_.m + c * 4, in.slot[0], in.slot[1], in.slot[2], out.slot[c], width, maximum);
    if (inputCodec_->alpha) std::copy(in.slot[3], in.slot[3] + width, out.slot[3]);
    FillAlpha(out, width);
    outputCodec_->Encode(out, width, y, output);
  }
}

}  // namespace Corvane::Mox
