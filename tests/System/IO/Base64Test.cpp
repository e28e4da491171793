#include <random>

#include "System/IO/Base64Decoder.h"
#include "System/IO/Base64Encoder.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class Base64Test : public LeakCheckedTest {
 protected:
  static std::string Encode(const std::string& text, bool lineBreaks = false,
                            const char* alphabet = CBase64Encoder::Standard) {
    RObject<CString> encoded(CBase64Encoder::Encode(reinterpret_cast<const unsigned char*>(text.data()),
                                                    static_cast<int>(text.size()), lineBreaks, alphabet));
    return Text(encoded);
  }
  static std::string Decode(const char* text, const char* alphabet = CBase64Encoder::Standard) {
    RObject<CByteArray> bytes(CBase64Decoder::Decode(text, alphabet));
    if (!bytes) return "<null>";
    return std::string(reinterpret_cast<const char*>(bytes->GetData()), static_cast<std::size_t>(bytes->GetLength()));
  }
};

// Base64 the slow way: six bits at a time, padding to a multiple of four.
std::string Reference(const std::vector<unsigned char>& bytes, const char* alphabet, const std::string& separator) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned int group = 0;
    std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
    for (std::size_t j = 0; j < 3; ++j) group = group << 8 | (j < n ? bytes[i + j] : 0u);
    for (std::size_t k = 0; k < 4; ++k) text += k <= n ? alphabet[(group >> (18 - 6 * k)) & 63] : '=';
    if ((i + 3) % 57 == 0 && n == 3) text += separator;
  }
  return text;
}

TEST_F(Base64Test, Rfc4648VectorsBothWays) {
  const std::pair<const char*, const char*> vectors[] = {{"", ""},         {"f", "Zg=="},         {"fo", "Zm8="},
                                                         {"foo", "Zm9v"},  {"foob", "Zm9vYg=="},  {"fooba", "Zm9vYmE="},
                                                         {"foobar", "Zm9vYmFy"}, {"Man", "TWFu"}, {"Ma", "TWE="}};
  for (auto [plain, encoded] : vectors) {
    EXPECT_EQ(Encode(plain), encoded);
    EXPECT_EQ(Decode(encoded), plain);
  }
  RObject<CBase64Decoder> decoder(new CBase64Decoder("TWE=", nullptr));
  EXPECT_EQ(decoder->GetLength(), 2);
  EXPECT_EQ(decoder->GetAvailableLength(), 2);
  EXPECT_EQ(decoder->ReadByte(), 'M');
  EXPECT_EQ(decoder->ReadByte(), 'a');
  EXPECT_EQ(decoder->ReadByte(), -1);
  EXPECT_EQ(decoder->GetPosition(), 2);
}

TEST_F(Base64Test, LinesBreakAfterEveryFiftySevenBytes) {
  std::vector<unsigned char> bytes = Sequence(57);
  std::string plain(bytes.begin(), bytes.end());
  std::string one = Encode(plain, true);
  ASSERT_EQ(one.size(), 77u);
  EXPECT_EQ(one.back(), '\n');
  EXPECT_EQ(one.find('='), std::string::npos);
  std::string more = Encode(plain + "x", true);
  EXPECT_EQ(more, one + Encode("x"));
  EXPECT_EQ(Encode(plain, false), one.substr(0, 76));

  std::vector<unsigned char> two = Sequence(114);
  RObject<CString> crlf(CBase64Encoder::Encode(two.data(), 114, "\r\n", nullptr));
  EXPECT_EQ(Text(crlf), Reference(two, CBase64Encoder::Standard, "\r\n"));
  EXPECT_EQ(Text(crlf).size(), 2u * 78u);
  // The decoder skips the line breaks again.
  RObject<CByteArray> back(CBase64Decoder::Decode(crlf, nullptr));
  ASSERT_NE(back.Get(), nullptr);
  EXPECT_TRUE(back->Equals(two.data(), 114));
}

TEST_F(Base64Test, RightsManagerAlphabetReplacesPlusAndSlash) {
  const std::string plain = "\xFB\xFF\xBF";
  EXPECT_EQ(Encode(plain), "+/+/");
  EXPECT_EQ(Encode(plain, false, CBase64Encoder::WMRM), "!*!*");
  EXPECT_EQ(Decode("!*!*", CBase64Encoder::WMRM), plain);
  const char custom[] = "ZYXWVUTSRQPONMLKJIHGFEDCBAzyxwvutsrqponmlkjihgfedcba9876543210-_";
  std::vector<unsigned char> bytes = Sequence(100);
  RObject<CString> encoded(CBase64Encoder::Encode(bytes.data(), 100, false, custom));
  EXPECT_EQ(Text(encoded), Reference(bytes, custom, ""));
  RObject<CByteArray> back;
  ASSERT_TRUE(CBase64Decoder::Decode(encoded, back.Out(), custom).Succeeded());
  EXPECT_TRUE(back->Equals(bytes.data(), 100));
}

