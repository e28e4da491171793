// The audio format converter against an independent value-by-value model of
// the conversion rules, over every row of its table, plus the worked values
// and the filter protocol.

#include <cmath>
#include <cstdint>
#include <random>
#include <set>
#include <string>

#include "AudioConverterTestSupport.h"
#include "System/Collections/Value.h"
#include "System/Media/Audio/G711.h"
#include "System/Media/Filter/AudioConverters/AudioFormatConverter.h"
#include "System/Media/Filter/AudioConverters/SampleCoding.h"

using namespace Corvane::Mox;
using namespace AudioTest;

namespace {

std::string Name(unsigned int code) {
  char text[5];
  FourCCToChars(code, text);
  return text;
}

// ---- the model: one value at a time, straight from the rules ----

struct Value {
  bool isFloat = false;
  double real = 0;   // float inputs
  int64_t integer = 0;  // integer inputs, at their own precision
  int bits = 0;
};

uint64_t ReadUnsigned(const uint8_t* p, int bytes, bool bigEndian) {
  uint64_t v = 0;
  for (int i = 0; i < bytes; ++i) v |= static_cast<uint64_t>(p[bigEndian ? bytes - 1 - i : i]) << (8 * i);
  return v;
}

void WriteUnsigned(uint8_t* p, uint64_t v, int bytes, bool bigEndian) {
  for (int i = 0; i < bytes; ++i) p[bigEndian ? bytes - 1 - i : i] = static_cast<uint8_t>(v >> (8 * i));
}

int64_t SignExtend(uint64_t v, int bits) {
  const uint64_t sign = 1ull << (bits - 1);
  return static_cast<int64_t>((v ^ sign) - sign);
}

Value Decode(const SampleCoding& c, const uint8_t* p) {
  Value value;
  const uint64_t raw = ReadUnsigned(p, c.bytes, c.bigEndian);
  switch (c.kind) {
    case SampleCoding::Float:
      value.isFloat = true;
      if (c.bytes == 4) {
        const uint32_t bits32 = static_cast<uint32_t>(raw);
        float f;
        std::memcpy(&f, &bits32, 4);
        value.real = f;
      } else {
        std::memcpy(&value.real, &raw, 8);
      }
      return value;
    case SampleCoding::ALaw:
      value.integer = G711::AlawExpand(static_cast<uint8_t>(raw));
      value.bits = 16;
      return value;
    case SampleCoding::MuLaw:
      value.integer = G711::UlawExpand(static_cast<uint8_t>(raw));
      value.bits = 16;
      return value;
    case SampleCoding::Unsigned:
      value.integer = static_cast<int64_t>(raw) - (int64_t{1} << (c.bytes * 8 - 1));
      value.bits = c.bytes * 8;
      return value;
    case SampleCoding::Signed:
      value.bits = c.bits;
      // A 20-bit value is the top 20 bits of its three bytes.
      value.integer = SignExtend(raw >> (c.bytes * 8 - c.bits), c.bits);
      return value;
  }
  return value;
}

int64_t RoundAway(double v) { return static_cast<int64_t>(v < 0 ? -std::floor(-v + 0.5) : std::floor(v + 0.5)); }

// The integer of `bits` bits a float becomes.
int64_t FloatToInteger(double real, int bits) {
  if (std::isnan(real)) return 0;
  const int scaleBits = bits <= 16 ? bits : 32;
  const double limit = std::ldexp(1.0, scaleBits - 1);
  int64_t r = RoundAway(real * limit);
  r = std::max<int64_t>(r, static_cast<int64_t>(-limit));
  r = std::min<int64_t>(r, static_cast<int64_t>(limit) - 1);
  return r >> (scaleBits - bits);  // 24- and 20-bit outputs drop low bits
}

int64_t Requantise(int64_t v, int from, int to) { return to >= from ? v * (int64_t{1} << (to - from)) : v >> (from - to); }

void Encode(const SampleCoding& c, const Value& v, uint8_t* p) {
  if (c.kind == SampleCoding::Float) {
    double real;
    if (v.isFloat) {
      real = v.real;
    } else {
      const int64_t wide = Requantise(v.integer, v.bits, 32);
      real = c.bytes == 4 ? static_cast<double>(static_cast<float>(wide) * 4.656612873077393e-10f)
                          : static_cast<double>(wide) * 4.656612873077393e-10;
    }
    if (c.bytes == 4) {
      const float f = static_cast<float>(real);
      uint32_t bits32;
      std::memcpy(&bits32, &f, 4);
      WriteUnsigned(p, bits32, 4, c.bigEndian);
    } else {
      uint64_t bits64;
      std::memcpy(&bits64, &real, 8);
      WriteUnsigned(p, bits64, 8, c.bigEndian);
    }
    return;
  }
  if (c.kind == SampleCoding::ALaw || c.kind == SampleCoding::MuLaw) {
    const int64_t v16 = v.isFloat ? FloatToInteger(v.real, 16) : Requantise(v.integer, v.bits, 16);
    p[0] = c.kind == SampleCoding::ALaw ? G711::AlawCompress(static_cast<int16_t>(v16))
                                        : G711::UlawCompress(static_cast<int16_t>(v16));
    return;
  }
  const int bits = c.kind == SampleCoding::Unsigned ? c.bytes * 8 : c.bits;
  int64_t out = v.isFloat ? FloatToInteger(v.real, bits) : Requantise(v.integer, v.bits, bits);
  if (c.kind == SampleCoding::Unsigned) out += int64_t{1} << (bits - 1);
  uint64_t stored = static_cast<uint64_t>(out) << (c.bytes * 8 - bits);
  WriteUnsigned(p, stored, c.bytes, c.bigEndian);
}

// Random input bytes of a coding, with the values the rules single out
// (extremes, zero, ±1.0, halfway points, NaN, values past full scale).
Bytes InputFor(const SampleCoding& c, size_t n, std::mt19937& random) {
  Bytes bytes(n * c.bytes);
  for (auto& b : bytes) b = static_cast<uint8_t>(random());
  if (c.kind != SampleCoding::Float) return bytes;
  const double specials[] = {0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 1.5, -1.5, 0.5 / 32768, -0.5 / 32768, 1.5 / 32768,
                             0.5 / 128, 0.99999994, -0.99999994, 1e-30, std::nan(""), 2.5 / 2147483648.0};
  std::uniform_real_distribution<double> wide(-1.2, 1.2);
  for (size_t i = 0; i < n; ++i) {
    const double value = i < std::size(specials) ? specials[i] : wide(random);
    if (c.bytes == 4) {
      const float f = static_cast<float>(value);
      uint32_t bits32;
      std::memcpy(&bits32, &f, 4);
      WriteUnsigned(&bytes[i * 4], bits32, 4, c.bigEndian);
    } else {
      uint64_t bits64;
      std::memcpy(&bits64, &value, 8);
      WriteUnsigned(&bytes[i * 8], bits64, 8, c.bigEndian);
    }
  }
  return bytes;
}

std::vector<std::pair<unsigned int, unsigned int>> TableRows() {
  std::vector<std::pair<unsigned int, unsigned int>> rows;
  CAudioFormatConverter converter;
  for (const auto* row = converter.GetConfigurationTable(); row->input.format != 0; ++row)
    rows.emplace_back(static_cast<unsigned int>(row->input.format), static_cast<unsigned int>(row->output.format));
  return rows;
}

}  // namespace

