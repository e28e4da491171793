#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FilesTestSupport.h"
#include "System/IO/StreamReader.h"
#include "System/IO/StreamWriter.h"
#include "System/Text/Encoding.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class TextWriterReaderTest : public LeakCheckedTest {};

// A memory stream that counts the flushes and closes it receives.
class CCountingStream : public CMemoryStream {
 public:
  Result Flush() override {
    ++flushes;
    return ResultOK();
  }
  void Close() override { ++closes; }
  int flushes = 0;
  int closes = 0;
};

// Every line a reader gives, then "<null>" for the end.
std::vector<std::string> Lines(CTextReader* reader) {
  std::vector<std::string> lines;
  for (;;) {
    std::string line = Take(reader->ReadLine());
    lines.push_back(line);
    if (line == "<null>") return lines;
  }
}

std::vector<std::string> SeekableLines(const std::string& bytes) {
  RObject<CMemoryStream> stream(NewMemoryStream(Bytes(bytes)));
  RObject<CStreamReader> reader(new CStreamReader(stream));
  return Lines(reader);
}

std::vector<std::string> ForwardLines(const std::string& bytes, int chunk = 1 << 30) {
  RObject<CForwardOnlyStream> stream(new CForwardOnlyStream(Bytes(bytes), chunk));
  RObject<CStreamReader> reader(new CStreamReader(stream));
  return Lines(reader);
}

using L = std::vector<std::string>;

}  // namespace

TEST_F(TextWriterReaderTest, WriterFormsReachTheStream) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CStreamWriter> writer(new CStreamWriter(stream));
  EXPECT_TRUE(writer->IsType(FourCC("txtw")));
  EXPECT_TRUE(writer->IsType(FourCC("stwr")));
  ASSERT_TRUE(writer->Write('{').Succeeded());
  ASSERT_TRUE(writer->Write("\"a\": ").Succeeded());
  ASSERT_TRUE(writer->WriteWithFormat("%d,", 42).Succeeded());
  ASSERT_TRUE(writer->WriteLine("").Succeeded());
  ASSERT_TRUE(writer->WriteLineWithFormat("  \"%s\": %.2f", "b", 1.5).Succeeded());
  ASSERT_TRUE(writer->Write(L'\u00e9').Succeeded());
  ASSERT_TRUE(writer->Write(L"\u20ac").Succeeded());
  ASSERT_TRUE(writer->WriteLine(L"!").Succeeded());
  ASSERT_TRUE(writer->WriteWithFormat(L"%ls=%d", L"gr\u00f6\u00dfe", 5).Succeeded());
  ASSERT_TRUE(writer->WriteLineWithFormat(L";").Succeeded());
  RObject<CString> text(new CString("\xE2\x9C\x93 done"));
  ASSERT_TRUE(writer->Write(text).Succeeded());
  ASSERT_TRUE(writer->WriteLine(text).Succeeded());
  ASSERT_TRUE(writer->Write(static_cast<CString*>(nullptr)).Succeeded());
  const unsigned char raw[2] = {'[', ']'};
  ASSERT_TRUE(writer->Write(raw, 2).Succeeded());
  std::vector<unsigned char> expected = Bytes(
      "{\"a\": 42,\n  \"b\": 1.50\n\xC3\xA9\xE2\x82\xAC!\ngr\xC3\xB6\xC3\x9F" "e=5;\n\xE2\x9C\x93 done\xE2\x9C\x93 done\n[]");
  EXPECT_EQ(Content(stream), expected);
  RObject<CEncoding> encoding(writer->GetEncoding());
  EXPECT_EQ(Take(encoding->GetEncodingType()), "UTF-8");
}

TEST_F(TextWriterReaderTest, LineSeparatorCanBeChosen) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CStreamWriter> writer(new CStreamWriter(stream));
  EXPECT_EQ(Take(writer->GetNewLine()), "\n");
  RObject<CString> crlf(new CString("\r\n"));
  writer->SetNewLine(crlf);
  ASSERT_TRUE(writer->WriteLine("1").Succeeded());
  ASSERT_TRUE(writer->WriteLineWithFormat("%d", 2).Succeeded());
  writer->SetNewLine(nullptr);
  ASSERT_TRUE(writer->WriteLine(L"3").Succeeded());
  EXPECT_EQ(Content(stream), Bytes("1\r\n2\r\n3\n"));
}