TEST_F(Base64Test, RandomDataMatchesTheReferenceAndRoundTrips) {
  std::mt19937 random(12345);
  for (int length = 0; length < 300; length += 7) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(length));
    for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
    for (const char* alphabet : {CBase64Encoder::Standard, CBase64Encoder::WMRM}) {
      RObject<CString> encoded(CBase64Encoder::Encode(bytes.data(), length, true, alphabet));
      ASSERT_EQ(Text(encoded), Reference(bytes, alphabet, "\n")) << length;
      RObject<CByteArray> decoded(CBase64Decoder::Decode(encoded, alphabet));
      ASSERT_EQ(decoded->GetLength(), length);
      ASSERT_TRUE(std::equal(bytes.begin(), bytes.end(), decoded->GetData())) << length;
    }
  }
}

TEST_F(Base64Test, StreamingEncoderKeepsGroupsAcrossWrites) {
  std::vector<unsigned char> bytes = Sequence(200);
  RObject<CBase64Encoder> encoder(new CBase64Encoder(200, true, nullptr));
  EXPECT_TRUE(encoder->CanWrite());
  EXPECT_FALSE(encoder->CanRead());
  std::size_t at = 0;
  for (int piece : {1, 1, 5, 50, 2, 57, 60, 24}) {
    int written = 0;
    ASSERT_TRUE(encoder->Write(bytes.data() + at, piece, &written).Succeeded());
    EXPECT_EQ(written, piece);
    at += static_cast<std::size_t>(piece);
  }
  ASSERT_EQ(at, 200u);
  EXPECT_TRUE(IsKind<ResultEndOfStream>(encoder->WriteByte(0)));
  encoder->Close();
  RObject<CString> text(encoder->GetEncoded());
  EXPECT_EQ(Text(text), Reference(bytes, CBase64Encoder::Standard, "\n"));
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(encoder->WriteByte(0)));
  unsigned char byte = 0;
  EXPECT_TRUE(IsKind<ResultNotSupported>(encoder->Read(&byte, 1, nullptr)));
  EXPECT_TRUE(IsKind<ResultNotSupported>(encoder->Seek(0, SeekOrigin::Begin, nullptr)));

  RObject<CBase64Encoder> small(new CBase64Encoder(4, false, nullptr));
  EXPECT_TRUE(IsKind<ResultEndOfStream>(small->Write(bytes.data(), 5, nullptr)));
  ASSERT_TRUE(small->Write(bytes.data(), 4, nullptr).Succeeded());
  small->Close();
  RObject<CString> four(small->GetEncoded());
  EXPECT_EQ(Text(four), Reference(std::vector<unsigned char>(bytes.begin(), bytes.begin() + 4),
                                  CBase64Encoder::Standard, ""));
}

TEST_F(Base64Test, DecoderSkipsSpaceStopsAtPaddingAndToleratesForeignCharacters) {
  EXPECT_EQ(Decode(" TW\tFu\r\nTW\n E= "), "ManMa");
  EXPECT_EQ(Decode("TWE=TWFu"), "Ma");
  EXPECT_EQ(Decode("TWFuTQ"), "ManM");  // missing padding
  EXPECT_EQ(Decode("T"), "");           // a lone character carries no whole byte
  EXPECT_EQ(Decode("#A=="), Decode("AA=="));
  // The same inside a long run, where whole blocks of characters decode at once.
  std::string text = Encode(std::string(60, 'q'));
  std::string foreign = text;
  foreign[37] = '#';
  text[37] = 'A';
  EXPECT_EQ(Decode(foreign.c_str()), Decode(text.c_str()));
  EXPECT_EQ(Decode(foreign.c_str()).size(), 60u);
  EXPECT_EQ(Decode("\xC3\xA9" "A=="), Decode("AAA=="));
  EXPECT_EQ(Decode(static_cast<const char*>(nullptr)), "<null>");
  CByteArray* out = reinterpret_cast<CByteArray*>(0x1);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CBase64Decoder::Decode(static_cast<const char*>(nullptr), out, nullptr)));
  EXPECT_EQ(out, nullptr);

  RObject<CBase64Decoder> decoder(new CBase64Decoder("Zm9v\nYmFy", nullptr));
  EXPECT_TRUE(decoder->CanRead());
  EXPECT_FALSE(decoder->CanWrite() || decoder->CanSeek());
  unsigned char bytes[8] = {};
  int read = 0;
  ASSERT_TRUE(decoder->Read(bytes, 2, &read).Succeeded());
  ASSERT_TRUE(decoder->Read(bytes + 2, 8, &read).Succeeded());
  EXPECT_EQ(read, 4);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes), 6), "foobar");
  EXPECT_TRUE(IsKind<ResultNotSupported>(decoder->Write(bytes, 1, nullptr)));
  EXPECT_TRUE(IsKind<ResultNotSupported>(decoder->Seek(0, SeekOrigin::Begin, nullptr)));
}

}  // namespace
