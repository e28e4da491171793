// Constant conversion tables and run-time conversion maps of the audio and
// subtitle filters.
#include <gtest/gtest.h>

#include "System/Collections/ArrayList.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Audio/AudioConfigurationMap.h"
#include "System/Media/Audio/AudioConfigurationTable.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Subtitle/SubtitleConfigurationMap.h"
#include "System/Media/Subtitle/SubtitleConfigurationTable.h"
#include "System/Media/Subtitle/SubtitleProperties.h"

using namespace Corvane::Mox;

namespace {

class ConfigurationTableTest : public LeakCheckedTest {};

int F(const char (&code)[5]) { return static_cast<int>(FourCC(code)); }

AudioConfiguration Audio(int format, int rate = 0, int channels = 0, int bits = 0) {
  AudioConfiguration c;
  c.format = format;
  c.sampleRate = rate;
  c.channels = channels;
  c.bitsPerSample = bits;
  return c;
}

// A converter's rows: big-endian 16-bit to two outputs, 24-bit to float,
// and little-endian 16-bit to float only when it is stereo.
const AudioConfigurationRow kRows[] = {
    {Audio(F("twos")), Audio(F("sowt"))},
    {Audio(F("twos")), Audio(F("fl32"))},
    {Audio(F("in24")), Audio(F("fl32"))},
    {Audio(F("sowt"), 0, 2), Audio(F("fl32"))},
    {Audio(0), Audio(0)},
};

SubtitleConfiguration Sub(int format, long long scale = 0) {
  SubtitleConfiguration c;
  c.format = format;
  c.timeScale = scale;
  return c;
}

CAudioProperties* NewAudio(const char (&format)[5], int channels) {
  auto* p = new CAudioProperties();
  p->SetFormat(FourCC(format));
  p->SetSampleRate(48000);
  p->SetChannels(channels);
  p->SetBitsPerSample(16);
  return p;
}

}  // namespace

TEST_F(ConfigurationTableTest, AudioTableListsFormatsInTableOrder) {
  RObject<CAudioConfigurationTable> table(new CAudioConfigurationTable(kRows));
  EXPECT_EQ(table->GetCount(), 4);  // the end row is not counted
  EXPECT_EQ(table->GetRow(4), nullptr);
  EXPECT_EQ(table->GetRow(-1), nullptr);
  EXPECT_EQ(table->GetRow(2)->input.format, F("in24"));
  unsigned int formats[4] = {};
  ASSERT_EQ(table->GetInputFormats(0, formats, 4), 3);  // "twos" once
  EXPECT_EQ(formats[0], FourCC("twos"));
  EXPECT_EQ(formats[1], FourCC("in24"));
  EXPECT_EQ(formats[2], FourCC("sowt"));
  ASSERT_EQ(table->GetInputFormats(FourCC("sowt"), formats, 4), 1);
  EXPECT_EQ(formats[0], FourCC("twos"));
  // A short buffer still reports how many there are.
  EXPECT_EQ(table->GetInputFormats(FourCC("fl32"), formats, 1), 3);
  EXPECT_EQ(table->GetInputFormats(FourCC("alaw"), formats, 4), 0);
  RObject<CAudioConfigurationTable> empty(new CAudioConfigurationTable(nullptr));
  EXPECT_EQ(empty->GetCount(), 0);
  EXPECT_EQ(empty->GetInputFormats(0, formats, 4), 0);
}

