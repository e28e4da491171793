// Arbitrary bytes as a WAVE, RF64 or Wave64 file: the readers must index the
// bytes and hand out every sample's bytes with a Result, never crash, hang
// or leak. Every input is tried as it is, behind a RIFF/WAVE header, behind
// an RF64 header, behind a Wave64 header, and as a WAVEFORMAT structure, so
// that mutations reach the chunk walk and the format parsing quickly.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "System/IO/MemoryStream.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/DataReference.h"
#include "System/Media/Variance/Variance.h"

using namespace Corvane::Mox;

namespace {

// Enough samples to walk any file the harness accepts (1 MiB), bounded so
// that a one-byte-per-sample codec cannot make a run slow.
constexpr int MaximumSamples = 4096;

std::string Le(uint64_t value, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
  return bytes;
}

void ReadEverything(CContainerReader* reader) {
  if (reader->GetAudioMediaCount() != 1) return;
  for (int count = 0; count < MaximumSamples; ++count) {
    RObject<CAudioSample> sample;
    if (reader->ReadAudioSample(0, sample.Out()).Failed() || !sample) break;
    if (reader->ReadAudioData(0, sample).Failed()) continue;
    // The bytes read must replace the reference the sample came with.
    if (RObject<CDataReference>(sample->GetDataReference(FourCC("read")))) std::abort();
  }
}

void Index(unsigned int type, const std::string& bytes) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  if (!bytes.empty()) stream->Write(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CContainerReader> reader(CContainerReaderInventory::Create(type));
  if (!reader) std::abort();
  RObject<CContainerContext> context(new CContainerStreamContext(stream));
  reader->SetContext(context);
  if (reader->BeginIndex().Succeeded()) ReadEverything(reader);
  reader->EndIndex();
  CVariance::Clear();
}

std::string Wave64Header(size_t size) {
  static const unsigned char riff[16] = {'r', 'i', 'f', 'f', 0x2E, 0x91, 0xCF, 0x11,
                                         0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};
  static const unsigned char wave[16] = {'w', 'a', 'v', 'e', 0xF3, 0xAC, 0xD3, 0x11,
                                         0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A};
  return std::string(reinterpret_cast<const char*>(riff), 16) + Le(size + 40, 8) +
         std::string(reinterpret_cast<const char*>(wave), 16);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 1 << 20) return 0;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Index(FourCC("wav "), bytes);
  Index(FourCC("wav "), "RIFF" + Le(size + 4, 4) + "WAVE" + bytes);
  Index(FourCC("wav "), "RF64" + Le(0xFFFFFFFF, 4) + "WAVE" + bytes);
  Index(FourCC("wv64"), Wave64Header(size) + bytes);
  RObject<CWindowsAudioFormat> format;
  if (CWindowsAudioFormat::Parse(data, static_cast<int>(size), format.Out()).Succeeded()) {
    RObject<CObject> extension(format->GetExtension());
    format->GetAudioFormat();
  }
  return 0;
}
