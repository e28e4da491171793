// Arbitrary bytes as a serialised media description: reading must answer
// with a description or a Result, never crash, hang or leak. A description
// that was read must describe itself, write out in exactly GetSize() + 8
// bytes, read back equal and hash alike.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/MediaProperties.h"
#include "System/Media/Video/VideoConfiguration.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;

namespace {

std::vector<unsigned char> Write(CMediaProperties* properties, CBinary::ByteOrder order) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream.Get(), order));
  if (properties->Write(writer.Get()).Failed()) std::abort();
  std::vector<unsigned char> bytes(static_cast<size_t>(stream->GetLength()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  int read = 0;
  if (!bytes.empty()) stream->Read(bytes.data(), static_cast<int>(bytes.size()), &read);
  return bytes;
}

Result Read(const unsigned char* data, size_t size, CBinary::ByteOrder order, CMediaProperties*& properties) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  int written = 0;
  if (size) stream->Write(data, static_cast<int>(size), &written);
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get(), order));
  return CMediaProperties::ReadProperties(reader.Get(), properties);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1 || size > (1u << 16)) return 0;
  CBinary::ByteOrder order = (data[0] & 1) ? CBinary::BigEndian : CBinary::LittleEndian;
  RObject<CMediaProperties> properties;
  if (Read(data + 1, size - 1, order, properties.Out()).Failed()) {
    if (properties) std::abort();
    return 0;
  }
  RObject<CProperties> description(properties->GetDescriptiveRepresentation());
  if (!description) std::abort();
  std::vector<unsigned char> first = Write(properties.Get(), order);
  if (first.size() != static_cast<size_t>(properties->GetSize()) + 8) std::abort();
  RObject<CMediaProperties> again;
  if (Read(first.data(), first.size(), order, again.Out()).Failed()) std::abort();
  if (!again->Equals(properties.Get()) || again->GetHashCode() != properties->GetHashCode()) std::abort();
  if (Write(again.Get(), order) != first) std::abort();
  if (properties->IsType(CVideoProperties::TypeCode)) {
    auto* video = static_cast<CVideoProperties*>(properties.Get());
    VideoConfiguration full = VideoConfiguration::Create(video);
    if (!full.Matches(full)) std::abort();
    video->GetSampleLength(0);
    video->GetDisplayAspectRatio();
  }
  return 0;
}
