#include "System/Media/Filter/VideoConverters/ConvertStage.h"

#include <algorithm>
#include <cmath>

#include "System/Media/Filter/VideoConverters/ColorMatrix.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/StageGroups.h"
#include "System/Media/Filter/VideoConverters/VectorTargets.h"

namespace Corvane::Mox {

namespace {

bool IsConvertDepth(int depth) { return depth == 8 || depth == 10 || depth == 12 || depth == 16; }

// The value a component takes at another depth within the same range.
uint16_t Rescale(unsigned value, int from, int to, int roundingMode) {
  if (to >= from) return static_cast<uint16_t>(value << (to - from));
  const int shift = from - to;
  const unsigned maximum = (1u << to) - 1;
  if (roundingMode == 3) return static_cast<uint16_t>(std::min(maximum, (value + (1u << (shift - 1))) >> shift));
  return static_cast<uint16_t>(value >> shift);
}

// The value through the gains and offsets of two ranges.
uint16_t Remap(unsigned value, float gain, float offset, int maximum, int roundingMode) {
  const float scaled = static_cast<float>(value) * gain + offset;
  const float rounded = roundingMode == 3 ? std::floor(scaled + 0.5f) : std::floor(scaled + 1e-3f);
  return static_cast<uint16_t>(std::clamp(rounded, 0.0f, static_cast<float>(maximum)));
}

// values = (values & mask) << shift, or >> -shift: what the table holds
// when only the depth changes and the low bits are dropped or zero. The
// compiler vectorises these; a table lookup per sample it does not.
MOX_VECTOR_CLONES void ShiftLeft(uint16_t* values, int count, unsigned mask, int shift) {
  for (int x = 0; x < count; ++x) values[x] = static_cast<uint16_t>((values[x] & mask) << shift);
}

MOX_VECTOR_CLONES void ShiftRight(uint16_t* values, int count, unsigned mask, int shift) {
  for (int x = 0; x < count; ++x) values[x] = static_cast<uint16_t>((values[x] & mask) >> shift);
}

// The shift the table amounts to (positive left, negative right), or
// kNoShift when it is not one.
constexpr int kNoShift = 100;

int FindShift(const std::vector<uint16_t>& table, int from, int to) {
  const int shift = to - from;
  for (size_t v = 0; v < table.size(); ++v) {
    const size_t expected = shift >= 0 ? v << shift : v >> -shift;
    if (table[v] != expected) return kNoShift;
  }
  return shift;
}

}  // namespace

CConvertStage::CConvertStage() : CStage(StageType, GetStageMap()) {}

const std::vector<CStage::Row>& CConvertStage::GetStageMap() {
  static const std::vector<Row> map = [] {
    std::vector<Row> rows;
    auto F = [](const char(&code)[5]) { return FourCC(code); };
    auto any = [](unsigned int, unsigned int) { return true; };
#define MOX_CONVERT_GROUP(...) AddGroupRows(rows, {__VA_ARGS__}, any);
#include "System/Media/Filter/VideoConverters/ConvertStageGroups.def"
#undef MOX_CONVERT_GROUP
    (void)F;
    return rows;
  }();
  return map;
}

bool CConvertStage::Offers(const Row& row, const CVideoProperties*) const {
  return PixelFormatDescriptor::GetBitDepth(row.output.format) == GetTarget().bitDepth;
}

void CConvertStage::ApplyTarget(CVideoProperties* output) const { output->SetVideoRange(GetTarget().videoRange); }

Result CConvertStage::Prepare() {
  const int to = outputCodec_->bitDepth;
  if (!IsConvertDepth(to)) return ResultNotSupported("Unexpected bit-depth 0x%x", to);
  const int from = inputCodec_->bitDepth;
  const int matrix = input_->GetMatrixCoefficients();
  const int rounding = GetTarget().roundingMode;
  const ColorMatrix4 in = ColorMatrix4::Normalise(matrix, input_->GetVideoRange(), from);
  const ColorMatrix4 out = ColorMatrix4::Denormalise(matrix, output_->GetVideoRange(), to);
  const bool sameRange = input_->GetVideoRange() == output_->GetVideoRange();
  for (int slot = 0; slot < 4; ++slot) {
    std::vector<uint16_t>& table = table_[slot];
    table.resize(static_cast<size_t>(1) << from);
    const int c = std::min(slot, 2);
    // Alpha has no range; equal ranges change only the depth.
    const bool shiftOnly = slot == 3 || sameRange;
    const float gain = in.m[c * 5] * out.m[c * 5];
    const float offset = in.m[c * 4 + 3] * out.m[c * 5] + out.m[c * 4 + 3];
    for (size_t v = 0; v < table.size(); ++v)
      table[v] = shiftOnly ? Rescale(static_cast<unsigned>(v), from, to, rounding)
                           : Remap(static_cast<unsigned>(v), gain, offset, (1 << to) - 1, rounding);
    shift_[slot] = FindShift(table, from, to);
  }
  return Result();
}

void CConvertStage::ProcessLine(ComponentLines& lines, ComponentLines&, int) const {
  const int width = output_->GetWidth();
  const int widths[4] = {width, inputCodec_->GetChromaWidth(width), inputCodec_->GetChromaWidth(width), width};
  const unsigned mask = (1u << (inputCodec_->bitDepth)) - 1;
  for (int slot = 0; slot < 4; ++slot) {
    if (slot == 3 && !inputCodec_->alpha) continue;
    uint16_t* values = lines.slot[slot];
    const int shift = shift_[slot];
    if (shift == kNoShift) {
      const uint16_t* table = table_[slot].data();
      for (int x = 0; x < widths[slot]; ++x) values[x] = table[values[x] & mask];
    } else if (shift >= 0) {
      ShiftLeft(values, widths[slot], mask, shift);
    } else {
      ShiftRight(values, widths[slot], mask, -shift);
    }
  }
  FillAlpha(lines, width);
}

void CConvertStage::TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  const int capacity = LineCodec::GetSlotCapacity(output_->GetWidth());
  ComponentLines lines = GetScratch(0, capacity), spare = GetScratch(1, capacity);
  for (int y = firstLine; y < lastLine; ++y) {
    ProduceLine(input, y, lines, spare);
    EncodeLine(lines, y, output);
  }
}

}  // namespace Corvane::Mox