TEST(AudioFormatConverterTable, HasEveryConversionWithEachInputLeadingWithItself) {
  const auto rows = TableRows();
  ASSERT_EQ(rows.size(), 192u);
  std::set<unsigned int> seen;
  for (const auto& [input, output] : rows) {
    if (seen.insert(input).second) {
      // The first row of an input is what Begin picks without a request.
      // The companded codes lead with 16-bit, the unsigned 24-bit forms
      // with their signed twins; every other input with itself.
      unsigned int expected = input;
      if (input == FourCC("u24l")) expected = FourCC("42ni");
      if (input == FourCC("u24b")) expected = FourCC("in24");
      if (input == FourCC("ulaw") || input == FourCC("alaw")) expected = FourCC("sowt");
      EXPECT_EQ(Name(output), Name(expected)) << Name(input);
    }
    EXPECT_NE(SampleCoding::Find(input), nullptr) << Name(input);
    EXPECT_NE(SampleCoding::Find(output), nullptr) << Name(output);
  }
  EXPECT_EQ(seen.size(), 18u);
}

// Every row, on buffers whose lengths leave a remainder after the vector
// loops, against the model.
TEST(AudioFormatConverterValues, EveryRowMatchesTheValueRules) {
  std::mt19937 random(1234);
  for (const auto& [input, output] : TableRows()) {
    const SampleCoding& from = *SampleCoding::Find(input);
    const SampleCoding& to = *SampleCoding::Find(output);
    for (size_t n : {size_t{1}, size_t{67}, size_t{4096 + 131}}) {
      const Bytes in = InputFor(from, n, random);
      Bytes got(n * to.bytes, 0xAA);
      ConvertSamples(from, to, in.data(), got.data(), n);
      Bytes want(n * to.bytes);
      for (size_t i = 0; i < n; ++i) {
        const uint8_t* value = &in[i * from.bytes];
        uint8_t* result = &want[i * to.bytes];
        // A change of byte order alone is a byte swap of each value.
        if (from.DiffersOnlyInByteOrder(to)) {
          for (int b = 0; b < from.bytes; ++b) result[b] = value[from.bigEndian == to.bigEndian ? b : from.bytes - 1 - b];
          continue;
        }
        Encode(to, Decode(from, value), result);
      }
      for (size_t i = 0; i < n; ++i) {
        if (std::memcmp(&got[i * to.bytes], &want[i * to.bytes], to.bytes) != 0) {
          ADD_FAILURE() << Name(input) << " -> " << Name(output) << " value " << i << " of " << n;
          break;
        }
      }
    }
  }
}

