// The typed, media-kind and transform layers and the families: type checks,
// equivalent formats, configuration tables narrowed by "OutputFormat",
// Begin's choice of output, gaps filled with black or silence, compute
// selection and the metadata queues.

#include <gtest/gtest.h>

#include <string>

#include "System/Collections/ArrayList.h"
#include "System/FourString.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/MemoryContext.h"
#include "System/Media/DataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Metadata/Metadata.h"

using namespace Corvane::Mox;

namespace {

VideoConfiguration Video(const char* format) {
  VideoConfiguration configuration;
  configuration.SetFormat(static_cast<int>(FourString::ToFour(format)));
  return configuration;
}

// I420 and NV12 in; UYVY and v210 out, NV12 only to UYVY.
const ConfigurationRow<VideoConfiguration> kRows[] = {
    {Video("I420"), Video("UYVY")},
    {Video("I420"), Video("v210")},
    {Video("NV12"), Video("UYVY")},
    {VideoConfiguration(), VideoConfiguration()},
};

class CTableConverter : public CVideoConverter {
 public:
  CTableConverter() : CVideoConverter(FourCC("tbcv")) {}
  const Row* GetConfigurationTable() const override { return kRows; }

  int converted = 0;
  long long lastDuration = 0;

 protected:
  using CVideoConverter::Convert;
  Result Convert(CVideoSample* sample, CVideoSample*& out) override {
    ++converted;
    lastDuration = sample->GetDuration();
    return CVideoConverter::Convert(sample, out);
  }
};

// Lists formats instead of a table.
class CListConverter : public CVideoConverter {
 public:
  CListConverter() : CVideoConverter(FourCC("lscv")) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("avc1"));
    return formats;
  }
};

class CPcmConverter : public CAudioConverter {
 public:
  CPcmConverter() : CAudioConverter(FourCC("pcmc")) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("sowt"));
    return formats;
  }
  CFormatList* GetOutputFormats() const override { return GetInputFormats(); }
};

CVideoProperties* Picture(const char* format, int width = 16, int height = 4) {
  auto* properties = new CVideoProperties();
  properties->SetFormat(FourString::ToFour(format));
  properties->SetWidth(width);
  properties->SetHeight(height);
  return properties;
}

CAudioProperties* Sound(const char* format, int channels) {
  auto* properties = new CAudioProperties();
  properties->SetFormat(FourString::ToFour(format));
  properties->SetChannels(channels);
  properties->SetSampleRate(48000);
  return properties;
}

std::string DetailsOf(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }

std::string Formats(CFormatList* list) {
  RObject<CFormatList> held(list);
  std::string text;
  for (CValue<unsigned int>* value : *held) {
    char code[5];
    FourCCToChars(value->GetValue(), code);
    text += std::string(code, 4) + " ";
  }
  return text;
}

// The bytes of a sample's data.
std::vector<unsigned char> Bytes(CMediaSample* sample) {
  RObject<CDataReference> reference(sample->GetDataReference());
  if (!reference) return {};
  return std::vector<unsigned char>(reference->GetData(), reference->GetData() + reference->GetLength());
}

// Holds every picture back until drained; counts what it decompressed.
class CHoldingDecompressor : public CVideoDecompressor {
 public:
  CHoldingDecompressor() : CVideoDecompressor(FourCC("hldd")) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("avc1"));
    return formats;
  }
  CFormatList* GetOutputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("I420"));
    return formats;
  }
  int decompressed = 0;
  std::vector<RObject<CVideoSample>> held;

 protected:
  using CVideoDecompressor::Decompress;
  Result Decompress(CVideoSample* sample, CVideoSample*& out) override {
    ++decompressed;
    sample->Acquire();
    held.emplace_back(sample);
    out = nullptr;
    return Result();
  }
  Result Drain(bool) override {
    for (RObject<CVideoSample>& sample : held) EnqueueOutputSample(sample.Get());
    held.clear();
    return Result();
  }
};

