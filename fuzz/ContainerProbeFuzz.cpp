// Arbitrary bytes as a media file: probing must choose a reader or none, and
// the chosen reader must index the stream and hand out every sample's bytes
// with a Result, never crash, hang or leak. The Y4M reader sees most inputs
// through the "YUV4MPEG2 " prefix the harness adds to every other one.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "System/IO/MemoryStream.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/DataReference.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Video/VideoSample.h"
#include "gen/ContainerProperty.h"

using namespace Corvane::Mox;

namespace {

void ReadEverything(CContainerReader* reader) {
  for (int track = 0; track < reader->GetVideoMediaCount(); ++track) {
    for (;;) {
      RObject<CVideoSample> sample;
      if (reader->ReadVideoSample(track, sample.Out()).Failed() || !sample) break;
      if (reader->ReadVideoData(track, sample).Failed()) continue;
      // The bytes read must be the bytes the index promised.
      if (RObject<CDataReference>(sample->GetDataReference(FourCC("read")))) std::abort();
    }
  }
}

void Probe(const std::string& bytes) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  if (!bytes.empty()) stream->Write(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
  RObject<CContainerReader> reader(CContainerReaderInventory::Create(stream.Get()));
  if (!reader) return;
  RObject<CContainerContext> context(new CContainerStreamContext(stream));
  reader->SetContext(context);
  // A small queue makes the index thread and this consumer take turns.
  reader->SetProperty(ContainerProperty::Container::QueueSize, 2);
  if (reader->BeginIndex().Succeeded()) ReadEverything(reader);
  reader->EndIndex();
  CVariance::Clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 1 << 20) return 0;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  Probe(bytes);
  Probe("YUV4MPEG2 " + bytes);
  return 0;
}