TEST(AudioFormatConverterValues, WorkedValues) {
  const SampleCoding& s16 = *SampleCoding::Find(FourCC("sowt"));
  const SampleCoding& f32 = *SampleCoding::Find(FourCC("23lf"));
  const SampleCoding& s24 = *SampleCoding::Find(FourCC("42ni"));
  const SampleCoding& u8 = *SampleCoding::Find(FourCC("raw "));

  const Bytes full = Pack<int16_t>({0x7FFF});
  Bytes out(4);
  ConvertSamples(s16, f32, full.data(), out.data(), 1);
  EXPECT_EQ(Unpack<float>(out)[0], 0.999969482421875f);

  const Bytes floats = Pack<float>({1.0f, -1.0f, 0.5f / 32768, -0.5f / 32768, 0.49f / 32768});
  Bytes shorts(10);
  ConvertSamples(f32, s16, floats.data(), shorts.data(), 5);
  EXPECT_EQ(Unpack<int16_t>(shorts), (std::vector<int16_t>{32767, -32768, 1, -1, 0}));

  const Bytes low = {0xFF, 0x00, 0x00};  // 0x0000FF little-endian
  Bytes truncated(2);
  ConvertSamples(s24, s16, low.data(), truncated.data(), 1);
  EXPECT_EQ(Unpack<int16_t>(truncated)[0], 0);

  const Bytes zero = {0x00, 0x80, 0xFF};
  Bytes unsignedOut(12);
  ConvertSamples(u8, f32, zero.data(), unsignedOut.data(), 3);
  EXPECT_EQ(Unpack<float>(unsignedOut), (std::vector<float>{-1.0f, 0.0f, 127.0f / 128}));

  // 32-bit output of full scale saturates instead of wrapping.
  const SampleCoding& s32 = *SampleCoding::Find(FourCC("23ni"));
  const Bytes ones = Pack<float>({1.0f, -1.0f, 2.0f});
  Bytes ints(12);
  ConvertSamples(f32, s32, ones.data(), ints.data(), 3);
  EXPECT_EQ(Unpack<int32_t>(ints), (std::vector<int32_t>{INT32_MAX, INT32_MIN, INT32_MAX}));
}

// ---- the filter ----

namespace {

struct ConverterRun {
  RObject<CAudioFormatConverter> converter{new CAudioFormatConverter()};

  Result Begin(unsigned int input, int channels, unsigned int output) {
    RObject<CAudioProperties> properties(Describe(input, channels));
    converter->AddInputMedia(properties);
    if (output) converter->SetOutputFormat(output);
    return converter->Begin();
  }

