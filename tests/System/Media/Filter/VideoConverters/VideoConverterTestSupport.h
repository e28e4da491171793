#pragma once
// Pictures for the video format converter tests: descriptions, random
// pictures written through the line codecs, whole-filter conversions and the
// components of a result read back for comparison.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "System/Collections/List.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/Stage.h"
#include "System/Media/Filter/VideoConverters/VideoFormatConverter.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/PlaneLayout.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "gen/CodeBookProperty.h"

namespace VideoConverterTest {

using namespace Corvane::Mox;
using Settings = CodeBookProperty::VideoFormatConverter;

inline unsigned int Code(const std::string& text) {
  return static_cast<unsigned int>(text[0]) << 24 | static_cast<unsigned int>(text[1]) << 16 |
         static_cast<unsigned int>(text[2]) << 8 | static_cast<unsigned int>(text[3]);
}

inline CVideoProperties* Describe(unsigned int format, int width, int height, int matrix = 1, int range = 1) {
  auto* p = new CVideoProperties();
  p->SetFormat(format);
  p->SetWidth(width);
  p->SetHeight(height);
  p->SetFrameRate(Rational<int>(25, 1));
  p->SetBitDepth(PixelFormatDescriptor::GetBitDepth(format));
  p->SetSubsampling(PixelFormatDescriptor::GetSubsampling(format));
  p->SetMatrixCoefficients(static_cast<unsigned char>(PixelFormatDescriptor::IsRgb(format) ? 0 : matrix));
  p->SetVideoRange(range);
  return p;
}

// Bytes of a picture with planes one after the other at natural strides.
inline size_t NaturalSize(unsigned int format, int width, int height) {
  return static_cast<size_t>(PlaneLayout::Find(format)->GetSampleLength(width, height));
}

inline SamplePlanes NaturalPlanes(unsigned int format, int width, int height, uint8_t* data) {
  const PlaneLayout* layout = PlaneLayout::Find(format);
  SamplePlanes planes;
  planes.count = layout->planeCount;
  for (int i = 0; i < layout->planeCount; ++i) {
    planes.data[i] = data;
    planes.stride[i] = layout->GetStride(i, width);
    planes.height[i] = layout->GetPlaneHeight(i, height);
    data += static_cast<size_t>(planes.stride[i]) * planes.height[i];
  }
  return planes;
}

// The components of a picture, slot by slot, line by line (valid samples only).
struct Components {
  std::vector<uint16_t> slot[4];
};

inline Components Read(unsigned int format, int width, int height, const std::vector<uint8_t>& bytes) {
  const LineCodec* codec = LineCodec::Find(format);
  std::vector<uint8_t> copy(bytes);
  SamplePlanes planes = NaturalPlanes(format, width, height, copy.data());
  const int capacity = LineCodec::GetSlotCapacity(width);
  std::vector<uint16_t> storage(static_cast<size_t>(capacity) * 4);
  ComponentLines lines;
  for (int i = 0; i < 4; ++i) lines.slot[i] = storage.data() + static_cast<size_t>(i) * capacity;
  Components result;
  const int chroma = codec->rgb ? width : codec->GetChromaWidth(width);
  for (int y = 0; y < height; ++y) {
    codec->Decode(planes, width, y, lines);
    const bool chromaLine = codec->rgb || y % codec->verticalFactor == 0;
    const int widths[4] = {width, chromaLine ? chroma : 0, chromaLine ? chroma : 0, codec->alpha ? width : 0};
    for (int s = 0; s < 4; ++s) result.slot[s].insert(result.slot[s].end(), lines.slot[s], lines.slot[s] + widths[s]);
  }
  return result;
}

// A picture of random components within the format's depth.
inline std::vector<uint8_t> Random(unsigned int format, int width, int height, unsigned seed) {
  const LineCodec* codec = LineCodec::Find(format);
  std::vector<uint8_t> bytes(NaturalSize(format, width, height), 0);
  SamplePlanes planes = NaturalPlanes(format, width, height, bytes.data());
  const int capacity = LineCodec::GetSlotCapacity(width);
  std::vector<uint16_t> storage(static_cast<size_t>(capacity) * 4);
  ComponentLines lines;
  for (int i = 0; i < 4; ++i) lines.slot[i] = storage.data() + static_cast<size_t>(i) * capacity;
  std::mt19937 random(seed);
  for (int y = 0; y < height; ++y) {
    for (uint16_t& v : storage) v = static_cast<uint16_t>(random() & static_cast<unsigned>(codec->GetMaximum()));
    codec->Encode(lines, width, y, planes);
  }
  return bytes;
}

struct Conversion {
  Result result;
  std::vector<uint8_t> bytes;
  RObject<CVideoProperties> output;
  std::vector<unsigned int> stages;  // the planned stage types
};

// Runs one picture through a converter set up by configure.
template <class Configure>
Conversion Convert(const CVideoProperties* input, const std::vector<uint8_t>& bytes, unsigned int format,
                   Configure configure) {
  Conversion conversion;
  RObject<CVideoFormatConverter> converter(new CVideoFormatConverter());
  configure(converter.Get());
  converter->SetOutputFormat(format);
  conversion.result = converter->AddInputMedia(input);
  if (conversion.result.Failed()) return conversion;
  conversion.result = converter->Begin();
  if (conversion.result.Failed()) return conversion;
  for (CStage* stage : *converter->GetStages()) conversion.stages.push_back(stage->GetStageType());
  conversion.output = new CVideoProperties(converter->GetOutputProperties());
  RObject<CBufferDataReference> data(new CBufferDataReference(static_cast<int>(bytes.size())));
  std::copy(bytes.begin(), bytes.end(), data->GetData());
  RObject<CVideoSample> sample(new CVideoSample(0, 1, 0));
  sample->SetDataReference(data);
  CVideoSample* converted = nullptr;
  conversion.result = converter->Convert(sample, converted);
  RObject<CVideoSample> held(converted);
  if (conversion.result.Succeeded() && held) {
    RObject<CDataReference> reference(held->GetDataReference());
    SamplePlanes planes;
    conversion.result = CStage::Buffer::GetSamplePlanes(reference, conversion.output, false, planes);
    const int width = conversion.output->GetWidth(), height = conversion.output->GetHeight();
    conversion.bytes.assign(NaturalSize(format, width, height), 0);
    SamplePlanes natural = NaturalPlanes(format, width, height, conversion.bytes.data());
    for (int p = 0; p < planes.count && conversion.result.Succeeded(); ++p)
      for (int y = 0; y < planes.height[p]; ++y)
        std::copy(planes.data[p] + static_cast<long long>(y) * planes.stride[p],
                  planes.data[p] + static_cast<long long>(y) * planes.stride[p] + natural.stride[p],
                  natural.data[p] + static_cast<long long>(y) * natural.stride[p]);
  }
  converter->End();
  return conversion;
}

inline Conversion Convert(const CVideoProperties* input, const std::vector<uint8_t>& bytes, unsigned int format) {
  return Convert(input, bytes, format, [](CVideoFormatConverter*) {});
}

}  // namespace VideoConverterTest
