#include "System/IO/StreamWriter.h"

#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/Text.h"
#include "System/Text/Encoding.h"

namespace Corvane::Mox {

namespace {

bool IsUtf8(const CEncoding* encoding) {
  RObject<CString> name(encoding->GetEncodingType());
  return name->EqualsIgnoreCase("UTF-8") || name->EqualsIgnoreCase("UTF8");
}

}  // namespace

CStreamWriter::CStreamWriter(CStream* stream) : CStreamWriter(stream, nullptr) {}

CStreamWriter::CStreamWriter(CStream* stream, CEncoding* encoding)
    : CTextWriter(TypeCode), stream_(stream), encoding_(encoding ? encoding : CEncoding::Create("UTF-8")), utf8_(false) {
  if (stream_) stream_->Acquire();
  if (encoding) encoding->Acquire();
  utf8_ = IsUtf8(encoding_);
}

CStreamWriter::~CStreamWriter() {
  if (stream_) stream_->Release();
  encoding_->Release();
}

CEncoding* CStreamWriter::GetEncoding() const {
  encoding_->Acquire();
  return encoding_;
}

Result CStreamWriter::Write(const unsigned char* bytes, int count) {
  if (!stream_) return ResultInvalidOperation("the writer is closed");
  if (count <= 0) return ResultOK();
  return stream_->Write(bytes, count);
}

Result CStreamWriter::Write(CString* text) {
  if (!text) return ResultOK();
  if (utf8_) {
    const char* chars = text->GetChars();
    return Write(reinterpret_cast<const unsigned char*>(chars), static_cast<int>(std::strlen(chars)));
  }
  RObject<CByteArray> bytes(encoding_->GetBytes(text));
  if (!bytes) return ResultNotSupported("the encoding cannot convert text");
  return Write(bytes->GetData(), bytes->GetLength());
}

Result CStreamWriter::Flush() { return stream_ ? stream_->Flush() : ResultOK(); }

Result CStreamWriter::Close() {
  if (!stream_) return ResultOK();
  Result result = stream_->Flush();
  stream_->Close();
  stream_->Release();
  stream_ = nullptr;
  return result;
}

}  // namespace Corvane::Mox