// Splits stereo into two mono outputs.
class CSplitter : public CAudioFanOutConverter {
 public:
  CSplitter() : CAudioFanOutConverter(FourCC("splt")) {}
  CFormatList* GetInputFormats() const override {
    auto* formats = new CFormatList();
    formats->AddValue(FourCC("sowt"));
    return formats;
  }
  Result CreateOutputProperties(std::vector<RObject<CAudioProperties>>& outputs) const override {
    outputs.clear();
    for (int i = 0; i < GetInputProperties()->GetChannels(); ++i) {
      outputs.emplace_back(static_cast<CAudioProperties*>(CMediaProperties::Clone(GetInputProperties())));
      outputs.back()->SetChannels(1);
    }
    return Result();
  }
};

class FilterFamiliesTest : public LeakCheckedTest {};

}  // namespace

TEST_F(FilterFamiliesTest, AVideoFilterRefusesAudioAndTakesEquivalentFormats) {
  RObject<CListConverter> filter(new CListConverter());
  RObject<CAudioProperties> audio(Sound("sowt", 2));
  EXPECT_EQ(filter->Evaluate(audio), 0);
  EXPECT_EQ(filter->AddInputMedia(static_cast<CMediaProperties*>(audio.Get())), ResultTypeMismatch());
  EXPECT_EQ(filter->AddInputMedia(static_cast<CMediaProperties*>(nullptr)), ResultArgumentNull());
  // "avc3" is another name of the listed "avc1".
  RObject<CVideoProperties> avc3(Picture("avc3"));
  EXPECT_EQ(filter->Evaluate(avc3), CMediaFilter::Acceptable);
  RObject<CVideoProperties> hevc(Picture("hvc1"));
  EXPECT_EQ(filter->Evaluate(hevc), 0);
}

TEST_F(FilterFamiliesTest, TablesGiveFormatsNarrowedByTheRequestedOutput) {
  RObject<CTableConverter> filter(new CTableConverter());
  EXPECT_EQ(Formats(filter->GetInputFormats()), "I420 NV12 ");
  filter->SetOutputFormat(FourCC("v210"));
  EXPECT_EQ(Formats(filter->GetInputFormats()), "I420 ");
  RObject<CArrayList<CVideoConfiguration>> inputs(filter->GetInputConfigurations());
  EXPECT_EQ(inputs->GetCount(), 1);
  filter->RemoveProperty(CodeBookProperty::MediaFilter::OutputFormat);

  RObject<CVideoProperties> nv12(Picture("NV12"));
  filter->AddInputMedia(nv12.Get());
  EXPECT_EQ(Formats(filter->GetOutputFormats()), "UYVY ");
  RObject<CVideoProperties> i420(Picture("I420"));
  filter->AddInputMedia(i420.Get());
  EXPECT_EQ(Formats(filter->GetOutputFormats()), "UYVY v210 ");
  EXPECT_EQ(filter->GetInputMediaCount(), 1);
  RObject<CVideoProperties> yv12(Picture("UYVY"));
  EXPECT_EQ(filter->Evaluate(yv12), 0);
}

TEST_F(FilterFamiliesTest, BeginChoosesTheFirstOutputUnlessTold) {
  RObject<CTableConverter> filter(new CTableConverter());
  RObject<CVideoProperties> i420(Picture("I420"));
  filter->AddInputMedia(i420.Get());
  // The output is described before Begin, for the current choice.
  RObject<CMediaProperties> planned(filter->GetOutputMedia(0));
  ASSERT_TRUE(planned);
  EXPECT_EQ(planned->GetFormat(), FourCC("UYVY"));
  filter->SetOutputFormat(FourCC("v210"));
  RObject<CMediaProperties> replanned(filter->GetOutputMedia(0));
  EXPECT_EQ(replanned->GetFormat(), FourCC("v210"));

  filter->SetOutputFormat(FourCC("NV12"));
  EXPECT_EQ(DetailsOf(filter->Begin()), "the output format is not acceptable");
  EXPECT_EQ(filter->GetOutputMedia(0), nullptr);
  filter->RemoveProperty(CodeBookProperty::MediaFilter::OutputFormat);
  ASSERT_TRUE(filter->Begin().Succeeded());
  EXPECT_EQ(filter->GetOutputFormat(), FourCC("UYVY"));
  EXPECT_EQ(filter->GetOutputProperties()->GetWidth(), 16);
  filter->End();

  RObject<CTableConverter> refusing(new CTableConverter());
  RObject<CVideoProperties> uyvy(Picture("UYVY"));
  refusing->SetInputProperties(uyvy);
  std::string thrown;
  try {
    refusing->Begin();
  } catch (const Result& result) {
    thrown = DetailsOf(result);
  }
  EXPECT_EQ(thrown, "the input properties are not acceptable");
}

