// The iXML document as far as time code goes: rates in their written forms,
// the start time code from the time stamp, a document written and read
// back, and the audio time-code extension's properties.
#include <gtest/gtest.h>

#include <string>

#include "System/ByteArray.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/TimeCode/AudioTimeCodeProperties.h"
#include "System/Media/Wav/BwfDocument.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/Xml/XmlDocument.h"

using namespace Corvane::Mox;

namespace {

class BwfDocumentTest : public LeakCheckedTest {};

TEST_F(BwfDocumentTest, RatesInTheirWrittenForms) {
  const struct {
    const char* text;
    long long numerator;
    long long denominator;
  } accepted[] = {{"30000/1001", 30000, 1001}, {"24000 1001", 24000, 1001}, {"25:1", 25, 1}, {"50", 50, 1}};
  for (const auto& a : accepted) {
    Rational<long long> rate;
    ASSERT_TRUE(CBwfDocument::ParseRate(a.text, rate)) << a.text;
    EXPECT_EQ(rate.numerator, a.numerator) << a.text;
    EXPECT_EQ(rate.denominator, a.denominator) << a.text;
  }
  for (const char* text : {"", "fast", "30000/", "30000/0", "-25", "25;1"}) {
    Rational<long long> rate;
    EXPECT_FALSE(CBwfDocument::ParseRate(text, rate)) << text;
  }
}

TEST_F(BwfDocumentTest, WrittenAndReadBack) {
  RObject<CBwfDocument> document(new CBwfDocument());
  document->SetTimeCodeRate(Rational<long long>(25, 1));
  document->SetTimestampSampleRate(48000);
  // 10:00:00:00 at 25 fps: 1,728,000,000 samples.
  document->SetSamplesSinceMidnight(48000ull * 36000);
  RObject<CByteArray> bytes;
  ASSERT_TRUE(document->Serialize(bytes.Out(), 0).Succeeded());
  RObject<CBwfDocument> read(new CBwfDocument());
  ASSERT_TRUE(read->Deserialize(bytes.Get()).Succeeded());
  EXPECT_EQ(read->GetSamplesSinceMidnight(), 48000ull * 36000);
  EXPECT_FALSE(read->IsDropFrame());
  CTimeCode timeCode;
  ASSERT_TRUE(read->GetTimeCode(timeCode).Succeeded());
  RObject<CString> text(timeCode.ToString(':'));
  EXPECT_STREQ(text->GetChars(), "10:00:00:00");

  // Elements directly under the root count as well; another root does not.
  RObject<CString> flat(CString::WithString(
      "<BWFXML><TIMECODE_RATE>30</TIMECODE_RATE><TIMESTAMP_SAMPLE_RATE>48000</TIMESTAMP_SAMPLE_RATE>"
      "<TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI>1</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI>"
      "<TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO>0</TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO></BWFXML>"));
  RObject<CBwfDocument> direct(new CBwfDocument());
  ASSERT_TRUE(direct->Deserialize(flat.Get()).Succeeded());
  EXPECT_EQ(direct->GetSamplesSinceMidnight(), 1ull << 32);
  ASSERT_TRUE(direct->GetTimeCode(timeCode).Succeeded());
  EXPECT_EQ(timeCode.GetTotalFrames(), static_cast<int>((1ll << 32) * 30 / 48000));
  RObject<CString> other(CString::WithString("<ebuCoreMain/>"));
  RObject<CBwfDocument> wrong(new CBwfDocument());
  EXPECT_TRUE(wrong->Deserialize(other.Get()).Failed());
  // No rate: no time code.
  RObject<CString> bare(CString::WithString("<BWFXML/>"));
  RObject<CBwfDocument> empty(new CBwfDocument());
  ASSERT_TRUE(empty->Deserialize(bare.Get()).Succeeded());
  EXPECT_TRUE(empty->GetTimeCode(timeCode).Failed());
}

TEST_F(BwfDocumentTest, TimeCodePropertiesArePublished) {
  CTimeCode timeCode(30000, 1001, true);
  timeCode.FromFrames(17982);
  RObject<CAudioTimeCodeProperties> atc(new CAudioTimeCodeProperties(timeCode, Rational<long long>(30000, 1001)));
  RObject<CProperties> bag(new CProperties());
  ASSERT_TRUE(atc->GetProperties(bag.Get()).Succeeded());
  RObject<CString> text;
  ASSERT_TRUE(bag->GetProperty("time_code", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "00:10:00;00");
  ASSERT_TRUE(bag->GetProperty("time_code_rate", text.Out()).Succeeded());
  EXPECT_STREQ(text->GetChars(), "30000/1001");
  bool drop = false;
  ASSERT_TRUE(bag->GetProperty("drop_frame", drop).Succeeded());
  EXPECT_TRUE(drop);
}

}  // namespace