TEST_F(ConfigurationTableTest, AudioTableMatchesDescriptions) {
  RObject<CAudioConfigurationTable> table(new CAudioConfigurationTable(kRows));
  RObject<CAudioProperties> twos(NewAudio("twos", 6));
  EXPECT_EQ(table->Find(twos.Get(), 0), table->GetRow(0));
  EXPECT_EQ(table->Find(twos.Get(), FourCC("fl32")), table->GetRow(1));
  EXPECT_EQ(table->Find(twos.Get(), FourCC("in24")), nullptr);
  unsigned int formats[4] = {};
  ASSERT_EQ(table->GetOutputFormats(twos.Get(), formats, 4), 2);
  EXPECT_EQ(formats[0], FourCC("sowt"));
  EXPECT_EQ(formats[1], FourCC("fl32"));
  // The "sowt" row asks for stereo: six channels do not qualify, two do.
  RObject<CAudioProperties> sowt6(NewAudio("sowt", 6));
  EXPECT_EQ(table->Find(sowt6.Get(), 0), nullptr);
  RObject<CAudioProperties> sowt2(NewAudio("sowt", 2));
  EXPECT_EQ(table->Find(sowt2.Get(), FourCC("fl32")), table->GetRow(3));
  EXPECT_EQ(table->Find(nullptr, 0), nullptr);

  RObject<CArrayList<CAudioConfiguration>> inputs(table->GetInputConfigurations());
  ASSERT_EQ(inputs->GetCount(), 4);
  CAudioConfiguration* third = nullptr;
  ASSERT_TRUE(inputs->Get(3, third).Succeeded());
  EXPECT_EQ(third->GetConfiguration().channels, 2);
  third->Release();
  RObject<CAudioConfiguration> key(new CAudioConfiguration(Audio(F("twos"))));
  RObject<CArrayList<CAudioConfiguration>> outputs(table->GetOutputConfigurations(key.Get()));
  ASSERT_EQ(outputs->GetCount(), 2);
  RObject<CArrayList<CAudioConfiguration>> none(table->GetOutputConfigurations(nullptr));
  EXPECT_EQ(none->GetCount(), 0);
}

TEST_F(ConfigurationTableTest, AudioMapKeepsPairsOnceInFirstAddedOrder) {
  RObject<CAudioConfigurationMap> map(new CAudioConfigurationMap());
  AudioConfiguration stereo = Audio(F("sowt"), 48000, 2, 16);
  AudioConfiguration mono = Audio(F("sowt"), 48000, 1, 16);
  AudioConfiguration six = Audio(F("sowt"), 48000, 6, 16);
  EXPECT_EQ(map->Add(six, stereo), ResultOK());
  EXPECT_EQ(map->Add(stereo, mono), ResultOK());
  EXPECT_EQ(map->Add(six, mono), ResultOK());
  EXPECT_EQ(map->Add(six, stereo), ResultFalse());
  EXPECT_EQ(map->GetCount(), 2);
  EXPECT_TRUE(map->Contains(six, mono));
  EXPECT_FALSE(map->Contains(mono, six));
  RObject<CArrayList<CAudioConfiguration>> inputs(map->GetInputConfigurations());
  ASSERT_EQ(inputs->GetCount(), 2);
  CAudioConfiguration* first = nullptr;
  ASSERT_TRUE(inputs->Get(0, first).Succeeded());
  EXPECT_EQ(first->GetConfiguration().channels, 6);
  first->Release();
  RObject<CArrayList<CAudioConfiguration>> fromSix(map->GetOutputConfigurations(six));
  EXPECT_EQ(fromSix->GetCount(), 2);
  RObject<CArrayList<CAudioConfiguration>> unknown(map->GetOutputConfigurations(mono));
  EXPECT_EQ(unknown->GetCount(), 0);
  map->Clear();
  EXPECT_EQ(map->GetCount(), 0);
  EXPECT_FALSE(map->Contains(six, mono));
}

TEST_F(ConfigurationTableTest, AudioMapAnswersDescriptionsThroughPartialInputs) {
  RObject<CAudioConfigurationMap> map(new CAudioConfigurationMap());
  RObject<CAudioConfigurationTable> table(new CAudioConfigurationTable(kRows));
  ASSERT_TRUE(map->AddTable(table.Get()).Succeeded());
  EXPECT_EQ(map->AddTable(nullptr), ResultArgumentNull());
  EXPECT_EQ(map->GetCount(), 3);  // "twos", "in24", stereo "sowt"
  // "Anything but mono" (~1) also routes "twos" to 24-bit.
  map->Add(Audio(F("twos"), 0, ~1), Audio(F("in24")));
  map->Add(Audio(F("twos"), 0, ~1), Audio(F("fl32")));  // already an output of plain "twos"
  RObject<CAudioProperties> twos(NewAudio("twos", 2));
  RObject<CArrayList<CAudioConfiguration>> outputs(map->GetOutputConfigurations(twos.Get()));
  ASSERT_EQ(outputs->GetCount(), 3);  // sowt, fl32, in24 without the repeat
  CAudioConfiguration* last = nullptr;
  ASSERT_TRUE(outputs->Get(2, last).Succeeded());
  EXPECT_EQ(last->GetConfiguration().format, F("in24"));
  last->Release();
  RObject<CAudioProperties> monoTwos(NewAudio("twos", 1));
  RObject<CArrayList<CAudioConfiguration>> monoOutputs(map->GetOutputConfigurations(monoTwos.Get()));
  EXPECT_EQ(monoOutputs->GetCount(), 2);
}