TEST_F(FilterFamiliesTest, AVideoGapBecomesOneBlackPictureOfItsDuration) {
  RObject<CTableConverter> filter(new CTableConverter());
  RObject<CVideoProperties> i420(Picture("I420", 4, 2));
  i420->SetFrameDuration(417083);
  filter->AddInputMedia(i420.Get());
  ASSERT_TRUE(filter->Begin().Succeeded());
  RObject<CVideoSample> gap(new CVideoSample(7, 1001, 0));
  gap->SetTime(5005);
  filter->WriteSample(0, gap.Get());
  ASSERT_EQ(filter->converted, 1);
  EXPECT_EQ(filter->lastDuration, 1001);
  CVideoSample* out = nullptr;
  filter->ReadSample(out);
  RObject<CVideoSample> black(out);
  ASSERT_TRUE(black);
  EXPECT_EQ(black->GetDuration(), 1001);
  EXPECT_EQ(black->GetTime(), 5005);
  EXPECT_EQ(black->GetFrameNumber(), 7);
  // 4x2 I420: eight luma bytes at 16, then 2x1 U and 2x1 V at 128.
  EXPECT_EQ(Bytes(black), (std::vector<unsigned char>{16, 16, 16, 16, 16, 16, 16, 16, 128, 128, 128, 128}));
  filter->End();
}

TEST_F(FilterFamiliesTest, AnAudioGapBecomesSilenceInTheInputFormat) {
  RObject<CPcmConverter> filter(new CPcmConverter());
  RObject<CAudioProperties> pcm(Sound("sowt", 2));
  filter->AddInputMedia(pcm.Get());
  ASSERT_TRUE(filter->Begin().Succeeded());
  RObject<CAudioSample> gap(new CAudioSample(3LL));
  filter->WriteSample(0, gap.Get());
  CAudioSample* out = nullptr;
  filter->ReadSample(out);
  RObject<CAudioSample> silent(out);
  ASSERT_TRUE(silent);
  EXPECT_EQ(silent->GetDuration(), 3);
  EXPECT_EQ(Bytes(silent), std::vector<unsigned char>(12, 0));
  filter->End();
}

TEST_F(FilterFamiliesTest, SilenceSitsAtEachFormatsZero) {
  RObject<CPcmConverter> filter(new CPcmConverter());
  filter->SetMemoryContext(nullptr);
  RObject<CAudioProperties> pcm(Sound("sowt", 1));
  filter->AddInputMedia(pcm.Get());
  filter->Begin();
  struct Case {
    const char* format;
    std::vector<unsigned char> frame;
  };
  // Two frames of one channel each.
  const Case cases[] = {
      {"raw ", {0x80, 0x80}},                          // unsigned 8-bit midpoint
      {"u16l", {0x00, 0x80, 0x00, 0x80}},              // 0x8000 little-endian
      {"u16b", {0x80, 0x00, 0x80, 0x00}},              // 0x8000 big-endian
      {"u24l", {0, 0, 0x80, 0, 0, 0x80}},              // 0x800000 little-endian
      {"alaw", {0xD5, 0xD5}},                          // G.711 A-law code of zero
      {"ulaw", {0xFF, 0xFF}},                          // G.711 mu-law code of zero
      {"twos", {0, 0, 0, 0}},                          // signed: zero
      {"fl32", {0, 0, 0, 0, 0, 0, 0, 0}},              // float: zero
  };
  for (const Case& c : cases) {
    RObject<CAudioSample> silent(filter->CreateSilentSample(2, 1, FourString::ToFour(c.format)));
    EXPECT_EQ(Bytes(silent), c.frame) << c.format;
  }
  CAudioSample* none = nullptr;
  EXPECT_EQ(DetailsOf(filter->CreateSilentSample(2, 1, FourCC("mp4a"), none)), "unsupported audio format, 'mp4a'");
  filter->End();
}

