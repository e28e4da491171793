// The WAV writer against write(2): a 345 MB 8-channel 24-bit 48 kHz file
// written in one-second samples (1,152,000 bytes each) through the writer,
// and the same bytes written with write(2) in blocks of the same size (what
// dd does). Then indexing a large WAV file (generated sparse, so it costs no
// disk) and reading every sample's bytes through the reader. Set
// MOX_WAV_BENCH_SECONDS to change the written length (default 300 s).
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

constexpr int kChannels = 8;
constexpr int kRate = 48000;
constexpr int kSecondBytes = kChannels * 3 * kRate;

int Seconds() {
  const char* text = std::getenv("MOX_WAV_BENCH_SECONDS");
  return text ? std::atoi(text) : 300;
}

std::string TempFile(const char* suffix) { return "/tmp/mox-wav-bench-" + std::to_string(getpid()) + suffix; }

RObject<CAudioProperties> Track() {
  RObject<CAudioProperties> track(new CAudioProperties());
  track->SetFormat(FourCC("42ni"));
  track->SetChannels(kChannels);
  track->SetSampleRate(kRate);
  for (int channel = 0; channel < kChannels; ++channel) track->SetChannelLabel(channel, channel + 1);
  return track;
}

void BM_WriteWav(benchmark::State& state) {
  const std::string path = TempFile(".wav");
  RObject<CBufferDataReference> second(new CBufferDataReference(kSecondBytes));
  for (int i = 0; i < kSecondBytes; ++i) second->GetData()[i] = static_cast<unsigned char>(i * 7);
  long long bytes = 0;
  for (auto _ : state) {
    RObject<CString> text(CString::WithString(path.c_str()));
    RObject<CContainerWriter> writer(CContainerWriter::Create(text, FourCC("wav ")));
    RObject<CAudioProperties> track(Track());
    if (writer->AddAudioMedia(track).Failed() || writer->BeginIndex().Failed()) state.SkipWithError("cannot begin");
    for (int s = 0; s < Seconds(); ++s) {
      RObject<CAudioSample> sample(new CAudioSample(kRate));
      sample->SetDataReference(second);
      if (writer->WriteAudioSample(0, sample).Failed()) state.SkipWithError("cannot write");
      bytes += kSecondBytes;
    }
    if (writer->EndIndex().Failed()) state.SkipWithError("cannot end");
  }
  std::remove(path.c_str());
  state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_WriteWav)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same bytes with write(2), like dd.
void BM_WriteFileLikeDd(benchmark::State& state) {
  const std::string path = TempFile(".raw");
  std::vector<unsigned char> second(kSecondBytes, 0x5A);
  long long bytes = 0;
  for (auto _ : state) {
    const int fd = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
    for (int s = 0; s < Seconds(); ++s) {
      if (write(fd, second.data(), second.size()) != static_cast<ssize_t>(second.size())) state.SkipWithError("write");
      bytes += kSecondBytes;
    }
    close(fd);
  }
  std::remove(path.c_str());
  state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_WriteFileLikeDd)->Unit(benchmark::kMillisecond)->UseRealTime();

// A 3-hour 8-channel 24-bit RF64 file: the headers, then a hole.
const std::string& SparseFile() {
  static const std::string path = [] {
    const std::string generated = TempFile("-sparse.wav");
    const long long dataSize = 3LL * 3600 * kSecondBytes;
    RObject<CString> text(CString::WithString(generated.c_str()));
    RObject<CContainerWriter> writer(CContainerWriter::Create(text, FourCC("wav ")));
    RObject<CAudioProperties> track(Track());
    writer->SetProperty("ForceRf64", true);
    if (writer->AddAudioMedia(track).Failed() || writer->BeginIndex().Failed()) std::abort();
    writer->EndIndex();
    // Patch the data size into "ds64" and grow the file with a hole.
    const int fd = open(generated.c_str(), O_RDWR);
    const long long header = lseek(fd, 0, SEEK_END);
    const long long riffSize = header + dataSize - 8;
    if (pwrite(fd, &riffSize, 8, 20) != 8 || pwrite(fd, &dataSize, 8, 28) != 8 || ftruncate(fd, header + dataSize))
      std::abort();
    close(fd);
    std::atexit([] { std::remove(TempFile("-sparse.wav").c_str()); });
    return generated;
  }();
  return path;
}

void BM_IndexLargeWav(benchmark::State& state) {
  long long frames = 0;
  for (auto _ : state) {
    RObject<CContainerReader> reader(CContainerReader::Create(SparseFile().c_str()));
    if (!reader || reader->BeginIndex().Failed()) state.SkipWithError("cannot index");
    RObject<CAudioProperties> track(reader->GetAudioProperties(0));
    frames = track ? track->GetDuration() : 0;
    reader->EndIndex();
  }
  state.counters["frames"] = static_cast<double>(frames);
}
BENCHMARK(BM_IndexLargeWav)->Unit(benchmark::kMillisecond);

}  // namespace