TEST_F(TextWriterReaderTest, WideTextFollowsTheWritersEncoding) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CEncoding> utf16(CEncoding::Create("UTF-16LE"));
  RObject<CStreamWriter> writer(new CStreamWriter(stream, utf16));
  ASSERT_TRUE(writer->WriteLine(L"a\u00e9").Succeeded());
  // Narrow text is written as its bytes.
  ASSERT_TRUE(writer->Write("ok").Succeeded());
  EXPECT_EQ(Content(stream), (std::vector<unsigned char>{'a', 0, 0xE9, 0, '\n', 0, 'o', 'k'}));
  RObject<CEncoding> encoding(writer->GetEncoding());
  EXPECT_EQ(encoding.Get(), utf16.Get());
}

TEST_F(TextWriterReaderTest, WriterFailuresAndClose) {
  RObject<CMemoryStream> small(new CMemoryStream(4));
  RObject<CStreamWriter> full(new CStreamWriter(small));
  EXPECT_TRUE(full->WriteLine("hello").Failed());
  RObject<CCountingStream> stream(new CCountingStream());
  RObject<CStreamWriter> writer(new CStreamWriter(stream));
  ASSERT_TRUE(writer->Write("x").Succeeded());
  ASSERT_TRUE(writer->Flush().Succeeded());
  EXPECT_EQ(stream->flushes, 1);
  ASSERT_TRUE(writer->Close().Succeeded());
  EXPECT_EQ(stream->flushes, 2);
  EXPECT_EQ(stream->closes, 1);
  EXPECT_EQ(stream->GetReferences(), 1);  // the writer let go
  EXPECT_TRUE(IsKind<ResultInvalidOperation>(writer->Write("y")));
  EXPECT_TRUE(writer->Close().Succeeded());
  EXPECT_EQ(stream->closes, 1);
}

TEST_F(TextWriterReaderTest, LineEndingsOnSeekableAndForwardOnlyStreams) {
  EXPECT_EQ(SeekableLines("a\r\nb"), (L{"a", "b", "<null>"}));
  EXPECT_EQ(ForwardLines("a\r\nb"), (L{"a", "b", "<null>"}));
  // A lone carriage return ends a line only where the reader can step back.
  EXPECT_EQ(SeekableLines("a\rb"), (L{"a", "b", "<null>"}));
  EXPECT_EQ(ForwardLines("a\rb"), (L{"ab", "<null>"}));
  EXPECT_EQ(SeekableLines("\n"), (L{"", "<null>"}));
  EXPECT_EQ(ForwardLines("\n"), (L{"", "<null>"}));
  EXPECT_EQ(SeekableLines(""), (L{"<null>"}));
  EXPECT_EQ(ForwardLines(""), (L{"<null>"}));
  EXPECT_EQ(SeekableLines("one\n\ntwo\r\n\r\nthree\r"), (L{"one", "", "two", "", "three", "<null>"}));
  EXPECT_EQ(SeekableLines("a\r\rb"), (L{"a", "", "b", "<null>"}));
  EXPECT_EQ(ForwardLines("one\n\ntwo\r\n", 1), (L{"one", "", "two", "<null>"}));
}

TEST_F(TextWriterReaderTest, CharactersAreNeverSplit) {
  // A two-byte character straddling the piece size stays whole.
  std::string text = std::string(16382, 'x') + "\xC3\xA9" + "tail\n";
  std::vector<std::string> lines = SeekableLines(text);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].size(), 16384u);
  EXPECT_EQ(lines[0].substr(16382), "\xC3\xA9");
  EXPECT_EQ(lines[1], "tail");
  // A plain long line comes in pieces of 16,383 bytes.
  lines = ForwardLines(std::string(20000, 'y') + "\nz");
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], std::string(16383, 'y'));
  EXPECT_EQ(lines[1], std::string(20000 - 16383, 'y'));
  EXPECT_EQ(lines[2], "z");
  // Three- and four-byte characters, delivered one byte per read.
  EXPECT_EQ(ForwardLines("\xE2\x82\xAC\xF0\x9F\x8E\xAC\n", 1), (L{"\xE2\x82\xAC\xF0\x9F\x8E\xAC", "<null>"}));
}

