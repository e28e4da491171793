#include "System/Media/Filter/VideoConverters/VideoFormatConverter.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/Media/DataReference.h"
#include "System/Media/Filter/FamilyWork.h"
#include "System/Media/Filter/VideoConverters/BandWorkers.h"
#include "System/Media/Filter/VideoConverters/ConvertStage.h"
#include "System/Media/Filter/VideoConverters/CopyStage.h"
#include "System/Media/Filter/VideoConverters/LineCodec.h"
#include "System/Media/Filter/VideoConverters/PackStage.h"
#include "System/Media/Filter/VideoConverters/ResampleStage.h"
#include "System/Media/Filter/VideoConverters/ShuffleStage.h"
#include "System/Media/Filter/VideoConverters/TwistStage.h"
#include "System/Media/Filter/VideoConverters/UnpackStage.h"
#include "System/Media/MemoryContext.h"
#include "System/PropertiesDocumentation.h"
#include "System/Variant.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

using Settings = CodeBookProperty::VideoFormatConverter;

// Lines of a band when the whole chain runs band by band: small enough that
// a band of every intermediate stays in the cache, a multiple of the band
// alignment.
constexpr int kChainedBandLines = 32;

namespace {

using Row = CVideoFormatConverter::Row;

// Formats joined by a row of any stage map, ignoring matrices and targets:
// what some chain could reach.
std::vector<std::pair<unsigned int, unsigned int>> FormatEdges() {
  const std::vector<CStage::Row>* maps[] = {
      &CUnpackStage::GetStageMap(),  &CPackStage::GetStageMap(),  &CShuffleStage::GetStageMap(),
      &CCopyStage::GetStageMap(),    &CConvertStage::GetStageMap(), &CTwistStage::GetStageMap(),
      &CResampleStage::GetStageMap()};
  std::vector<std::pair<unsigned int, unsigned int>> edges;
  for (const auto* map : maps)
    for (const CStage::Row& row : *map)
      if (LineCodec::Find(row.input.format) && LineCodec::Find(row.output.format))
        edges.emplace_back(row.input.format, row.output.format);
  return edges;
}

std::vector<Row> BuildConfigurationTable() {
  const auto edges = FormatEdges();
  std::set<unsigned int> formats;
  for (const auto& edge : edges) formats.insert(edge.first);
  std::vector<Row> rows;
  for (unsigned int from : formats) {
    // Breadth-first over the format graph; the input itself comes first, so
    // an unset "OutputFormat" keeps the layout and changes only the values.
    std::vector<unsigned int> reached{from};
    for (size_t i = 0; i < reached.size(); ++i)
      for (const auto& edge : edges)
        if (edge.first == reached[i] && std::find(reached.begin(), reached.end(), edge.second) == reached.end())
          reached.push_back(edge.second);
    for (unsigned int to : reached) {
      Row row;
      row.input.SetFormat(static_cast<int>(from));
      row.output.SetFormat(static_cast<int>(to));
      rows.push_back(row);
    }
  }
  rows.push_back(Row{});  // the end of the table
  return rows;
}

}  // namespace

CVideoFormatConverter::CVideoFormatConverter() : CVideoConverter(ComponentCode) {}

CVideoFormatConverter::~CVideoFormatConverter() = default;

CProperties* CVideoFormatConverter::GetDocumentation() const {
  CProperties* own = IPropertiesDocumentation::GetDocumentationT<Settings>();
  RObject<CProperties> base(CVideoConverter::GetDocumentation());
  CObject* ownProperties = nullptr;
  CObject* baseProperties = nullptr;
  if (!own || !base || own->GetProperty(PropertyName("properties"), ownProperties).Failed() ||
      base->GetProperty(PropertyName("properties"), baseProperties).Failed())
    return own;
  RObject<CObject> heldOwn(ownProperties), heldBase(baseProperties);
  auto* into = dynamic_cast<CProperties*>(ownProperties);
  auto* from = dynamic_cast<CProperties*>(baseProperties);
  for (int i = 0; into && from && i < from->GetPropertyCount(); ++i) {
    RObject<CString> name(from->GetPropertyName(i));
    if (into->ContainsProperty(name)) continue;
    RObject<CVariant> value(from->GetProperty(name));
    into->SetProperty(name, value);
  }
  return own;
}

