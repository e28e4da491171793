// Sequential reading of a 1 GiB file through CBufferedStream over a
// descriptor stream, against plain read(2) with the same buffer size; and the
// field readers built on streams: CBinaryReader and CBitStream.
//
// The file is written once, on first use, in the temporary directory and
// removed when the program ends. Both readers find it in the page cache, so
// the comparison is of the code paths, not of the disk.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BitStream.h"
#include "System/IO/BufferedStream.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/MemoryStream.h"

using namespace Corvane::Mox;

namespace {

constexpr long long FileSize = 1LL << 30;

// The 1 GiB file, made on first use and deleted at exit.
class BigFile {
 public:
  static const std::string& Path() {
    static BigFile file;
    return file.path_;
  }

 private:
  BigFile() {
    const char* base = std::getenv("TMPDIR");
    path_ = std::string(base && *base ? base : "/tmp") + "/mox-stream-bench-" + std::to_string(getpid()) + ".bin";
    int descriptor = ::open(path_.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
    std::vector<unsigned char> chunk(1 << 20);
    std::mt19937 random(1);
    for (auto& byte : chunk) byte = static_cast<unsigned char>(random());
    for (long long written = 0; descriptor >= 0 && written < FileSize; written += static_cast<long long>(chunk.size())) {
      chunk[0] = static_cast<unsigned char>(written >> 20);
      if (::write(descriptor, chunk.data(), chunk.size()) != static_cast<ssize_t>(chunk.size())) break;
    }
    if (descriptor >= 0) ::close(descriptor);
  }
  ~BigFile() { std::remove(path_.c_str()); }

  std::string path_;
};

// A page-aligned buffer: where a buffer sits relative to the page cache's
// pages changes how fast the copies run, so both sides get the best case.
struct AlignedBuffer {
  explicit AlignedBuffer(std::size_t size) : bytes(static_cast<unsigned char*>(std::aligned_alloc(4096, (size + 4095) / 4096 * 4096))) {}
  ~AlignedBuffer() { std::free(bytes); }
  AlignedBuffer(const AlignedBuffer&) = delete;
  AlignedBuffer& operator=(const AlignedBuffer&) = delete;
  unsigned char* bytes;
};

// read(2) of the whole file with a buffer of range(0) bytes.
void BM_Read2(benchmark::State& state) {
  const std::string& path = BigFile::Path();
  const auto size = static_cast<std::size_t>(state.range(0));
  AlignedBuffer buffer(size);
  for (auto _ : state) {
    int descriptor = ::open(path.c_str(), O_RDONLY);
    long long total = 0;
    ssize_t n;
    while ((n = ::read(descriptor, buffer.bytes, size)) > 0) total += n;
    ::close(descriptor);
    benchmark::DoNotOptimize(total);
    if (total != FileSize) state.SkipWithError("short read");
  }
  state.SetBytesProcessed(state.iterations() * FileSize);
}
BENCHMARK(BM_Read2)->Arg(4 << 10)->Arg(16 << 10)->Arg(64 << 10)->Arg(256 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

// The whole file through a buffered stream of range(2) windows of range(0)
// bytes, in requests of range(1) bytes.
void BM_BufferedStream(benchmark::State& state) {
  const std::string& path = BigFile::Path();
  const int bufferSize = static_cast<int>(state.range(0));
  const int request = static_cast<int>(state.range(1));
  const int windows = static_cast<int>(state.range(2));
  AlignedBuffer buffer(static_cast<std::size_t>(request));
  for (auto _ : state) {
    CStream* file = nullptr;
    CFileDescriptorStream::Open(path.c_str(), FileMode::Read, file);
    RObject<CStream> inner(file);
    RObject<CBufferedStream> stream(new CBufferedStream(inner, bufferSize, windows));
    long long total = 0;
    int read = 0;
    while (stream->Read(buffer.bytes, request, &read).Succeeded() && read > 0) total += read;
    benchmark::DoNotOptimize(total);
    if (total != FileSize) state.SkipWithError("short read");
  }
  state.SetBytesProcessed(state.iterations() * FileSize);
}
BENCHMARK(BM_BufferedStream)
    ->Args({16 << 10, 4 << 10, 1})
    ->Args({64 << 10, 4 << 10, 1})
    ->Args({64 << 10, 4 << 10, 4})
    ->Args({64 << 10, 64 << 10, 1})
    ->Args({64 << 10, 188, 2})
    ->Args({256 << 10, 4 << 10, 1})
    ->Args({1 << 20, 4 << 10, 2})
    // Requests larger than a window go straight to the descriptor.
    ->Args({64 << 10, 256 << 10, 4})
    ->Unit(benchmark::kMillisecond);

std::vector<unsigned char> RandomBytes(std::size_t count) {
  std::vector<unsigned char> bytes(count);
  std::mt19937 random(2);
  for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
  return bytes;
}

// Big-endian 32-bit fields from a 1 MiB memory stream, as a box parser reads them.
void BM_BinaryReader_Int32(benchmark::State& state) {
  const std::vector<unsigned char> bytes = RandomBytes(1 << 20);
  RObject<CByteArray> array(new CByteArray(bytes.data(), static_cast<int>(bytes.size())));
  const int fields = static_cast<int>(bytes.size() / 4);
  for (auto _ : state) {
    RObject<CMemoryStream> stream(new CMemoryStream(array));
    RObject<CBinaryReader> reader(new CBinaryReader(stream, CBinary::BigEndian));
    unsigned int sum = 0;
    int value = 0;
    for (int i = 0; i < fields; ++i) {
      reader->ReadInt32(&value);
      sum += static_cast<unsigned int>(value);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * fields);
  state.SetBytesProcessed(state.iterations() * static_cast<long long>(bytes.size()));
}
BENCHMARK(BM_BinaryReader_Int32);

// Mixed fields (8, 16, 3-byte and four-character codes) through a buffered stream.
void BM_BinaryReader_MixedBuffered(benchmark::State& state) {
  const std::vector<unsigned char> bytes = RandomBytes(1 << 20);
  RObject<CByteArray> array(new CByteArray(bytes.data(), static_cast<int>(bytes.size())));
  const int records = static_cast<int>(bytes.size() / 10);
  for (auto _ : state) {
    RObject<CMemoryStream> memory(new CMemoryStream(array));
    RObject<CBufferedStream> stream(new CBufferedStream(memory, 64 << 10, 2));
    RObject<CBinaryReader> reader(new CBinaryReader(stream, CBinary::BigEndian));
    unsigned int sum = 0;
    for (int i = 0; i < records; ++i) {
      unsigned char byte = 0;
      short half = 0;
      int three = 0;
      unsigned int code = 0;
      reader->ReadByte(&byte);
      reader->ReadInt16(&half);
      reader->ReadInt32(&three, CBinary::FieldThreeBytes, 0);
      reader->ReadFour(&code);
      sum += byte + static_cast<unsigned int>(half) + static_cast<unsigned int>(three) + code;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * records * 4);
  state.SetBytesProcessed(state.iterations() * records * 10LL);
}
BENCHMARK(BM_BinaryReader_MixedBuffered);

// Fixed-width fields of 1 to 13 bits, as a codec header parser reads them.
void BM_BitStream_FixedWidth(benchmark::State& state) {
  RObject<CByteArray> array(new CByteArray(RandomBytes(1 << 20).data(), 1 << 20));
  long long bits = 0;
  for (auto _ : state) {
    RObject<CBitStream> stream(new CBitStream(array));
    unsigned int sum = 0;
    unsigned int value = 0;
    for (int width = 1; stream->Read(width, value, 0).Succeeded(); width = width % 13 + 1) {
      sum += value;
      bits += width;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["bits/s"] = benchmark::Counter(static_cast<double>(bits), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_BitStream_FixedWidth);

// Exp-Golomb codes of small values, as slice headers are made of.
void BM_BitStream_ExpGolomb(benchmark::State& state) {
  std::mt19937 random(3);
  RObject<CBitStream> writer(new CBitStream(8 << 20));
  while (writer->Write(static_cast<unsigned int>(random() % 300)).Succeeded()) {
  }
  RObject<CByteArray> array(writer->ToByteArray());
  long long bits = 0;
  long long codes = 0;
  for (auto _ : state) {
    RObject<CBitStream> stream(new CBitStream(array));
    unsigned int sum = 0;
    unsigned int value = 0;
    while (stream->Read(value).Succeeded()) {
      sum += value;
      ++codes;
    }
    bits += stream->GetPosition();
    benchmark::DoNotOptimize(sum);
  }
  state.counters["bits/s"] = benchmark::Counter(static_cast<double>(bits), benchmark::Counter::kIsRate);
  state.SetItemsProcessed(codes);
}
BENCHMARK(BM_BitStream_ExpGolomb);

}  // namespace