TEST_F(TextWriterReaderTest, WiderUnitsInOtherEncodings) {
  const unsigned char utf16[] = {'a', 0, '\r', 0, '\n', 0, 0xE9, 0, '\r', 0, 'c', 0, '\n', 0};
  RObject<CMemoryStream> stream(NewMemoryStream({utf16, utf16 + sizeof utf16}));
  RObject<CEncoding> encoding(CEncoding::Create("UTF-16LE"));
  RObject<CStreamReader> reader(new CStreamReader(stream, encoding));
  EXPECT_EQ(Lines(reader), (L{"a", "\xC3\xA9", "c", "<null>"}));
  // Units arrive whole even from a stream that delivers single bytes.
  RObject<CForwardOnlyStream> trickle(new CForwardOnlyStream({utf16, utf16 + sizeof utf16}, 1));
  RObject<CStreamReader> forward(new CStreamReader(trickle, encoding));
  EXPECT_EQ(Lines(forward), (L{"a", "\xC3\xA9" "c", "<null>"}));
  const unsigned char utf32[] = {'x', 0, 0, 0, '\n', 0, 0, 0, 'y', 0, 0, 0};
  RObject<CMemoryStream> wide(NewMemoryStream({utf32, utf32 + sizeof utf32}));
  RObject<CEncoding> utf32le(CEncoding::Create("UTF-32LE"));
  RObject<CStreamReader> wideReader(new CStreamReader(wide, utf32le));
  EXPECT_EQ(Lines(wideReader), (L{"x", "y", "<null>"}));
}

TEST_F(TextWriterReaderTest, ReadTakesBytesAndDecodesThem) {
  RObject<CMemoryStream> stream(NewMemoryStream(Bytes("h\xC3\xA9llo")));
  RObject<CStreamReader> reader(new CStreamReader(stream));
  EXPECT_EQ(Take(reader->Read(-1)), "<null>");
  EXPECT_EQ(Take(reader->Read(0)), "");
  EXPECT_EQ(Take(reader->Read(3)), "h\xC3\xA9");
  EXPECT_EQ(Take(reader->Read(100)), "llo");
  EXPECT_EQ(Take(reader->Read(10)), "");  // at the end: nothing, but no failure
  RObject<CForwardOnlyStream> trickle(new CForwardOnlyStream(Bytes("abcdef"), 2));
  RObject<CStreamReader> pieces(new CStreamReader(trickle));
  EXPECT_EQ(Take(pieces->Read(5)), "abcde");
}

TEST_F(TextWriterReaderTest, ClosedReadersGiveNothing) {
  RObject<CCountingStream> stream(new CCountingStream());
  stream->Write(Bytes("a\nb").data(), 3);
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CStreamReader> reader(new CStreamReader(stream));
  EXPECT_TRUE(reader->IsType(FourCC("txtr")));
  EXPECT_EQ(Take(reader->ReadLine()), "a");
  reader->Close();
  EXPECT_EQ(stream->closes, 1);
  EXPECT_EQ(stream->GetReferences(), 1);
  EXPECT_EQ(Take(reader->ReadLine()), "<null>");
  EXPECT_EQ(Take(reader->Read(1)), "<null>");
}

TEST_F(TextWriterReaderTest, WhatTheWriterWritesTheReaderReads) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CStreamWriter> writer(new CStreamWriter(stream));
  RObject<CString> crlf(new CString("\r\n"));
  writer->SetNewLine(crlf);
  const wchar_t* lines[] = {L"WEBVTT", L"", L"00:00.000 --> 00:01.000", L"caf\u00e9 \u266a", L"\u65e5\u672c\u8a9e"};
  for (const wchar_t* line : lines) ASSERT_TRUE(writer->WriteLine(line).Succeeded());
  ASSERT_TRUE(stream->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  RObject<CStreamReader> reader(new CStreamReader(stream));
  for (const wchar_t* line : lines) {
    RObject<CString> read(reader->ReadLine());
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->Equals(line));
  }
  EXPECT_EQ(Take(reader->ReadLine()), "<null>");
}
