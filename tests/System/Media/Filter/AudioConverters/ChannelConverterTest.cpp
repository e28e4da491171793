// The deinterleave and properties converters: how outputs are formed from
// the properties, and the bytes each output receives.

#include <string>

#include "AudioConverterTestSupport.h"
#include <functional>

#include "System/ByteArray.h"
#include "System/Media/Filter/AudioConverters/AudioPropertiesConverter.h"
#include "System/Media/Filter/AudioConverters/DeinterleaveConverter.h"
#include "System/Media/PropertiesExtension.h"
#include "System/VariantArray.h"
#include "gen/CodeBookProperty.h"

using namespace Corvane::Mox;
using namespace AudioTest;

namespace {

// Six channels of 16-bit samples whose values name frame and channel.
Bytes SixChannels(int frames) {
  std::vector<int16_t> values;
  for (int f = 0; f < frames; ++f)
    for (int c = 0; c < 6; ++c) values.push_back(static_cast<int16_t>(100 * f + c));
  return Pack(values);
}

CVariantArray* Ints(std::initializer_list<int> values) {
  auto* array = new CVariantArray(static_cast<int>(values.size()));
  int i = 0;
  for (int v : values) {
    RObject<CVariant> item(new CVariant(v));
    array->Set(i++, item);
  }
  return array;
}

std::string Thrown(const std::function<void()>& action) {
  try {
    action();
  } catch (const Result& failure) {
    return failure.GetDetails() ? failure.GetDetails() : "";
  }
  return "";
}

}  // namespace

TEST(DeinterleaveConverter, SixChannelsByFourIsRefusedWithTheMultipleMessage) {
  CDeinterleaveConverter converter;
  converter.SetProperty(CodeBookProperty::DeinterleaveConverter::Channels, 4);
  RObject<CAudioProperties> input(Describe(FourCC("sowt"), 6));
  EXPECT_EQ(Thrown([&] { converter.AddInputMedia(input); }),
            "output channels, 4, is not a multiple of input channels, 6");
}

TEST(DeinterleaveConverter, SixChannelsByTwoMakeThreeStereoOutputsWithTheirLabels) {
  CDeinterleaveConverter converter;
  converter.SetProperty(CodeBookProperty::DeinterleaveConverter::Channels, 2);
  RObject<CAudioProperties> input(Describe(FourCC("sowt"), 6));
  for (int c = 0; c < 6; ++c) input->SetChannelLabel(c, c + 1);
  converter.AddInputMedia(input);
  ASSERT_TRUE(converter.Begin().Succeeded());
  ASSERT_EQ(converter.GetOutputMediaCount(), 3);

  RObject<CAudioSample> sample(SampleOver(SixChannels(3), 3));
  sample->SetTime(960);
  converter.WriteSample(sample);
  for (int k = 0; k < 3; ++k) {
    RObject<CAudioProperties> output(static_cast<CAudioProperties*>(converter.GetOutputMedia(k)));
    EXPECT_EQ(output->GetChannels(), 2);
    EXPECT_EQ(output->GetChannelLabel(0), 2 * k + 1);
    EXPECT_EQ(output->GetChannelLabel(1), 2 * k + 2);
    CMediaSample* read = nullptr;
    converter.ReadSample(k, read);
    RObject<CMediaSample> out(read);
    ASSERT_TRUE(out) << k;
    EXPECT_EQ(out->GetTime(), 960);
    EXPECT_EQ(out->GetDuration(), 3);
    const std::vector<int16_t> values = Unpack<int16_t>(BytesOf(out));
    const std::vector<int16_t> expected = {
        static_cast<int16_t>(2 * k), static_cast<int16_t>(2 * k + 1), static_cast<int16_t>(100 + 2 * k),
        static_cast<int16_t>(101 + 2 * k), static_cast<int16_t>(200 + 2 * k), static_cast<int16_t>(201 + 2 * k)};
    EXPECT_EQ(values, expected) << k;
  }
}