TEST_F(ConfigurationTableTest, SubtitleTableAndMap) {
  const SubtitleConfigurationRow rows[] = {
      {Sub(F("c608"), 30000), Sub(F("tx3g"))},
      {Sub(F("c608")), Sub(F("wvtt"))},
      {Sub(F("tx3g")), Sub(F("wvtt"))},
      {Sub(0), Sub(0)},
  };
  RObject<CSubtitleConfigurationTable> table(new CSubtitleConfigurationTable(rows));
  EXPECT_EQ(table->GetCount(), 3);
  unsigned int formats[3] = {};
  ASSERT_EQ(table->GetInputFormats(FourCC("wvtt"), formats, 3), 2);
  EXPECT_EQ(formats[0], FourCC("c608"));
  EXPECT_EQ(formats[1], FourCC("tx3g"));
  RObject<CSubtitleProperties> captions(new CSubtitleProperties());
  captions->SetFormat(FourCC("c608"));
  captions->SetTimeScale(25);
  // The 30000-unit row does not take a 25-unit stream; the open one does.
  EXPECT_EQ(table->Find(captions.Get(), 0), table->GetRow(1));
  captions->SetTimeScale(30000);
  EXPECT_EQ(table->Find(captions.Get(), 0), table->GetRow(0));

  RObject<CSubtitleConfigurationMap> map(new CSubtitleConfigurationMap());
  ASSERT_TRUE(map->AddTable(table.Get()).Succeeded());
  EXPECT_EQ(map->GetCount(), 3);
  EXPECT_EQ(map->Add(Sub(F("tx3g")), Sub(F("wvtt"))), ResultFalse());
  RObject<CArrayList<CSubtitleConfiguration>> outputs(map->GetOutputConfigurations(captions.Get()));
  EXPECT_EQ(outputs->GetCount(), 2);  // tx3g and wvtt
}

TEST_F(ConfigurationTableTest, EachKindKeepsItsOwnTypeCodes) {
  RObject<CAudioConfigurationTable> audioTable(new CAudioConfigurationTable(kRows));
  RObject<CAudioConfigurationMap> audioMap(new CAudioConfigurationMap());
  RObject<CSubtitleConfigurationTable> subtitleTable(new CSubtitleConfigurationTable(nullptr));
  RObject<CSubtitleConfigurationMap> subtitleMap(new CSubtitleConfigurationMap());
  const CObject* objects[] = {audioTable.Get(), audioMap.Get(), subtitleTable.Get(), subtitleMap.Get()};
  const unsigned int codes[] = {CAudioConfigurationTable::TypeCode, CAudioConfigurationMap::TypeCode,
                                CSubtitleConfigurationTable::TypeCode, CSubtitleConfigurationMap::TypeCode};
  // Shared code underneath, but each class still answers to its own code only.
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) EXPECT_EQ(objects[i]->IsType(codes[j]), i == j) << i << " as " << j;
  }
}

