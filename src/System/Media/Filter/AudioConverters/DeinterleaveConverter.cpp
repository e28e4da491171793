#include "System/Media/Filter/AudioConverters/DeinterleaveConverter.h"

#include <cstring>
#include <limits>

#include "System/Collections/Value.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/LockedDataReference.h"
#include "System/VariantArray.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

namespace {

using Names = CodeBookProperty::DeinterleaveConverter;

// The formats whose samples are whole bytes: any of them splits by copying
// each channel's bytes.
CFormatList* PcmFormats() {
  static const unsigned int kFormats[] = {
      FourCC("raw "), FourCC("int8"), FourCC("sowt"), FourCC("twos"), FourCC("02ni"), FourCC("in20"),
      FourCC("42ni"), FourCC("in24"), FourCC("u24l"), FourCC("u24b"), FourCC("23ni"), FourCC("in32"),
      FourCC("23lf"), FourCC("fl32"), FourCC("46lf"), FourCC("fl64"), FourCC("alaw"), FourCC("ulaw")};
  CFormatList* list = new CFormatList();
  for (unsigned int format : kFormats) list->AddValue(format);
  return list;
}

}  // namespace

CDeinterleaveConverter::CDeinterleaveConverter() : CAudioFanOutConverter(ComponentCode) {}

CFormatList* CDeinterleaveConverter::GetInputFormats() const { return PcmFormats(); }

CFormatList* CDeinterleaveConverter::GetOutputFormats() const {
  CFormatList* list = new CFormatList();
  if (const CAudioProperties* input = GetInputProperties()) list->AddValue(input->GetFormat());
  return list;
}

Result CDeinterleaveConverter::CreateOutputProperties(std::vector<RObject<CAudioProperties>>& outputs) const {
  outputs.clear();
  if (!GetInputProperties()) return ResultNullPointer("failed to create output properties");
  return DescribeOutputs(outputs);
}

Result CDeinterleaveConverter::Initialize() {
  std::vector<RObject<CAudioProperties>> outputs;
  return CreateOutputProperties(outputs);
}

Result CDeinterleaveConverter::DescribeOutputs(std::vector<RObject<CAudioProperties>>& outputs) const {
  const int inputChannels = GetInputProperties()->GetChannels();
  RObject<CVariant> variants(GetProperty(Names::Variants));
  RObject<CVariantArray> variantList(variants ? variants->ToVariantArray() : nullptr);
  if (variantList) {
    int first = 0;
    for (int i = 0; i < variantList->GetCount(); ++i) {
      CVariant* item = nullptr;
      variantList->Get(i, item);
      RObject<CVariant> held(item);
      RObject<CProperties> variant(item ? item->ToProperties() : nullptr);
      int channels = 1;
      if (variant) variant->GetProperty(Names::Channels, channels);
      Result added = AddOutput(outputs, channels, first, variant);
      if (added.Failed()) return added;
      first += channels;
    }
    return Result();
  }
  RObject<CVariant> channelsValue(GetProperty(Names::Channels));
  RObject<CVariantArray> counts(channelsValue ? channelsValue->ToVariantArray() : nullptr);
  if (counts) {
    int first = 0;
    for (int i = 0; i < counts->GetCount(); ++i) {
      CVariant* item = nullptr;
      counts->Get(i, item);
      RObject<CVariant> held(item);
      const int channels = item ? item->ToInt32() : 1;
      Result added = AddOutput(outputs, channels, first, nullptr);
      if (added.Failed()) return added;
      first += channels;
    }
    return Result();
  }
  const int perOutput = channelsValue ? channelsValue->ToInt32() : 1;
  if (perOutput <= 0 || inputChannels % perOutput != 0)
    return ResultInvalidArgument("output channels, %d, is not a multiple of input channels, %d", perOutput,
                                 inputChannels);
  for (int first = 0; first < inputChannels; first += perOutput) {
    Result added = AddOutput(outputs, perOutput, first, nullptr);
    if (added.Failed()) return added;
  }
  return Result();
}

