// Throughput of each video format converter stage on one 1080p picture, on
// one thread, in Mpixel/s (items_per_second), beside a plain memcpy of the
// same input bytes. The stages come from the planner, so each case is the
// stage the converter would run for that pair of formats.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "System/Collections/List.h"
#include "System/FourString.h"
#include "System/Media/Filter/VideoConverters/Stage.h"
#include "System/Media/Filter/VideoConverters/VideoFormatConverter.h"
#include "System/Media/Video/PlaneLayout.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

CVideoProperties* Describe(unsigned int format, int matrix, int range) {
  auto* p = new CVideoProperties();
  p->SetFormat(format);
  p->SetWidth(kWidth);
  p->SetHeight(kHeight);
  p->SetBitDepth(PixelFormatDescriptor::GetBitDepth(format));
  p->SetSubsampling(PixelFormatDescriptor::GetSubsampling(format));
  p->SetMatrixCoefficients(static_cast<unsigned char>(matrix));
  p->SetVideoRange(range);
  return p;
}

struct Picture {
  std::vector<uint8_t> bytes;
  SamplePlanes planes;
  explicit Picture(unsigned int format) {
    const PlaneLayout* layout = PlaneLayout::Find(format);
    bytes.resize(static_cast<size_t>(layout->GetSampleLength(kWidth, kHeight)));
    std::mt19937 random(7);
    // 10-bit values in 16-bit words: keep the high bits clear by masking to 0x03FF-ish bytes.
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(random() & (i % 2 && layout->bitDepth == 10 ? 0x03 : 0xFF));
    uint8_t* data = bytes.data();
    planes.count = layout->planeCount;
    for (int i = 0; i < layout->planeCount; ++i) {
      planes.data[i] = data;
      planes.stride[i] = layout->GetStride(i, kWidth);
      planes.height[i] = layout->GetPlaneHeight(i, kHeight);
      data += static_cast<size_t>(planes.stride[i]) * planes.height[i];
    }
  }
};

