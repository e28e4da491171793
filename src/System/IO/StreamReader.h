#pragma once
// CStreamReader: a text reader over a stream, decoding with the reader's
// encoding (UTF-8 unless another is given).
//
// ReadLine reads one encoded character unit at a time (1 byte in UTF-8, 2 in
// UTF-16, 4 in UTF-32). A line feed ends a line. On a seekable stream a
// carriage return ends it as well, swallowing a line feed right after it;
// on a stream that cannot seek the carriage return is dropped and only line
// feeds end lines. UTF-8 characters are never split; lines longer than
// 16,383 bytes come back in pieces of that size.

#include <vector>

#include "System/IO/TextReader.h"

namespace Corvane::Mox {

class CEncoding;
class CStream;

class CStreamReader : public CTextReader {
 public:
  static constexpr unsigned int TypeCode = FourCC("strd");
  // Bytes of one line piece.
  static constexpr int MaxLineBytes = 16383;

  // Acquires stream (and encoding); a null encoding means UTF-8.
  explicit CStreamReader(CStream* stream);
  CStreamReader(CStream* stream, CEncoding* encoding);
  ~CStreamReader() override;

  CString* Read(int count) override;
  CString* ReadLine() override;
  // Closes the stream and lets go of it; later reads give null.
  void Close() override;

 private:
  // The line feed and carriage return as encoded units.
  struct Terminators {
    std::vector<unsigned char> lineFeed;
    std::vector<unsigned char> carriageReturn;
  };

  CEncoding* GetEncoding();
  const Terminators& GetTerminators();
  // Reads up to count bytes, as many as the stream delivers.
  int ReadBytes(unsigned char* bytes, int count);
  // True when a whole unit arrived.
  bool ReadUnit(std::vector<unsigned char>& unit);
  // After a carriage return: consumes a line feed that follows, or steps back.
  void SkipLineFeed(int unitSize);
  // Appends the continuation bytes of the UTF-8 character led by lead.
  void AppendContinuation(std::vector<unsigned char>& line, unsigned char lead);
  CString* Decode(const std::vector<unsigned char>& bytes);

  CStream* stream_;
  CEncoding* encoding_;
  Terminators terminators_;
  bool utf8_;
};

}  // namespace Corvane::Mox