TEST_F(FilterFamiliesTest, BlackPicturesFollowEachPixelLayout) {
  RObject<CTableConverter> filter(new CTableConverter());
  RObject<CVideoProperties> i420(Picture("I420"));
  filter->AddInputMedia(i420.Get());
  filter->Begin();
  auto black = [&](CVideoProperties* properties) {
    RObject<CVideoProperties> held(properties);
    CVideoSample* sample = nullptr;
    Result made = filter->CreateBlackSample(held, nullptr, sample);
    RObject<CVideoSample> owned(sample);
    EXPECT_TRUE(made.Succeeded()) << DetailsOf(made);
    return owned ? Bytes(owned) : std::vector<unsigned char>();
  };
  // UYVY 2x1: U Y V Y at 128 16 128 16.
  EXPECT_EQ(black(Picture("UYVY", 2, 1)), (std::vector<unsigned char>{128, 16, 128, 16}));
  // Full range luma is 0.
  RObject<CVideoProperties> full(Picture("J420", 2, 2));
  full->SetVideoRange(2);
  full->Acquire();
  EXPECT_EQ(black(full), (std::vector<unsigned char>{0, 0, 0, 0, 128, 128}));
  // 10-bit little-endian planar: luma 64 (0x0040), chroma 512 (0x0200).
  EXPECT_EQ(black(Picture("I0AL", 2, 2)),
            (std::vector<unsigned char>{0x40, 0, 0x40, 0, 0x40, 0, 0x40, 0, 0x00, 0x02, 0x00, 0x02}));
  // BGRA: black with opaque alpha.
  RObject<CVideoProperties> bgra(Picture("BGRA", 1, 1));
  bgra->SetVideoRange(2);
  bgra->Acquire();
  EXPECT_EQ(black(bgra), (std::vector<unsigned char>{0, 0, 0, 255}));
  // v210: six pixels in four words Cb Y Cr | Y Cb Y | Cr Y Cb | Y Cr Y, 10 bits each.
  std::vector<unsigned char> v210 = black(Picture("v210", 6, 1));
  ASSERT_GE(v210.size(), 16u);
  const unsigned int word0 = v210[0] | v210[1] << 8 | v210[2] << 16 | static_cast<unsigned int>(v210[3]) << 24;
  const unsigned int word1 = v210[4] | v210[5] << 8 | v210[6] << 16 | static_cast<unsigned int>(v210[7]) << 24;
  EXPECT_EQ(word0, 512u | 64u << 10 | 512u << 20);
  EXPECT_EQ(word1, 64u | 512u << 10 | 64u << 20);
  // 5-5-5-1 RGBA in little-endian words: only the alpha bit (the lowest) set.
  RObject<CVideoProperties> argb(Picture("5551", 1, 1));
  argb->SetVideoRange(2);
  argb->Acquire();
  EXPECT_EQ(black(argb), (std::vector<unsigned char>{0x01, 0x00}));

  RObject<CVideoProperties> compressed(Picture("avc1"));
  CVideoSample* none = nullptr;
  EXPECT_EQ(DetailsOf(filter->CreateBlackSample(compressed, nullptr, none)), "unsupported video format, 'avc1'");
  filter->End();
}