// Runs the single stage the planner picks from one format to another.
void RunStage(benchmark::State& state, unsigned int from, int fromMatrix, unsigned int to, int toMatrix, int toRange) {
  RObject<CVideoProperties> input(Describe(from, fromMatrix, 1)), output(Describe(to, toMatrix, toRange));
  RObject<CList<CStage>> stages(CVideoFormatConverter::FindConversionPath(CVideoFormatConverter::CS_SPEED, input, output));
  if (!stages || stages->GetCount() != 1) {
    state.SkipWithError("the planner did not choose a single stage");
    return;
  }
  CStage* stage = nullptr;
  stages->Get(0, stage);
  RObject<CStage> held(stage);
  Picture in(from), out(to);
  for (auto _ : state) {
    stage->Transform(in.planes, out.planes, 0, kHeight);
    benchmark::DoNotOptimize(out.bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
  state.SetBytesProcessed(state.iterations() * static_cast<long long>(in.bytes.size()));
  state.SetLabel(FourString(stage->GetStageType()).GetChars());
}

// The fastest planned chain between the two descriptions (acquired), or null
// after marking the benchmark skipped.
CList<CStage>* Plan(benchmark::State& state, unsigned int from, int fromMatrix, unsigned int to, int toMatrix,
                    int toRange) {
  RObject<CVideoProperties> input(Describe(from, fromMatrix, 1)), output(Describe(to, toMatrix, toRange));
  CList<CStage>* stages = CVideoFormatConverter::FindConversionPath(CVideoFormatConverter::CS_SPEED, input, output);
  if (!stages) state.SkipWithError("no path");
  return stages;
}

// Runs the whole planned chain line by line, as the converter does when the
// stages after the first need only their own lines.
void RunChain(benchmark::State& state, unsigned int from, int fromMatrix, unsigned int to, int toMatrix, int toRange) {
  RObject<CList<CStage>> stages(Plan(state, from, fromMatrix, to, toMatrix, toRange));
  if (!stages) return;
  std::vector<const CStage*> chain;
  std::string label;
  for (CStage* stage : *stages) {
    chain.push_back(stage);
    label += std::string(label.empty() ? "" : "+") + FourString(stage->GetStageType()).GetChars();
  }
  Picture in(from), out(to);
  for (auto _ : state) {
    CStage::TransformChain(chain, in.planes, out.planes, 0, kHeight);
    benchmark::DoNotOptimize(out.bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
  state.SetBytesProcessed(state.iterations() * static_cast<long long>(in.bytes.size()));
  state.SetLabel(label);
}

// The same chain stage after stage through whole intermediate pictures,
// as chains whose later stages need neighbouring lines still run.
void RunStages(benchmark::State& state, unsigned int from, int fromMatrix, unsigned int to, int toMatrix, int toRange) {
  RObject<CList<CStage>> stages(Plan(state, from, fromMatrix, to, toMatrix, toRange));
  if (!stages) return;
  std::vector<const CStage*> chain;
  std::vector<std::unique_ptr<Picture>> pictures;
  pictures.push_back(std::make_unique<Picture>(from));
  for (CStage* stage : *stages) {
    chain.push_back(stage);
    pictures.push_back(std::make_unique<Picture>(stage->GetOutput()->GetFormat()));
  }
  for (auto _ : state) {
    for (size_t i = 0; i < chain.size(); ++i) chain[i]->Transform(pictures[i]->planes, pictures[i + 1]->planes, 0, kHeight);
    benchmark::DoNotOptimize(pictures.back()->bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
  state.SetBytesProcessed(state.iterations() * static_cast<long long>(pictures.front()->bytes.size()));
}

void BM_Memcpy(benchmark::State& state, unsigned int format) {
  Picture in(format), out(format);
  for (auto _ : state) {
    std::memcpy(out.bytes.data(), in.bytes.data(), in.bytes.size());
    benchmark::DoNotOptimize(out.bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
  state.SetBytesProcessed(state.iterations() * static_cast<long long>(in.bytes.size()));
}

}  // namespace

BENCHMARK_CAPTURE(BM_Memcpy, I420, FourCC("I420"));
BENCHMARK_CAPTURE(BM_Memcpy, UYVY, FourCC("UYVY"));
BENCHMARK_CAPTURE(BM_Memcpy, I444, FourCC("I444"));
BENCHMARK_CAPTURE(RunStage, Unpack_UYVY_NV16, FourCC("UYVY"), 1, FourCC("NV16"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Pack_NV16_UYVY, FourCC("NV16"), 1, FourCC("UYVY"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Pack_I420_NV12, FourCC("I420"), 1, FourCC("NV12"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Shuffle_I420_YV12, FourCC("I420"), 1, FourCC("YV12"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Shuffle_UYVY_YUYV, FourCC("UYVY"), 1, FourCC("YUYV"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Copy_I444_YUVA, FourCC("I444"), 1, FourCC("YUVA"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Pack_I2AL_v210, FourCC("I2AL"), 1, FourCC("v210"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Convert_I0AL_I420, FourCC("I0AL"), 1, FourCC("I420"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Convert_I420_I0AL, FourCC("I420"), 1, FourCC("I0AL"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Twist_I444_24BG, FourCC("I444"), 1, FourCC("24BG"), 0, 2);
BENCHMARK_CAPTURE(RunStage, Twist_24BG_I444, FourCC("24BG"), 0, FourCC("I444"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Resample_I420_I422, FourCC("I420"), 1, FourCC("I422"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Resample_I420_I444, FourCC("I420"), 1, FourCC("I444"), 1, 1);
BENCHMARK_CAPTURE(RunStage, Resample_I444_I420, FourCC("I444"), 1, FourCC("I420"), 1, 1);
BENCHMARK_CAPTURE(RunChain, Chain_I420_24BG, FourCC("I420"), 1, FourCC("24BG"), 0, 2);
BENCHMARK_CAPTURE(RunChain, Chain_I420_I2AL, FourCC("I420"), 1, FourCC("I2AL"), 1, 1);
BENCHMARK_CAPTURE(RunChain, Chain_I420_UYVY, FourCC("I420"), 1, FourCC("UYVY"), 1, 1);
BENCHMARK_CAPTURE(RunStages, Stages_I420_24BG, FourCC("I420"), 1, FourCC("24BG"), 0, 2);
BENCHMARK_CAPTURE(RunStages, Stages_I420_I2AL, FourCC("I420"), 1, FourCC("I2AL"), 1, 1);
