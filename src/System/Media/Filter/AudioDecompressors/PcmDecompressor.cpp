#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

#include <algorithm>
#include <limits>

#include "System/ByteArray.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/PropertiesExtension.h"

namespace Corvane::Mox {

namespace {

// The coefficient pairs every Microsoft ADPCM encoder writes; used when a
// description arrives without its format structure.
const unsigned char kStandardAdpcmExtra[] = {
    0xF4, 0x01, 0x07, 0x00,  // 500 frames per block, 7 pairs
    0x00, 0x01, 0x00, 0x00, 0x00, 0x02, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00,
    0xC0, 0x00, 0x40, 0x00, 0xF0, 0x00, 0x00, 0x00, 0xCC, 0x01, 0x30, 0xFF, 0x88, 0x01, 0x18, 0xFF};

}  // namespace

int CPcmDecompressor::GetInputChannels() const {
  const CAudioProperties* input = GetInputProperties();
  return input ? input->GetChannels() : 0;
}

CWindowsAudioFormat* CPcmDecompressor::CreateWindowsFormat() const {
  const CAudioProperties* input = GetInputProperties();
  if (!input) return nullptr;
  RObject<CMediaPropertiesExtension> extension(input->GetExtension(CDecoderBufferProperties::TypeCode));
  if (auto* buffer = dynamic_cast<CDecoderBufferProperties*>(extension.Get())) {
    RObject<CByteArray> bytes(buffer->GetDecoderBuffer());
    CWindowsAudioFormat* format = nullptr;
    if (bytes && CWindowsAudioFormat::Parse(bytes, format).Succeeded() && format) return format;
  }
  // No structure: describe the stream as its WAVE header would.
  auto* format = new CWindowsAudioFormat();
  const unsigned int code = input->GetFormat();
  const bool microsoft = (code & 0xFFFF0000u) == CWindowsAudioFormat::MicrosoftPrefix;
  format->SetFormatTag(static_cast<unsigned short>(microsoft ? code & 0xFFFF : 0));
  format->SetChannels(input->GetChannels());
  format->SetSamplesPerSecond(static_cast<unsigned int>(input->GetSampleRate()));
  format->SetBlockAlignment(input->GetBytesPerPacket() > 0 ? input->GetBytesPerPacket() : input->GetChannels());
  format->SetBitsPerSample(input->GetBitsPerSample());
  const int frames = input->GetFramesPerPacket();
  if (code == 0x6D730002u) {
    unsigned char extra[sizeof(kStandardAdpcmExtra)];
    std::copy(std::begin(kStandardAdpcmExtra), std::end(kStandardAdpcmExtra), extra);
    if (frames > 0) extra[0] = static_cast<unsigned char>(frames), extra[1] = static_cast<unsigned char>(frames >> 8);
    format->SetExtraBytes(extra, static_cast<int>(sizeof(extra)));
  } else if (code == 0x6D730011u && frames > 0) {
    const unsigned char extra[] = {static_cast<unsigned char>(frames), static_cast<unsigned char>(frames >> 8)};
    format->SetExtraBytes(extra, 2);
  }
  return format;
}

Result CPcmDecompressor::CreateOutputProperties(unsigned int format, CAudioProperties*& properties) const {
  properties = nullptr;
  const CAudioProperties* input = GetInputProperties();
  if (!input) return ResultNullPointer("failed to create output properties");
  RObject<CAudioProperties> output(static_cast<CAudioProperties*>(CMediaProperties::Clone(input)));
  output->SetFormat(format);
  output->SetBitsPerSample(16);
  output->SetFramesPerPacket(1);
  output->SetBytesPerFrame(2 * input->GetChannels());
  output->SetBytesPerPacket(2 * input->GetChannels());
  output->SetBitRate(0);
  // The codec's configuration does not describe PCM.
  output->RemoveExtension(CDecoderBufferProperties::TypeCode);
  output->RemoveExtension(FourCC("gce "));
  properties = output.Detach();
  return Result();
}

Result CPcmDecompressor::Decompress(CAudioSample* in, CAudioSample*& out) {
  out = nullptr;
  if (!in) return ResultArgumentNull();
  RObject<CLockedDataReference> source(in->GetLockedDataReference(CDataReference::LockShared));
  if (!source) return ResultNullPointer("the compressed sample has no data");
  const int length = source->GetLength();
  const long long channels = std::max(1, GetInputChannels());
  const long long capacity = GetOutputFrames(length) * channels * 2;
  if (capacity < 0 || capacity > std::numeric_limits<int>::max()) return ResultArgumentOutOfRange("the sample is too large");
  CAudioSample* created = nullptr;
  Result made = CreateSample(static_cast<int>(capacity), created);
  if (made.Failed()) return made;
  RObject<CAudioSample> result(created);
  RObject<CDataReference> data(result->GetDataReference());
  if (!data || !data->IsType(FourCC("byte"))) return ResultNotSupported("the output sample is not a byte buffer");
  long long frames = 0;
  {
    RObject<CLockedDataReference> target(result->GetLockedDataReference(CDataReference::LockExclusive));
    Result decoded = DecodeBuffer(target->GetData(), frames, source->GetData(), length);
    if (decoded.Failed()) return decoded;
    // A reader that knows the stream ends inside the last block says so by
    // the sample's duration.
    if (in->GetDuration() > 0) frames = std::min(frames, in->GetDuration());
    target->SetLength(static_cast<int>(frames * channels * 2));
  }
  Result copied = CopySampleMetadata(result, in);
  if (copied.Failed()) return copied;
  result->SetDuration(frames);
  out = result.Detach();
  return Result();
}

}  // namespace Corvane::Mox