TEST_F(ConfigurationTableTest, SubtitleTableKeepsWideTimeScales) {
  const long long wide = 30000 + (1LL << 32);  // equals 30000 in the low 32 bits
  const SubtitleConfigurationRow rows[] = {
      {Sub(F("c608"), 30000), Sub(F("tx3g"))},
      {Sub(F("c608"), wide), Sub(F("wvtt"))},
      {Sub(F("c608")), Sub(F("tx3g"))},
      {Sub(0), Sub(0)},
  };
  RObject<CSubtitleConfigurationTable> table(new CSubtitleConfigurationTable(rows));
  RObject<CSubtitleProperties> captions(new CSubtitleProperties());
  captions->SetFormat(FourCC("c608"));
  captions->SetTimeScale(30000);
  // Rows 0 and 2 accept it and both give "tx3g", listed once; row 1 does not.
  unsigned int formats[3] = {};
  ASSERT_EQ(table->GetOutputFormats(captions.Get(), formats, 3), 1);
  EXPECT_EQ(formats[0], FourCC("tx3g"));
  EXPECT_EQ(table->Find(captions.Get(), FourCC("wvtt")), nullptr);
  captions->SetTimeScale(wide);
  EXPECT_EQ(table->Find(captions.Get(), FourCC("wvtt")), table->GetRow(1));
  EXPECT_EQ(table->GetOutputFormats(nullptr, formats, 3), 0);

  // Outputs by input object go by equality: the open row 2 is another input.
  RObject<CSubtitleConfiguration> key(new CSubtitleConfiguration(Sub(F("c608"), 30000)));
  RObject<CArrayList<CSubtitleConfiguration>> outputs(table->GetOutputConfigurations(key.Get()));
  ASSERT_EQ(outputs->GetCount(), 1);
  RObject<CArrayList<CSubtitleConfiguration>> inputs(table->GetInputConfigurations());
  ASSERT_EQ(inputs->GetCount(), 3);
  CSubtitleConfiguration* second = nullptr;
  ASSERT_TRUE(inputs->Get(1, second).Succeeded());
  EXPECT_TRUE(second->IsType(CSubtitleConfiguration::TypeCode));
  EXPECT_EQ(second->GetConfiguration().timeScale, wide);
  second->Release();
}

TEST_F(ConfigurationTableTest, SubtitleMapKeysOnExactInputsAndAnswersThroughMatches) {
  SubtitleConfiguration text = Sub(F("tx3g"));
  SubtitleConfiguration notNtsc = Sub(F("tx3g"), ~30000);  // any time scale but 30000
  SubtitleConfiguration vtt = Sub(F("wvtt"));
  SubtitleConfiguration vttMs = Sub(F("wvtt"), 1000);
  RObject<CSubtitleConfigurationMap> map(new CSubtitleConfigurationMap());
  EXPECT_EQ(map->Add(text, vtt), ResultOK());
  EXPECT_EQ(map->Add(notNtsc, vttMs), ResultOK());
  EXPECT_EQ(map->Add(notNtsc, vtt), ResultOK());
  // The narrower input is a key of its own, though every value it takes
  // also suits the open one.
  EXPECT_EQ(map->GetCount(), 2);
  EXPECT_FALSE(map->Contains(text, vttMs));
  RObject<CArrayList<CSubtitleConfiguration>> exact(map->GetOutputConfigurations(text));
  EXPECT_EQ(exact->GetCount(), 1);

  RObject<CSubtitleProperties> stream(new CSubtitleProperties());
  stream->SetFormat(FourCC("tx3g"));
  stream->SetTimeScale(1000);
  RObject<CArrayList<CSubtitleConfiguration>> both(map->GetOutputConfigurations(stream.Get()));
  ASSERT_EQ(both->GetCount(), 2);  // vtt from either input, once, then vttMs
  CSubtitleConfiguration* second = nullptr;
  ASSERT_TRUE(both->Get(1, second).Succeeded());
  EXPECT_EQ(second->GetConfiguration().timeScale, 1000);
  second->Release();
  stream->SetTimeScale(30000);
  RObject<CArrayList<CSubtitleConfiguration>> open(map->GetOutputConfigurations(stream.Get()));
  EXPECT_EQ(open->GetCount(), 1);
  RObject<CArrayList<CSubtitleConfiguration>> none(map->GetOutputConfigurations(nullptr));
  EXPECT_EQ(none->GetCount(), 0);
  EXPECT_EQ(map->AddTable(nullptr), ResultArgumentNull());
}