const CVideoFormatConverter::Row* CVideoFormatConverter::GetConfigurationTable() const {
  static const std::vector<Row> table = BuildConfigurationTable();
  return table.data();
}

int CVideoFormatConverter::GetSetting(const PropertyName& name, int fallback) const {
  // A setting holds when it is present, also with the value 0 (the identity matrix, say).
  int value = 0;
  if (!ContainsProperty(name) || GetProperty(name, value).Failed()) return fallback;
  return value;
}

CFormatList* CVideoFormatConverter::GetOutputFormats() const {
  CFormatList* formats = CVideoConverter::GetOutputFormats();
  const int depth = GetSetting(Settings::BitDepth, 0);
  const int subsampling = GetSetting(Settings::Subsampling, 0);
  if (!formats || (depth == 0 && subsampling == 0)) return formats;
  auto* narrowed = new CFormatList();
  for (int i = 0; i < formats->GetCount(); ++i) {
    unsigned int format = 0;
    formats->GetValue(i, format);
    if (depth != 0 && PixelFormatDescriptor::GetBitDepth(format) != depth) continue;
    if (subsampling != 0 && PixelFormatDescriptor::GetSubsampling(format) != subsampling) continue;
    narrowed->AddValue(format);
  }
  formats->Release();
  return narrowed;
}

Result CVideoFormatConverter::CreateOutputProperties(unsigned int format, CVideoProperties*& properties) const {
  properties = nullptr;
  const CVideoProperties* input = GetInputProperties();
  if (!input) return ResultInvalidOperation("input properties not set");
  const bool rgb = PixelFormatDescriptor::IsRgb(format);
  int subsampling = GetSetting(Settings::Subsampling, 0);
  if (subsampling == 0) subsampling = PixelFormatDescriptor::GetSubsampling(format);
  if (rgb && subsampling != 0x11) return ResultNotSupported("subsampled RGB is not allowed");
  RObject<CVideoProperties> output;
  Result made = CVideoConverter::CreateOutputProperties(format, output.Out());
  if (made.Failed()) return made;
  output->SetBitDepth(PixelFormatDescriptor::GetBitDepth(format));
  output->SetSubsampling(subsampling);
  output->SetVideoRange(GetSetting(Settings::VideoRange, input->GetVideoRange()));
  output->SetChromaSiting(GetSetting(Settings::ChromaSiting, 1));
  // RGB is the identity matrix; YUV keeps the input's matrix, and YUV made
  // from RGB takes the one the picture height implies.
  int matrix = input->GetMatrixCoefficients();
  if (PixelFormatDescriptor::IsRgb(input->GetFormat()) || matrix == 0)
    matrix = CVideoProperties::GetDefaultColorSpace(input->GetHeight()).matrix;
  output->SetMatrixCoefficients(static_cast<unsigned char>(rgb ? 0 : GetSetting(Settings::MatrixCoefficients, matrix)));
  properties = output.Detach();
  return Result();
}

Result CVideoFormatConverter::Initialize() {
  Result initialized = CVideoConverter::Initialize();
  if (initialized.Failed()) return initialized;
  const int strategy = GetSetting(Settings::ConversionStrategy, CS_SPEED);
  const int rounding = GetSetting(Settings::RoundingMode, 1);
  bool bottomUp = false;
  bottomUp_ = GetProperty(Settings::BottomUp, bottomUp).Succeeded() && bottomUp;
  stages_ = nullptr;
  CList<CStage>* stages = FindConversionPath(strategy, GetInputProperties(), GetOutputProperties(), rounding);
  if (!stages) return ResultNotSupported("No viable conversion path");
  stages_ = stages;
  // The chain in order, and whether its stages after the first need only
  // their own lines.
  chain_.clear();
  lineLocal_ = true;
  for (CStage* stage : *stages_) {
    lineLocal_ &= chain_.empty() || !stage->NeedsNeighbourLines();
    chain_.push_back(stage);
  }
  const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  int threads = GetSetting(Settings::MaxThreads, 0);
  threads = threads > 0 ? std::min(threads, 64) : cores;
  workers_ = std::make_unique<CBandWorkers>(threads - 1);
  return Result();
}

Result CVideoFormatConverter::Finalize() {
  if (stages_)
    for (CStage* stage : *stages_) stage->End();
  chain_.clear();
  stages_ = nullptr;
  workers_.reset();
  return CVideoConverter::Finalize();
}

