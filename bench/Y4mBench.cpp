// Indexing a large Y4M file and reading every frame's bytes through the
// reader, against reading the same file with read(2) in 1 MiB blocks (what
// cat does). The file is generated sparse (frame lines written, pictures left
// as holes) so it costs no disk; set MOX_Y4M_BENCH_FILE to use another file
// and MOX_Y4M_BENCH_SIZE (bytes) to change the generated size (default 512 MiB).
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Container/MediaIndexer.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr long long kFrameSize = kWidth * kHeight * 3 / 2;

// Writes the header and every "FRAME" line; the pictures stay holes.
bool WriteSparseY4m(const std::string& path, long long size) {
  const int fd = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
  if (fd < 0) return false;
  const std::string header = "YUV4MPEG2 W1920 H1080 F25:1 Ip A1:1 C420\n";
  bool ok = write(fd, header.data(), header.size()) == static_cast<ssize_t>(header.size());
  long long position = static_cast<long long>(header.size());
  while (ok && position + 6 + kFrameSize <= size) {
    ok = pwrite(fd, "FRAME\n", 6, position) == 6;
    position += 6 + kFrameSize;
  }
  ok = ok && ftruncate(fd, position) == 0;
  close(fd);
  return ok;
}

const std::string& BenchFile() {
  static const std::string path = [] {
    if (const char* given = std::getenv("MOX_Y4M_BENCH_FILE")) return std::string(given);
    const char* sizeText = std::getenv("MOX_Y4M_BENCH_SIZE");
    const long long size = sizeText ? std::atoll(sizeText) : 512LL << 20;
    std::string generated = "/tmp/mox-bench-" + std::to_string(getpid()) + ".y4m";
    if (!WriteSparseY4m(generated, size)) std::abort();
    std::atexit([] { std::remove(("/tmp/mox-bench-" + std::to_string(getpid()) + ".y4m").c_str()); });
    return generated;
  }();
  return path;
}

long long FileLength(const std::string& path) {
  const int fd = open(path.c_str(), O_RDONLY);
  const long long length = fd < 0 ? 0 : lseek(fd, 0, SEEK_END);
  if (fd >= 0) close(fd);
  return length;
}

RObject<CContainerReader> OpenReader() {
  RObject<CString> path(CString::WithString(BenchFile().c_str()));
  return RObject<CContainerReader>(CContainerReader::Create(path));
}

void BM_IndexY4m(benchmark::State& state) {
  long long frames = 0;
  for (auto _ : state) {
    RObject<CContainerReader> reader(OpenReader());
    RObject<CIndexer> indexer(new CIndexer(reader));
    if (indexer->Begin(false).Failed()) state.SkipWithError("cannot index");
    frames = indexer->GetVideoMediaIndexer(0)->GetSampleCount();
    indexer->End();
  }
  state.counters["frames"] = static_cast<double>(frames);
}
BENCHMARK(BM_IndexY4m)->Unit(benchmark::kMillisecond);

// Every frame's bytes through ReadVideoData, as a consumer of the reader
// would take them.
void BM_ReadFramesThroughReader(benchmark::State& state) {
  long long bytes = 0;
  for (auto _ : state) {
    RObject<CContainerReader> reader(OpenReader());
    if (reader->BeginIndex().Failed()) state.SkipWithError("cannot index");
    for (;;) {
      RObject<CVideoSample> sample;
      reader->ReadVideoSample(0, sample.Out());
      if (!sample) break;
      if (reader->ReadVideoData(0, sample).Failed()) state.SkipWithError("cannot read");
      RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
      benchmark::DoNotOptimize(data->GetData());
      bytes += data->GetLength();
    }
    reader->EndIndex();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ReadFramesThroughReader)->Unit(benchmark::kMillisecond);

// The same file with read(2) into one 1 MiB buffer, like cat.
void BM_ReadFileLikeCat(benchmark::State& state) {
  std::vector<char> buffer(1 << 20);
  long long bytes = 0;
  for (auto _ : state) {
    const int fd = open(BenchFile().c_str(), O_RDONLY);
    ssize_t got = 0;
    while ((got = read(fd, buffer.data(), buffer.size())) > 0) bytes += got;
    close(fd);
  }
  state.SetBytesProcessed(bytes);
  state.counters["file_bytes"] = static_cast<double>(FileLength(BenchFile()));
}
BENCHMARK(BM_ReadFileLikeCat)->Unit(benchmark::kMillisecond);

}  // namespace