TEST(DeinterleaveConverter, AnArrayOfCountsSplitsUnevenly) {
  CDeinterleaveConverter converter;
  RObject<CVariantArray> counts(Ints({1, 3}));
  converter.SetProperty(CodeBookProperty::DeinterleaveConverter::Channels, counts.Get());
  RObject<CAudioProperties> input(Describe(FourCC("sowt"), 6));
  converter.AddInputMedia(input);
  ASSERT_TRUE(converter.Begin().Succeeded());
  ASSERT_EQ(converter.GetOutputMediaCount(), 2);
  RObject<CAudioSample> sample(SampleOver(SixChannels(2), 2));
  converter.WriteSample(sample);
  CMediaSample* first = nullptr;
  CMediaSample* second = nullptr;
  converter.ReadSample(0, first);
  converter.ReadSample(1, second);
  RObject<CMediaSample> a(first), b(second);
  EXPECT_EQ(Unpack<int16_t>(BytesOf(a)), (std::vector<int16_t>{0, 100}));
  EXPECT_EQ(Unpack<int16_t>(BytesOf(b)), (std::vector<int16_t>{1, 2, 3, 101, 102, 103}));
}

TEST(DeinterleaveConverter, VariantsNameChannelsAndLanguagePerOutput) {
  CDeinterleaveConverter converter;
  RObject<CProperties> stereo(new CProperties());
  stereo->SetProperty(CodeBookProperty::DeinterleaveConverter::Channels, 2);
  stereo->SetProperty(CodeBookProperty::DeinterleaveConverter::Language,
                      static_cast<unsigned short>(CMediaProperties::PackLanguageCode('f', 'r', 'a')));
  stereo->SetProperty(CodeBookProperty::AudioConverter::GetChannelLabel(1), 42);
  RObject<CProperties> mono(new CProperties());
  RObject<CVariantArray> variants(new CVariantArray(2));
  RObject<CVariant> first(new CVariant(stereo.Get())), second(new CVariant(mono.Get()));
  variants->Set(0, first);
  variants->Set(1, second);
  converter.SetProperty(CodeBookProperty::DeinterleaveConverter::Variants, variants.Get());
  RObject<CAudioProperties> input(Describe(FourCC("23lf"), 4));
  converter.AddInputMedia(input);
  ASSERT_EQ(converter.GetOutputMediaCount(), 2);
  RObject<CAudioProperties> a(static_cast<CAudioProperties*>(converter.GetOutputMedia(0)));
  RObject<CAudioProperties> b(static_cast<CAudioProperties*>(converter.GetOutputMedia(1)));
  EXPECT_EQ(a->GetChannels(), 2);
  EXPECT_EQ(a->GetLanguage(), CMediaProperties::PackLanguageCode('f', 'r', 'a'));
  EXPECT_EQ(a->GetChannelLabel(1), 42);
  EXPECT_EQ(b->GetChannels(), 1);
  EXPECT_EQ(b->GetFormat(), FourCC("23lf"));
}

TEST(AudioPropertiesConverter, RewritesTheDescriptionAndPassesSamplesUntouched) {
  CAudioPropertiesConverter converter;
  converter.SetFourProperty(CodeBookProperty::AudioPropertiesConverter::Format, FourCC("twos"));
  converter.SetProperty(CodeBookProperty::AudioPropertiesConverter::SampleRate, 44100LL);
  RObject<CVariantArray> labels(Ints({3, 4}));
  converter.SetProperty(CodeBookProperty::AudioPropertiesConverter::ChannelLabels, labels.Get());
  RObject<CAudioProperties> input(Describe(FourCC("sowt"), 2));
  RObject<CByteArray> configuration(new CByteArray(reinterpret_cast<const unsigned char*>("cfg"), 3));
  RObject<CDecoderBufferProperties> extension(new CDecoderBufferProperties(configuration));
  input->AddExtension(extension);
  EXPECT_EQ(converter.Evaluate(input.Get()), CMediaFilter::Acceptable);
  converter.AddInputMedia(input);
  ASSERT_TRUE(converter.Begin().Succeeded());
  CAudioProperties* output = converter.GetOutputProperties();
  ASSERT_TRUE(output);
  EXPECT_EQ(output->GetFormat(), FourCC("twos"));
  EXPECT_EQ(output->GetSampleRate(), 44100);
  EXPECT_EQ(output->GetChannelLabel(0), 3);
  EXPECT_EQ(output->GetChannelLabel(1), 4);
  EXPECT_TRUE(output->ContainsExtension(CDecoderBufferProperties::TypeCode));

  RObject<CAudioSample> sample(SampleOver(Pack<int16_t>({1, 2}), 1));
  converter.WriteSample(sample);
  CAudioSample* out = nullptr;
  converter.ReadSample(out);
  RObject<CAudioSample> passed(out);
  EXPECT_EQ(passed.Get(), sample.Get());
}
