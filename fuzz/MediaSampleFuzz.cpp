// Arbitrary bytes as a serialised media sample: reading must answer with a
// sample or a Result, never crash, hang or leak. A sample that was read must
// write out again, and its form must then be a fixed point.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/MediaSample.h"

using namespace Corvane::Mox;

namespace {

std::vector<unsigned char> Write(CMediaSample* sample, int version, CBinary::ByteOrder order) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream.Get(), order));
  if (sample->Write(writer.Get(), version).Failed()) std::abort();
  std::vector<unsigned char> bytes(static_cast<size_t>(stream->GetLength()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  int read = 0;
  if (!bytes.empty()) stream->Read(bytes.data(), static_cast<int>(bytes.size()), &read);
  return bytes;
}

Result Read(const unsigned char* data, size_t size, CBinary::ByteOrder order, CMediaSample*& sample, int& version) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  int written = 0;
  if (size) stream->Write(data, static_cast<int>(size), &written);
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get(), order));
  return CMediaSample::ReadSample(reader.Get(), sample, version);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1 || size > (1u << 20)) return 0;
  // The first byte picks the byte order; the rest is the form.
  CBinary::ByteOrder order = (data[0] & 1) ? CBinary::BigEndian : CBinary::LittleEndian;
  RObject<CMediaSample> sample;
  int version = 0;
  if (Read(data + 1, size - 1, order, sample.Out(), version).Failed()) {
    if (sample) std::abort();  // a failed read hands nothing out
    return 0;
  }
  RObject<CProperties> description(sample->GetDescriptiveRepresentation());
  std::vector<unsigned char> first = Write(sample.Get(), version, order);
  if (first.size() != static_cast<size_t>(sample->GetSize()) + 8) std::abort();
  RObject<CMediaSample> again;
  int againVersion = 0;
  if (Read(first.data(), first.size(), order, again.Out(), againVersion).Failed()) std::abort();
  if (Write(again.Get(), againVersion, order) != first) std::abort();
  return 0;
}
