// CString against std::string on the everyday paths: building text piece by
// piece, formatting, equality and ordering, substring search and hashing.
// CString is immutable, so every Append makes a new string: the build
// benchmark measures exactly that cost, not an amortised buffer.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <string>

#include "System/Text.h"

using Corvane::Mox::CString;
using Corvane::Mox::RObject;

namespace {

// About 1 KiB of text with the searched word near its end.
std::string LongText() {
  std::string text;
  while (text.size() < 1000) text += "lorem ipsum dolor sit amet, consectetur adipiscing elit; ";
  text += "needle in the haystack";
  return text;
}

// --- Building by repeated appends ---------------------------------------------

void BM_CString_AppendBuild(benchmark::State& state) {
  const auto pieces = state.range(0);
  for (auto _ : state) {
    RObject<CString> text(new CString());
    for (int64_t i = 0; i < pieces; ++i) text = text->Append("word ");
    benchmark::DoNotOptimize(text->GetChars());
  }
  state.SetItemsProcessed(state.iterations() * pieces);
}
BENCHMARK(BM_CString_AppendBuild)->Arg(16)->Arg(256);

void BM_StdString_AppendBuild(benchmark::State& state) {
  const auto pieces = state.range(0);
  for (auto _ : state) {
    std::string text;
    for (int64_t i = 0; i < pieces; ++i) text += "word ";
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * pieces);
}
BENCHMARK(BM_StdString_AppendBuild)->Arg(16)->Arg(256);

// Appending one CString to another, the common case in code that already
// holds strings (both lengths are known, nothing is re-validated).
void BM_CString_AppendString(benchmark::State& state) {
  RObject<CString> left(new CString("a reasonably short left-hand side, "));
  RObject<CString> right(new CString("and a right-hand side of similar size"));
  for (auto _ : state) {
    RObject<CString> joined(left->Append(right.Get()));
    benchmark::DoNotOptimize(joined.Get());
  }
}
BENCHMARK(BM_CString_AppendString);

void BM_StdString_AppendString(benchmark::State& state) {
  const std::string left("a reasonably short left-hand side, ");
  const std::string right("and a right-hand side of similar size");
  for (auto _ : state) {
    std::string joined = left + right;
    benchmark::DoNotOptimize(joined.data());
  }
}
BENCHMARK(BM_StdString_AppendString);

// --- Formatting ------------------------------------------------------------------

void BM_CString_WithFormat(benchmark::State& state) {
  int i = 0;
  for (auto _ : state) {
    ++i;
    RObject<CString> text(CString::WithFormat("%s(%d): %s: frame %d at %.3f s", "Source.cpp", 42, "Reader::Read", i,
                                              i * 0.04));
    benchmark::DoNotOptimize(text.Get());
  }
}
BENCHMARK(BM_CString_WithFormat);

void BM_StdString_Snprintf(benchmark::State& state) {
  int i = 0;
  for (auto _ : state) {
    char buffer[256];
    ++i;
    int n = std::snprintf(buffer, sizeof buffer, "%s(%d): %s: frame %d at %.3f s", "Source.cpp", 42, "Reader::Read", i,
                          i * 0.04);
    std::string text(buffer, static_cast<std::size_t>(n));
    benchmark::DoNotOptimize(text.data());
  }
}
BENCHMARK(BM_StdString_Snprintf);

// --- Equality and ordering -------------------------------------------------------

void BM_CString_Equals(benchmark::State& state) {
  RObject<CString> a(new CString("com.example.media.container.reader.mp4"));
  RObject<CString> b(new CString("com.example.media.container.reader.mp4"));
  for (auto _ : state) benchmark::DoNotOptimize(a->Equals(b.Get()));
}
BENCHMARK(BM_CString_Equals);

void BM_StdString_Equals(benchmark::State& state) {
  std::string a("com.example.media.container.reader.mp4");
  std::string b("com.example.media.container.reader.mp4");
  benchmark::DoNotOptimize(a.data());
  benchmark::DoNotOptimize(b.data());
  for (auto _ : state) benchmark::DoNotOptimize(a == b);
}
BENCHMARK(BM_StdString_Equals);

// Compare is case-insensitive over code points; std::string::compare is a
// byte comparison. The pair shows what the case folding costs.
void BM_CString_Compare(benchmark::State& state) {
  RObject<CString> a(new CString("com.example.media.container.reader.mp4"));
  RObject<CString> b(new CString("com.example.media.container.reader.mp5"));
  for (auto _ : state) benchmark::DoNotOptimize(CString::Compare(a, b));
}
BENCHMARK(BM_CString_Compare);

void BM_StdString_Compare(benchmark::State& state) {
  std::string a("com.example.media.container.reader.mp4");
  std::string b("com.example.media.container.reader.mp5");
  benchmark::DoNotOptimize(a.data());
  benchmark::DoNotOptimize(b.data());
  for (auto _ : state) benchmark::DoNotOptimize(a.compare(b));
}
BENCHMARK(BM_StdString_Compare);

// --- Search ------------------------------------------------------------------------

void BM_CString_IndexOf(benchmark::State& state) {
  RObject<CString> text(new CString(LongText().c_str()));
  for (auto _ : state) benchmark::DoNotOptimize(text->IndexOf("needle"));
}
BENCHMARK(BM_CString_IndexOf);

void BM_CString_IndexOfWide(benchmark::State& state) {
  RObject<CString> text(new CString(LongText().c_str()));
  for (auto _ : state) benchmark::DoNotOptimize(text->IndexOf(L"needle"));
}
BENCHMARK(BM_CString_IndexOfWide);

void BM_StdString_Find(benchmark::State& state) {
  std::string text = LongText();
  benchmark::DoNotOptimize(text.data());
  for (auto _ : state) benchmark::DoNotOptimize(text.find("needle"));
}
BENCHMARK(BM_StdString_Find);

// --- Hashing -------------------------------------------------------------------------

void BM_CString_GetHashCode(benchmark::State& state) {
  RObject<CString> text(new CString("com.example.media.container.reader.mp4"));
  for (auto _ : state) benchmark::DoNotOptimize(text->GetHashCode());
}
BENCHMARK(BM_CString_GetHashCode);

void BM_StdString_Hash(benchmark::State& state) {
  std::string text("com.example.media.container.reader.mp4");
  benchmark::DoNotOptimize(text.data());
  for (auto _ : state) benchmark::DoNotOptimize(std::hash<std::string>{}(text));
}
BENCHMARK(BM_StdString_Hash);

}  // namespace
