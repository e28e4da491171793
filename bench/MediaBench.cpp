// The media model's hot paths: format-code lookups (topology construction and
// every reader ask them per track), description equality and hashing (the
// converter search compares descriptions constantly) and the binary round
// trip of a description (indexes and caches store them). Format lookups are
// compared with a std::unordered_map over the same codes.
#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;

namespace {

const std::vector<unsigned int>& Codes() {
  static const std::vector<unsigned int> codes = [] {
    std::vector<unsigned int> all;
    for (int i = 0; i < VideoFormat::GetRowCount(); ++i) all.push_back(VideoFormat::GetRow(i)->code);
    return all;
  }();
  return codes;
}

void BM_VideoFormatName(benchmark::State& state) {
  const std::vector<unsigned int>& codes = Codes();
  for (auto _ : state) {
    for (unsigned int code : codes) benchmark::DoNotOptimize(VideoFormat::GetName(code));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(codes.size()));
}
BENCHMARK(BM_VideoFormatName);

void BM_VideoFormatNameStdUnorderedMap(benchmark::State& state) {
  const std::vector<unsigned int>& codes = Codes();
  std::unordered_map<unsigned int, const char*> names;
  for (int i = 0; i < VideoFormat::GetRowCount(); ++i) names.emplace(VideoFormat::GetRow(i)->code, VideoFormat::GetRow(i)->name);
  for (auto _ : state) {
    for (unsigned int code : codes) benchmark::DoNotOptimize(names.find(code)->second);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(codes.size()));
}
BENCHMARK(BM_VideoFormatNameStdUnorderedMap);

CVideoProperties* HdDescription() {
  auto* video = new CVideoProperties();
  video->SetFormat(FourCC("2vuy"));
  video->SetWidth(1920);
  video->SetHeight(1080);
  return video;
}

void BM_VideoDescriptionEqualsAndHash(benchmark::State& state) {
  RObject<CVideoProperties> a(HdDescription());
  RObject<CVideoProperties> b(HdDescription());
  for (auto _ : state) {
    benchmark::DoNotOptimize(a->Equals(b));
    benchmark::DoNotOptimize(a->GetHashCode());
  }
}
BENCHMARK(BM_VideoDescriptionEqualsAndHash);

void BM_VideoDescriptionBinaryRoundTrip(benchmark::State& state) {
  RObject<CVideoProperties> video(HdDescription());
  for (auto _ : state) {
    RObject<CMemoryStream> stream(new CMemoryStream());
    RObject<CBinaryWriter> writer(new CBinaryWriter(stream));
    video->Write(writer).ThrowIfFailed();
    stream->Seek(0, SeekOrigin::Begin, nullptr);
    RObject<CBinaryReader> reader(new CBinaryReader(stream));
    CMediaProperties* raw = nullptr;
    CMediaProperties::ReadProperties(reader, raw).ThrowIfFailed();
    RObject<CMediaProperties> back(raw);
    benchmark::DoNotOptimize(back.Get());
  }
}
BENCHMARK(BM_VideoDescriptionBinaryRoundTrip);

}  // namespace
