// Sample-format conversion throughput: one second of 8-channel 48 kHz audio
// per iteration through the converter's kernels, beside a plain memcpy of the
// input bytes (the memory-bandwidth limit). Items are samples (values), so
// the reports read as samples per second.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "System/Media/Filter/AudioConverters/SampleCoding.h"
#include "System/Types.h"

using namespace Corvane::Mox;

namespace {

constexpr size_t kValues = 48000 * 8;

std::vector<uint8_t> RandomBytes(size_t n) {
  std::vector<uint8_t> bytes(n);
  std::mt19937 random(7);
  for (auto& b : bytes) b = static_cast<uint8_t>(random());
  return bytes;
}

std::vector<uint8_t> FloatBytes(size_t n) {
  std::vector<float> values(n);
  std::mt19937 random(7);
  std::uniform_real_distribution<float> uniform(-1.0f, 1.0f);
  for (auto& v : values) v = uniform(random);
  std::vector<uint8_t> bytes(n * 4);
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

void Convert(benchmark::State& state, unsigned int from, unsigned int to) {
  const SampleCoding& a = *SampleCoding::Find(from);
  const SampleCoding& b = *SampleCoding::Find(to);
  const std::vector<uint8_t> in = a.IsFloat() ? FloatBytes(kValues) : RandomBytes(kValues * a.bytes);
  std::vector<uint8_t> out(kValues * b.bytes);
  for (auto _ : state) {
    ConvertSamples(a, b, in.data(), out.data(), kValues);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValues));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kValues * a.bytes));
}

void Memcpy(benchmark::State& state, int width) {
  const std::vector<uint8_t> in = RandomBytes(kValues * width);
  std::vector<uint8_t> out(in.size());
  for (auto _ : state) {
    std::memcpy(out.data(), in.data(), in.size());
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kValues));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.size()));
}

}  // namespace

BENCHMARK_CAPTURE(Memcpy, Bytes3, 3);
BENCHMARK_CAPTURE(Convert, Int24ToInt16, FourCC("42ni"), FourCC("sowt"));
BENCHMARK_CAPTURE(Convert, Int24ToFloat32, FourCC("42ni"), FourCC("23lf"));
BENCHMARK_CAPTURE(Convert, Int24BigToLittle, FourCC("in24"), FourCC("42ni"));
BENCHMARK_CAPTURE(Memcpy, Bytes2, 2);
BENCHMARK_CAPTURE(Convert, Int16ToFloat32, FourCC("sowt"), FourCC("23lf"));
BENCHMARK_CAPTURE(Convert, Int16ToMuLaw, FourCC("sowt"), FourCC("ulaw"));
BENCHMARK_CAPTURE(Memcpy, Bytes4, 4);
BENCHMARK_CAPTURE(Convert, Float32ToInt16, FourCC("23lf"), FourCC("sowt"));
BENCHMARK_CAPTURE(Convert, Float32ToInt24, FourCC("23lf"), FourCC("42ni"));
BENCHMARK_CAPTURE(Convert, Float32ToFloat64, FourCC("23lf"), FourCC("46lf"));