TEST_F(FilterFamiliesTest, SamplesNeedAMemoryContext) {
  RObject<CTableConverter> filter(new CTableConverter());
  CVideoSample* sample = nullptr;
  EXPECT_EQ(DetailsOf(filter->CreateSample(64, sample)), "memory context is null");
  EXPECT_EQ(sample, nullptr);
}

TEST_F(FilterFamiliesTest, CopySampleMetadataCopiesTimingAndPictureFields) {
  RObject<CTableConverter> filter(new CTableConverter());
  RObject<CVideoSample> from(new CVideoSample(12, 1001, 2));
  from->SetTime(3003);
  from->SetCompositionOffset(1001);
  from->SetTrim(1, 2);
  from->SetProperty("scene", 4);
  RObject<CMetadata> metadata(from->AddMetadata());
  metadata->SetDuration(9);
  RObject<CVideoSample> to(new CVideoSample(0, 0, 0));
  ASSERT_TRUE(filter->CopySampleMetadata(to, from).Succeeded());
  EXPECT_EQ(to->GetTime(), 3003);
  EXPECT_EQ(to->GetDuration(), 1001);
  EXPECT_EQ(to->GetFrameNumber(), 12);
  EXPECT_EQ(to->GetPictureType(), 2);
  EXPECT_EQ(to->GetCompositionOffset(), 1001);
  EXPECT_EQ(to->GetTrim().head, 1);
  int scene = 0;
  to->GetProperty("scene", scene);
  EXPECT_EQ(scene, 4);
  RObject<CMetadata> copied(to->GetMetadata());
  ASSERT_TRUE(copied);
  EXPECT_NE(copied.Get(), metadata.Get());  // a deep copy
  EXPECT_EQ(filter->CopySampleMetadata(nullptr, from), ResultArgumentNull());
}

TEST_F(FilterFamiliesTest, OnlyTheCpuComputesAndMetadataQueuesCarryFrames) {
  RObject<CTableConverter> filter(new CTableConverter());
  EXPECT_EQ(filter->GetComputeMode(), 0);
  CObject* device = nullptr;
  EXPECT_TRUE(filter->GetDeviceInterface(device).Succeeded());
  EXPECT_EQ(device, nullptr);
  filter->SetProperty(CodeBookProperty::SelectableCompute::ComputeMode, 1);
  EXPECT_EQ(DetailsOf(filter->GetDeviceInterface(device)), "unsupported ComputeMode 1");

  RObject<CVideoSample> bare(new CVideoSample(0, 1, 0));
  EXPECT_EQ(DetailsOf(filter->SplitAndEnqueueSampleMetadata(bare)), "sample metadata is null");
  RObject<CVideoSample> first(new CVideoSample(1, 1, 0));
  RObject<CMetadata> metadata(first->AddMetadata());
  metadata->SetDuration(77);
  ASSERT_TRUE(filter->SplitAndEnqueueSampleMetadata(first).Succeeded());
  EXPECT_EQ(filter->GetQueuedMetadataCount(), 1);
  RObject<CVideoSample> produced(new CVideoSample(1, 1, 0));
  ASSERT_TRUE(filter->DequeueAndMergeSampleMetadata(produced).Succeeded());
  RObject<CMetadata> merged(produced->GetMetadata());
  ASSERT_TRUE(merged);
  EXPECT_EQ(merged->GetDuration(), 77);
  EXPECT_EQ(filter->DequeueAndMergeSampleMetadata(produced), ResultFalse());
}

