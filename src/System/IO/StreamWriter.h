#pragma once
// CStreamWriter: a text writer onto a stream. Every write goes straight to
// the stream (there is no buffer of its own); strings and wide text are
// encoded with the writer's encoding, UTF-8 unless another is given.

#include "System/IO/TextWriter.h"

namespace Corvane::Mox {

class CEncoding;
class CStream;

class CStreamWriter : public CTextWriter {
 public:
  static constexpr unsigned int TypeCode = FourCC("stwr");

  // Acquires stream (and encoding); a null encoding means UTF-8.
  explicit CStreamWriter(CStream* stream);
  CStreamWriter(CStream* stream, CEncoding* encoding);
  ~CStreamWriter() override;

  // The encoding, acquired.
  CEncoding* GetEncoding() const;

  using CTextWriter::Write;
  using CTextWriter::WriteLine;
  Result Write(const unsigned char* bytes, int count) override;
  // A null text writes nothing.
  Result Write(CString* text) override;
  Result Flush() override;
  // Flushes and closes the stream and lets go of it; later writes give
  // ResultInvalidOperation.
  Result Close() override;

 private:
  CStream* stream_;
  CEncoding* encoding_;
  bool utf8_;  // strings can be written as their own bytes
};

}  // namespace Corvane::Mox