Result CDeinterleaveConverter::AddOutput(std::vector<RObject<CAudioProperties>>& outputs, int channels,
                                         int firstChannel, const CProperties* variant) const {
  const CAudioProperties* input = GetInputProperties();
  if (channels < 1 || firstChannel + channels > input->GetChannels())
    return ResultInvalidArgument("the outputs ask for more channels than the input has");
  RObject<CAudioProperties> output(static_cast<CAudioProperties*>(CMediaProperties::Clone(input)));
  output->SetChannels(channels);
  for (int c = 0; c < CAudioProperties::MaximumChannels; ++c) {
    const int source = firstChannel + c;
    const bool inside = c < channels && source < CAudioProperties::MaximumChannels;
    output->SetChannelLabel(c, inside ? input->GetChannelLabel(source) : 0);
    output->SetChannelProgram(c, inside ? input->GetChannelProgram(source) : 0);
    output->SetChannelContent(c, inside ? input->GetChannelContent(source) : 0);
    output->SetChannelCoding(c, inside ? input->GetChannelCoding(source) : 0);
  }
  output->SetBitRate(0);
  unsigned short language = 0;
  if (variant && variant->GetProperty(Names::Language, language).Succeeded()) output->SetLanguage(language);
  else if (GetProperty(Names::Language, language).Succeeded()) output->SetLanguage(language);
  if (variant) {
    for (int c = 0; c < channels; ++c) {
      int label = 0;
      if (variant->GetProperty(CodeBookProperty::AudioConverter::GetChannelLabel(c), label).Succeeded())
        output->SetChannelLabel(c, label);
    }
  }
  outputs.emplace_back(output);
  return Result();
}

Result CDeinterleaveConverter::Convert(CAudioSample* in) {
  if (!in) return ResultArgumentNull();
  const CAudioProperties* input = GetInputProperties();
  const int bytesPerValue = CAudioProperties::GetBytesPerSample(input->GetFormat());
  const int inputChannels = input->GetChannels();
  if (bytesPerValue <= 0 || inputChannels <= 0) return ResultNotSupported("the input is not byte-aligned PCM");
  RObject<CLockedDataReference> source(in->GetLockedDataReference(CDataReference::LockShared));
  if (!source) return ResultNullPointer("the sample has no data");
  const long long inputFrame = static_cast<long long>(bytesPerValue) * inputChannels;
  const long long frames = std::min(in->GetDuration(), source->GetLength() / inputFrame);
  const unsigned char* from = source->GetData();
  int first = 0;
  for (int k = 0; k < GetOutputMediaCount(); ++k) {
    RObject<CMediaProperties> media(GetOutputMedia(k));
    const int channels = static_cast<CAudioProperties*>(media.Get())->GetChannels();
    const long long outputFrame = static_cast<long long>(bytesPerValue) * channels;
    if (frames * outputFrame > std::numeric_limits<int>::max()) return ResultArgumentOutOfRange();
    CAudioSample* created = nullptr;
    Result made = CreateSample(static_cast<int>(frames * outputFrame), created);
    if (made.Failed()) return made;
    RObject<CAudioSample> sample(created);
    {
      RObject<CLockedDataReference> target(sample->GetLockedDataReference(CDataReference::LockExclusive));
      target->SetLength(static_cast<int>(frames * outputFrame));
      unsigned char* to = target->GetData();
      const long long offset = static_cast<long long>(first) * bytesPerValue;
      for (long long f = 0; f < frames; ++f)
        std::memcpy(to + f * outputFrame, from + f * inputFrame + offset, static_cast<size_t>(outputFrame));
    }
    Result copied = CopySampleMetadata(sample, in);
    if (copied.Failed()) return copied;
    sample->SetDuration(frames);
    EnqueueOutputSample(k, sample);
    first += channels;
  }
  return Result();
}

}  // namespace Corvane::Mox
