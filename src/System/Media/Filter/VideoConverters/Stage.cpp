#include "System/Media/Filter/VideoConverters/Stage.h"

#include <algorithm>
#include <cstring>

#include "System/FourString.h"
#include "System/Media/DataReference.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Video/PlaneLayout.h"

namespace Corvane::Mox {

namespace {

struct ScratchLines {
  std::vector<uint16_t> storage;
  ComponentLines lines;
};

bool SamePlane(const PlaneLayout::Plane& a, const PlaneLayout::Plane& b) {
  return std::strcmp(a.components, b.components) == 0 && a.blockWidth == b.blockWidth &&
         a.blockBytes == b.blockBytes && a.verticalDivisor == b.verticalDivisor;
}

}  // namespace

Result CStage::Buffer::GetSamplePlanes(CDataReference* reference, const CVideoProperties* properties, bool bottomUp,
                                       SamplePlanes& planes) {
  planes = SamplePlanes();
  if (!reference || !properties) return ResultArgumentNull();
  if (reference->IsType(CPixelDataReference::TypeCode))
    return static_cast<CPixelDataReference*>(reference)->GetSamplePlanes(properties->GetFormat(), bottomUp, planes);
  const PlaneLayout* layout = PlaneLayout::Find(properties->GetFormat());
  if (!layout) return ResultNotSupported("unknown format %s", FourString(properties->GetFormat()).GetChars());
  const int width = properties->GetWidth(), height = properties->GetHeight();
  unsigned char* data = reference->GetData();
  if (!data) return ResultNullPointer();
  long long offset = 0;
  for (int i = 0; i < layout->planeCount; ++i) {
    const int stride = layout->GetStride(i, width);
    const int lines = layout->GetPlaneHeight(i, height);
    const long long size = static_cast<long long>(stride) * lines;
    if (offset + size > reference->GetLength()) return ResultBufferTooSmall();
    planes.data[i] = data + offset + (bottomUp ? size - stride : 0);
    planes.stride[i] = bottomUp ? -stride : stride;
    planes.height[i] = lines;
    offset += size;
  }
  planes.count = layout->planeCount;
  return Result();
}

CStage::CStage(unsigned int stageType, const std::vector<Row>& map)
    : CObject(TypeCode), stageType_(stageType), map_(map) {}

CStage::~CStage() = default;

bool CStage::NeedsNeighbourLines() const { return !inputCodec_ || inputCodec_->NeedsNeighbourLines(); }

bool CStage::Offers(const Row&, const CVideoProperties*) const { return true; }

void CStage::ApplyTarget(CVideoProperties*) const {}

CList<CVideoProperties>* CStage::GetOutputProperties(const CVideoProperties* input) const {
  auto* outputs = new CList<CVideoProperties>();
  const PixelFormatDescriptor from = PixelFormatDescriptor::Resolve(input);
  if (!LineCodec::Find(from.format)) return outputs;
  for (const Row& row : map_) {
    if (!row.input.Accepts(from) || !LineCodec::Find(row.output.format) || !Offers(row, input)) continue;
    RObject<CVideoProperties> output(new CVideoProperties(input));
    output->SetFormat(row.output.format);
    output->SetBitDepth(PixelFormatDescriptor::GetBitDepth(row.output.format));
    output->SetSubsampling(PixelFormatDescriptor::GetSubsampling(row.output.format));
    output->SetMatrixCoefficients(row.output.matrix == 2 ? from.matrix : row.output.matrix);
    ApplyTarget(output);
    outputs->Add(output);
  }
  return outputs;
}

Result CStage::Begin(const CVideoProperties* input, const CVideoProperties* output) {
  if (!input || !output) return ResultArgumentNull();
  const PixelFormatDescriptor from = PixelFormatDescriptor::Resolve(input);
  const PixelFormatDescriptor to = PixelFormatDescriptor::Resolve(output);
  const bool mapped = std::any_of(map_.begin(), map_.end(), [&](const Row& row) {
    return row.input.Accepts(from) && row.output.format == to.format;
  });
  inputCodec_ = LineCodec::Find(from.format);
  outputCodec_ = LineCodec::Find(to.format);
  if (!mapped || !inputCodec_ || !outputCodec_)
    return ResultNotSupported("Unexpected input/output: '%s'/'%s'", FourString(input->GetFormat()).GetChars(),
                              FourString(output->GetFormat()).GetChars());
  input_ = new CVideoProperties(input);
  output_ = new CVideoProperties(output);
  FindCopyablePlanes();
  return Prepare();
}

Result CStage::End() {
  input_ = nullptr;
  output_ = nullptr;
  return Result();
}

void CStage::FindCopyablePlanes() {
  copiedSlots_ = 0;
  std::fill(std::begin(copyFrom_), std::end(copyFrom_), -1);
  if (inputCodec_->kind != LineCodec::Regular || outputCodec_->kind != LineCodec::Regular || inputCodec_->bitDepth != outputCodec_->bitDepth ||
      inputCodec_->bigEndian != outputCodec_->bigEndian)
    return;
  const PlaneLayout* in = PlaneLayout::Find(inputCodec_->format);
  const PlaneLayout* out = PlaneLayout::Find(outputCodec_->format);
  for (int p = 0; p < out->planeCount; ++p)
    for (int q = 0; q < in->planeCount; ++q)
      if (SamePlane(out->planes[p], in->planes[q])) {
        copyFrom_[p] = q;
        copiedSlots_ |= outputCodec_->planeSlots[p];
        break;
      }
}

void CStage::CopyPlaneLines(const SamplePlanes& input, SamplePlanes& output, int y) const {
  const PlaneLayout* out = PlaneLayout::Find(outputCodec_->format);
  const int width = output_->GetWidth();
  for (int p = 0; p < out->planeCount; ++p) {
    const int q = copyFrom_[p];
    const int divisor = out->planes[p].verticalDivisor;
    if (q < 0 || y % divisor != 0) continue;
    const int bytes = out->GetStride(p, width);
    const int line = y / divisor;
    std::memcpy(output.data[p] + static_cast<long long>(line) * output.stride[p],
                input.data[q] + static_cast<long long>(line) * input.stride[q],
                std::min(bytes, std::abs(input.stride[q])));
  }
}

void CStage::FillAlpha(ComponentLines& lines, int width) const {
  if (inputCodec_->alpha || !outputCodec_->alpha) return;
  std::fill(lines.slot[3], lines.slot[3] + width, static_cast<uint16_t>(outputCodec_->GetMaximum()));
}

ComponentLines& CStage::GetScratch(int index, int capacity) {
  thread_local ScratchLines scratch[4];
  ScratchLines& s = scratch[index];
  const size_t needed = static_cast<size_t>(capacity) * ComponentLines::SlotCount;
  if (s.storage.size() < needed) {
    s.storage.assign(needed, 0);
    for (int i = 0; i < ComponentLines::SlotCount; ++i) s.lines.slot[i] = s.storage.data() + static_cast<size_t>(i) * capacity;
  }
  return s.lines;
}

void CStage::TransformLines(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  const int width = output_->GetWidth();
  ComponentLines& lines = GetScratch(0, LineCodec::GetSlotCapacity(width));
  const unsigned mask = LineCodec::All & ~copiedSlots_;
  for (int y = firstLine; y < lastLine; ++y) {
    CopyPlaneLines(input, output, y);
    if (mask == 0) continue;
    inputCodec_->Decode(input, width, y, lines, mask);
    FillAlpha(lines, width);
    outputCodec_->Encode(lines, width, y, output, mask);
  }
}

void CStage::ProduceLine(const SamplePlanes& input, int y, ComponentLines& lines, ComponentLines& spare) const {
  inputCodec_->Decode(input, output_->GetWidth(), y, lines);
  ProcessLine(lines, spare, y);
}

void CStage::ProcessLine(ComponentLines& lines, ComponentLines&, int) const { FillAlpha(lines, output_->GetWidth()); }

void CStage::FinishLine(ComponentLines& lines, ComponentLines& spare, int y, SamplePlanes& output) const {
  ProcessLine(lines, spare, y);
  EncodeLine(lines, y, output);
}

void CStage::EncodeLine(const ComponentLines& lines, int y, SamplePlanes& output) const {
  outputCodec_->Encode(lines, output_->GetWidth(), y, output);
}

void CStage::TransformChain(const std::vector<const CStage*>& chain, const SamplePlanes& input, SamplePlanes& output,
                            int firstLine, int lastLine) {
  const CStage* last = chain.back();
  const int capacity = LineCodec::GetSlotCapacity(last->output_->GetWidth());
  ComponentLines lines = GetScratch(0, capacity), spare = GetScratch(1, capacity);
  lastLine = std::min(lastLine, last->output_->GetHeight());
  for (int y = std::max(firstLine, 0); y < lastLine; ++y) {
    chain.front()->ProduceLine(input, y, lines, spare);
    for (size_t i = 1; i + 1 < chain.size(); ++i) chain[i]->ProcessLine(lines, spare, y);
    if (chain.size() > 1) {
      last->FinishLine(lines, spare, y, output);
    } else {
      last->EncodeLine(lines, y, output);
    }
  }
}

Result CStage::Transform(const SamplePlanes& input, SamplePlanes& output, int firstLine, int lastLine) const {
  if (!input_ || !output_) return ResultInvalidOperation("the stage has not begun");
  firstLine = std::max(firstLine, 0);
  lastLine = std::min(lastLine, output_->GetHeight());
  if (firstLine < lastLine) TransformLines(input, output, firstLine, lastLine);
  return Result();
}

Result CStage::Transform(CPixelDataReference* input, CPixelDataReference* output) const {
  if (!input_ || !output_) return ResultInvalidOperation("the stage has not begun");
  SamplePlanes in, out;
  Result got = Buffer::GetSamplePlanes(input, input_, false, in);
  if (got.Failed()) return got;
  got = Buffer::GetSamplePlanes(output, output_, false, out);
  if (got.Failed()) return got;
  return Transform(in, out, 0, output_->GetHeight());
}

}  // namespace Corvane::Mox
