#include "System/Media/Filter/AudioConverters/AudioPropertiesConverter.h"

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/PropertiesExtension.h"
#include "System/VariantArray.h"
#include "gen/CodeBookProperty.h"

namespace Corvane::Mox {

namespace {

using Names = CodeBookProperty::AudioPropertiesConverter;

// Calls set(channel, value) for each entry of an array property.
template <class Setter>
void ApplyPerChannel(const CProperties* bag, const PropertyName& name, Setter set) {
  RObject<CVariant> value(bag->GetProperty(name));
  RObject<CVariantArray> values(value ? value->ToVariantArray() : nullptr);
  if (!values) return;
  for (int c = 0; c < values->GetCount() && c < CAudioProperties::MaximumChannels; ++c) {
    CVariant* item = nullptr;
    values->Get(c, item);
    RObject<CVariant> held(item);
    if (item) set(c, item);
  }
}

}  // namespace

CAudioPropertiesConverter::CAudioPropertiesConverter() : CAudioConverter(ComponentCode) {}

int CAudioPropertiesConverter::Evaluate(const CAudioProperties*) const { return Acceptable; }

CFormatList* CAudioPropertiesConverter::GetOutputFormats() const {
  auto* formats = new CFormatList();
  unsigned int format = 0;
  if (GetFourProperty(Names::Format, format).Failed() || format == 0) {
    const CAudioProperties* input = GetInputProperties();
    format = input ? input->GetFormat() : 0;
  }
  if (const unsigned int requested = GetRequestedOutputFormat()) format = requested;
  if (format) formats->AddValue(format);
  return formats;
}

Result CAudioPropertiesConverter::CreateOutputProperties(unsigned int format, CAudioProperties*& properties) const {
  properties = nullptr;
  RObject<CVariant> given(GetProperty(Names::MediaProperties));
  RObject<CObject> object(given ? given->ToObject() : nullptr);
  const auto* start = dynamic_cast<const CAudioProperties*>(object.Get());
  if (!start) start = GetInputProperties();
  if (!start) return ResultNullPointer("failed to create output properties");
  RObject<CAudioProperties> output(static_cast<CAudioProperties*>(CMediaProperties::Clone(start)));
  ApplyProperties(output);
  if (format) output->SetFormat(format);
  properties = output.Detach();
  return Result();
}

void CAudioPropertiesConverter::ApplyProperties(CAudioProperties* output) const {
  unsigned int format = 0;
  if (GetFourProperty(Names::Format, format).Succeeded() && format) output->SetFormat(format);
  long long number = 0;
  if (GetProperty(Names::SampleRate, number).Succeeded()) output->SetSampleRate(number);
  int channels = 0;
  if (GetProperty(Names::Channels, channels).Succeeded()) output->SetChannels(channels);
  ApplyPerChannel(this, Names::ChannelLabels, [&](int c, CVariant* v) { output->SetChannelLabel(c, v->ToInt32()); });
  ApplyPerChannel(this, Names::ChannelProgram, [&](int c, CVariant* v) { output->SetChannelProgram(c, v->ToInt32()); });
  ApplyPerChannel(this, Names::ChannelContent, [&](int c, CVariant* v) { output->SetChannelContent(c, v->ToInt32()); });
  ApplyPerChannel(this, Names::ChannelCoding, [&](int c, CVariant* v) { output->SetChannelCoding(c, v->ToFour()); });
  unsigned short code = 0;
  if (GetProperty(Names::Language, code).Succeeded()) output->SetLanguage(code);
  if (GetProperty(Names::Region, code).Succeeded()) output->SetRegion(code);
  if (GetProperty(Names::BitRate, number).Succeeded()) output->SetBitRate(number);
  if (GetProperty(Names::Duration, number).Succeeded()) output->SetDuration(number);
}

Result CAudioPropertiesConverter::Initialize() {
  // Extensions the new description lacks (decoder configuration, Broadcast
  // Wave fields, ...) still describe the same samples.
  const CAudioProperties* input = GetInputProperties();
  CAudioProperties* output = GetOutputProperties();
  if (!input || !output) return Result();
  RObject<CList<CMediaPropertiesExtension>> extensions(input->GetExtensions());
  if (!extensions) return Result();
  for (int i = 0; i < extensions->GetCount(); ++i) {
    RObject<CMediaPropertiesExtension> extension;
    extensions->Get(i, extension.Out());
    if (extension && !output->ContainsExtension(extension->GetType())) output->AddExtension(extension);
  }
  return Result();
}

Result CAudioPropertiesConverter::ProcessSample(CAudioSample* sample) {
  if (sample) EnqueueOutputSample(sample);
  return Result();
}

}  // namespace Corvane::Mox