Result CVideoFormatConverter::RunBands(int first, int last, std::vector<SamplePlanes>& planes, int lines) {
  const int height = chain_[last - 1]->GetOutput()->GetHeight();
  const int bands = (height + lines - 1) / lines;
  std::vector<Result> results(static_cast<size_t>(bands));
  auto work = [&](int band) {
    for (int i = first; i < last && results[band].Succeeded(); ++i)
      results[band] = chain_[i]->Transform(planes[i], planes[i + 1], band * lines, (band + 1) * lines);
  };
  RunBandWork(bands, work);
  for (const Result& result : results)
    if (result.Failed()) return result;
  return Result();
}

Result CVideoFormatConverter::RunChained(const SamplePlanes& input, SamplePlanes& output) {
  const int height = chain_.back()->GetOutput()->GetHeight();
  const int bands = (height + kChainedBandLines - 1) / kChainedBandLines;
  RunBandWork(bands, [&](int band) {
    CStage::TransformChain(chain_, input, output, band * kChainedBandLines, (band + 1) * kChainedBandLines);
  });
  return Result();
}

void CVideoFormatConverter::RunBandWork(int bands, const std::function<void(int)>& work) {
  if (workers_) {
    workers_->Run(bands, work);
  } else {
    for (int band = 0; band < bands; ++band) work(band);
  }
}

Result CVideoFormatConverter::Convert(CVideoSample* sample, CVideoSample*& converted) {
  converted = nullptr;
  if (!sample || !stages_ || stages_->GetCount() == 0) return PassThrough(sample, converted);
  CMemoryContext* context = GetMemoryContext();
  if (!context) return ResultNullPointer("memory context is null");
  RObject<CDataReference> source(sample->GetDataReference());
  if (!source) return ResultNullPointer("the sample has no data");
  Result locked = source->Lock(CDataReference::LockShared);
  if (locked.Failed()) return locked;
  struct Unlock {
    CDataReference* reference;
    ~Unlock() { reference->Unlock(); }
  } unlock{source};
  const int count = stages_->GetCount();
  std::vector<SamplePlanes> planes(static_cast<size_t>(count) + 1);
  const auto bottomUp = [&](const CVideoProperties* p) { return bottomUp_ && PixelFormatDescriptor::IsRgb(p->GetFormat()); };
  Result got = CStage::Buffer::GetSamplePlanes(source, GetInputProperties(), bottomUp(GetInputProperties()), planes[0]);
  if (got.Failed()) return got;
  // Chains of more than one stage whose later stages need only their own
  // lines run line by line through every stage, without intermediate
  // pictures; the others get every stage's buffer from the pools.
  const bool chained = count > 1 && lineLocal_;
  std::vector<RObject<CPixelBufferDataReference>> buffers;
  for (int i = chained ? count - 1 : 0; i < count; ++i) {
    const bool last = i == count - 1;
    const CVideoProperties* described = last ? GetOutputProperties() : chain_[i]->GetOutput();
    buffers.emplace_back(context->GetPool(described)->Get());
    if (!buffers.back()) return ResultOutOfMemory();
    got = CStage::Buffer::GetSamplePlanes(buffers.back(), described, last && bottomUp(described), planes[i + 1]);
    if (got.Failed()) return got;
  }
  const int height = GetOutputProperties()->GetHeight();
  const int threads = workers_ ? workers_->GetThreadCount() : 1;
  if (chained) {
    got = RunChained(planes[0], planes[count]);
  } else if (lineLocal_) {
    got = RunBands(0, count, planes, kChainedBandLines);
  } else {
    // Stage by stage, two bands per thread to even out lines of unequal cost.
    int lines = (height + threads * 2 - 1) / (threads * 2);
    lines = std::max(kChainedBandLines, (lines + CStage::BandAlignment - 1) / CStage::BandAlignment * CStage::BandAlignment);
    for (int i = 0; i < count && got.Succeeded(); ++i) got = RunBands(i, i + 1, planes, lines);
  }
  if (got.Failed()) return got;
  RObject<CVideoSample> result(new CVideoSample(0, sample->GetDuration(), 0));
  result->SetDataReference(buffers.back());
  Result copied = CopySampleMetadata(result, sample);
  if (copied.Failed()) return copied;
  converted = result.Detach();
  return Result();
}

}  // namespace Corvane::Mox
