// Base64 encoding and decoding of 1 MiB against OpenSSL's one-shot block
// functions EVP_EncodeBlock and EVP_DecodeBlock (no line breaks on either
// side, as those functions write none).
#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <random>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/Base64Decoder.h"
#include "System/IO/Base64Encoder.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

constexpr int Size = 1 << 20;

const std::vector<unsigned char>& Input() {
  static const std::vector<unsigned char> bytes = [] {
    std::vector<unsigned char> random(Size);
    std::mt19937 generator(4);
    for (auto& byte : random) byte = static_cast<unsigned char>(generator());
    return random;
  }();
  return bytes;
}

const std::vector<unsigned char>& EncodedInput() {
  static const std::vector<unsigned char> text = [] {
    std::vector<unsigned char> out((Size + 2) / 3 * 4 + 1);
    EVP_EncodeBlock(out.data(), Input().data(), Size);
    return out;
  }();
  return text;
}

void BM_OpenSSL_EncodeBlock(benchmark::State& state) {
  std::vector<unsigned char> out((Size + 2) / 3 * 4 + 1);
  for (auto _ : state) benchmark::DoNotOptimize(EVP_EncodeBlock(out.data(), Input().data(), Size));
  state.SetBytesProcessed(state.iterations() * Size);
}
BENCHMARK(BM_OpenSSL_EncodeBlock);

// The encoder stream into its own text buffer.
void BM_Base64Encoder_Stream(benchmark::State& state) {
  for (auto _ : state) {
    RObject<CBase64Encoder> encoder(new CBase64Encoder(Size, false, nullptr));
    encoder->Write(Input().data(), Size, nullptr);
    encoder->Close();
    benchmark::DoNotOptimize(encoder.Get());
  }
  state.SetBytesProcessed(state.iterations() * Size);
}
BENCHMARK(BM_Base64Encoder_Stream);

// The static form, which also builds the result string.
void BM_Base64Encoder_ToString(benchmark::State& state) {
  for (auto _ : state) {
    RObject<CString> text(CBase64Encoder::Encode(Input().data(), Size, false, nullptr));
    benchmark::DoNotOptimize(text->GetChars());
  }
  state.SetBytesProcessed(state.iterations() * Size);
}
BENCHMARK(BM_Base64Encoder_ToString);

void BM_OpenSSL_DecodeBlock(benchmark::State& state) {
  const auto& text = EncodedInput();
  std::vector<unsigned char> out(Size + 3);
  int length = static_cast<int>(text.size()) - 1;
  for (auto _ : state) benchmark::DoNotOptimize(EVP_DecodeBlock(out.data(), text.data(), length));
  state.SetBytesProcessed(state.iterations() * Size);
}
BENCHMARK(BM_OpenSSL_DecodeBlock);

// The static form: measuring the text, then one Read into a new array.
void BM_Base64Decoder_Decode(benchmark::State& state) {
  const char* text = reinterpret_cast<const char*>(EncodedInput().data());
  for (auto _ : state) {
    RObject<CByteArray> bytes;
    CBase64Decoder::Decode(text, bytes.Out(), nullptr);
    benchmark::DoNotOptimize(bytes->GetData());
  }
  state.SetBytesProcessed(state.iterations() * Size);
}
BENCHMARK(BM_Base64Decoder_Decode);

}  // namespace