TEST_F(FilterFamiliesTest, ADecompressorDrainsBeforePuttingAGapStraightOut) {
  RObject<CHoldingDecompressor> decoder(new CHoldingDecompressor());
  RObject<CVideoProperties> avc(Picture("avc1", 2, 2));
  decoder->AddInputMedia(avc.Get());
  ASSERT_TRUE(decoder->Begin().Succeeded());
  RObject<CVideoSample> coded(new CVideoSample(1, 1001, 0));
  RObject<CDataReference> data(new CBufferDataReference(4));
  coded->SetDataReference(data);
  decoder->WriteSample(0, coded.Get());
  EXPECT_EQ(decoder->GetPendingOutputSampleCount(), 0);
  RObject<CVideoSample> gap(new CVideoSample(2, 1001, 0));
  decoder->WriteSample(0, gap.Get());
  EXPECT_EQ(decoder->decompressed, 1);  // the gap was not decompressed
  ASSERT_EQ(decoder->GetPendingOutputSampleCount(), 2);
  CVideoSample* first = nullptr;
  decoder->ReadSample(first);
  RObject<CVideoSample> heldFirst(first);
  EXPECT_EQ(first, coded.Get());  // the held picture first, in order
  CVideoSample* second = nullptr;
  decoder->ReadSample(second);
  RObject<CVideoSample> black(second);
  EXPECT_EQ(black->GetFrameNumber(), 2);
  // Black of the output description: 2x2 I420.
  EXPECT_EQ(Bytes(black), (std::vector<unsigned char>{16, 16, 16, 16, 128, 128}));
  decoder->End();
}

TEST_F(FilterFamiliesTest, AFanOutDescribesItsOutputsFromItsInput) {
  RObject<CSplitter> splitter(new CSplitter());
  RObject<CAudioProperties> stereo(Sound("sowt", 2));
  ASSERT_TRUE(splitter->AddInputMedia(stereo.Get()).Succeeded());
  ASSERT_EQ(splitter->GetOutputMediaCount(), 2);
  RObject<CMediaProperties> second(splitter->GetOutputMedia(1));
  EXPECT_EQ(static_cast<CAudioProperties*>(second.Get())->GetChannels(), 1);
  ASSERT_TRUE(splitter->Begin().Succeeded());
  EXPECT_EQ(splitter->GetOutputMediaCount(), 2);
  splitter->End();
}

TEST_F(FilterFamiliesTest, ARootFormatInTheListTakesItsWholeTree) {
  // "YUV " is the root of the uncompressed YUV formats: v210's canonical format.
  class CAnyYuv : public CVideoConverter {
   public:
    CAnyYuv() : CVideoConverter(FourCC("anyy")) {}
    CFormatList* GetInputFormats() const override {
      auto* formats = new CFormatList();
      formats->AddValue(FourCC("YUV "));
      return formats;
    }
  };
  RObject<CAnyYuv> filter(new CAnyYuv());
  RObject<CVideoProperties> v210(Picture("v210"));
  EXPECT_EQ(filter->Evaluate(v210), CMediaFilter::Acceptable);
  RObject<CVideoProperties> avc(Picture("avc1"));
  EXPECT_EQ(filter->Evaluate(avc), 0);
}

namespace {

// A context whose buffers live on a graphics device.
class CDeviceMemoryContext : public CHostMemoryContext {
 public:
  bool IsType(unsigned int type) const override {
    return type == FourCC("gctx") || CHostMemoryContext::IsType(type);
  }
};

}  // namespace

TEST_F(FilterFamiliesTest, OutputsMadeInAGraphicsContextNameIt) {
  RObject<CVideoProperties> i420(Picture("I420"));
  RObject<CTableConverter> host(new CTableConverter());
  host->AddInputMedia(i420.Get());
  ASSERT_TRUE(host->Begin().Succeeded());
  EXPECT_FALSE(host->GetOutputProperties()->ContainsExtension(FourCC("gce ")));
  host->End();

  RObject<CTableConverter> device(new CTableConverter());
  RObject<CDeviceMemoryContext> context(new CDeviceMemoryContext());
  device->SetMemoryContext(context);
  device->AddInputMedia(i420.Get());
  ASSERT_TRUE(device->Begin().Succeeded());
  RObject<CMediaProperties> output(device->GetOutputMedia(0));
  ASSERT_TRUE(output);
  EXPECT_TRUE(output->ContainsExtension(FourCC("gce ")));
  device->End();
}