  CAudioSample* Pass(CAudioSample* in) {
    converter->WriteSample(in);
    CAudioSample* out = nullptr;
    converter->ReadSample(out);
    return out;
  }
};

}  // namespace

TEST(AudioFormatConverterFilter, ConvertsStereo24BitTo16BitKeepingTimesAndDuration) {
  ConverterRun run;
  ASSERT_TRUE(run.Begin(FourCC("42ni"), 2, FourCC("sowt")).Succeeded());
  RObject<CAudioProperties> output(static_cast<CAudioProperties*>(run.converter->GetOutputMedia(0)));
  EXPECT_EQ(output->GetFormat(), FourCC("sowt"));
  EXPECT_EQ(output->GetChannels(), 2);

  const Bytes in = {0x00, 0x34, 0x12, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x80, 0x00, 0x00, 0x7F};
  RObject<CAudioSample> sample(SampleOver(in, 2));
  sample->SetTime(4800);
  RObject<CAudioSample> out(run.Pass(sample));
  ASSERT_TRUE(out);
  EXPECT_EQ(out->GetDuration(), 2);
  EXPECT_EQ(out->GetTime(), 4800);
  EXPECT_EQ(Unpack<int16_t>(BytesOf(out)), (std::vector<int16_t>{0x1234, -1, -32768, 0x7F00}));
}

TEST(AudioFormatConverterFilter, SameFormatSharesTheDataWithoutCopying) {
  ConverterRun run;
  ASSERT_TRUE(run.Begin(FourCC("sowt"), 1, 0).Succeeded());
  EXPECT_EQ(run.converter->GetOutputFormat(), FourCC("sowt"));
  RObject<CAudioSample> sample(SampleOver(Pack<int16_t>({1, 2, 3}), 3));
  RObject<CAudioSample> out(run.Pass(sample));
  ASSERT_TRUE(out);
  RObject<CDataReference> a(sample->GetDataReference());
  RObject<CDataReference> b(out->GetDataReference());
  EXPECT_EQ(a.Get(), b.Get());
}

TEST(AudioFormatConverterFilter, RefusesOutputsItsTableDoesNotList) {
  ConverterRun run;
  // Unsigned 8-bit converts only to itself and to float.
  EXPECT_TRUE(run.Begin(FourCC("raw "), 1, FourCC("sowt")).Failed());

  CAudioFormatConverter converter;
  RObject<CAudioProperties> properties(Describe(FourCC("raw "), 1));
  converter.AddInputMedia(properties);
  RObject<CAudioSample> sample(SampleOver({0x80}, 1));
  CAudioSample* out = nullptr;
  EXPECT_TRUE(converter.ConvertFromUInt8(sample, FourCC("sowt"), out).Failed());
  EXPECT_EQ(out, nullptr);

  // A format the converter does not read at all is not offered outputs.
  RObject<CAudioProperties> compressed(Describe(FourCC("mp4a"), 2));
  EXPECT_EQ(converter.Evaluate(compressed.Get()), 0);
}

TEST(AudioFormatConverterFilter, ShortDataConvertsTheWholeFramesItHas) {
  ConverterRun run;
  ASSERT_TRUE(run.Begin(FourCC("sowt"), 2, FourCC("23lf")).Succeeded());
  // Claims 4 frames but carries 2.5.
  RObject<CAudioSample> sample(SampleOver(Pack<int16_t>({16384, -16384, 8192, 0, 1}), 4));
  RObject<CAudioSample> out(run.Pass(sample));
  ASSERT_TRUE(out);
  EXPECT_EQ(out->GetDuration(), 2);
  EXPECT_EQ(Unpack<float>(BytesOf(out)), (std::vector<float>{0.5f, -0.5f, 0.25f, 0.0f}));
}

TEST(AudioFormatConverterFilter, DocumentsItselfAsTheAudioFormatConverter) {
  CAudioFormatConverter converter;
  RObject<CProperties> documentation(converter.GetDocumentation());
  ASSERT_TRUE(documentation);
  CString* brief = nullptr;
  ASSERT_TRUE(documentation->GetProperty("brief", brief).Succeeded());
  RObject<CString> held(brief);
  EXPECT_STREQ(brief->GetChars(), "AudioFormatConverter configuration properties.");
}
