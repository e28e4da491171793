#include "System/Media/Y4m/Y4mParameters.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

bool EndsValue(unsigned char byte) { return byte == ' ' || byte == '\n'; }

// The value's text up to the blank or line feed, at most `limit` bytes kept.
Result ReadText(CBinaryReader* reader, unsigned char& last, std::string& text, size_t limit) {
  for (;;) {
    Result result = reader->ReadByte(&last);
    if (result.Failed()) return result;
    if (EndsValue(last)) return Result();
    if (text.size() < limit) text.push_back(static_cast<char>(last));
  }
}

}  // namespace

Result CY4mNumberParameter::Read(CBinaryReader* reader, unsigned char& last) {
  return ReadNumber(reader, last, value_, false);
}

Result CY4mNumberParameter::Write(CBinaryWriter* writer) const {
  char text[32];
  std::snprintf(text, sizeof(text), "%ld", static_cast<long>(value_));
  return WriteText(writer, text);
}

Result CY4mRatioParameter::Read(CBinaryReader* reader, unsigned char& last) {
  long long numerator = 0;
  Result result = ReadNumber(reader, last, numerator, true);
  if (result.Failed()) return result;
  unsigned long long denominator = 0;
  if (last == ':') {
    // A run of colons separates the two numbers.
    do {
      result = reader->ReadByte(&last);
      if (result.Failed()) return result;
    } while (last == ':');
    // The first digit of the denominator ended the run of colons.
    while (!EndsValue(last)) {
      denominator = denominator * 10 + static_cast<unsigned long long>(last - '0');
      result = reader->ReadByte(&last);
      if (result.Failed()) return result;
    }
  }
  value_ = Rational<int>(static_cast<int>(numerator), static_cast<int>(denominator));
  return Result();
}

Result CY4mRatioParameter::Write(CBinaryWriter* writer) const {
  char text[48];
  std::snprintf(text, sizeof(text), "%ld:%ld", static_cast<long>(value_.numerator), static_cast<long>(value_.denominator));
  return WriteText(writer, text);
}

Result CY4mInterlacingModeParameter::Read(CBinaryReader* reader, unsigned char& last) {
  std::string text;
  Result result = ReadText(reader, last, text, 16);
  if (result.Failed()) return result;
  const char mode = text.empty() ? 'p' : text[0];
  mode_ = mode == 't'   ? Y4mInterlacingMode::TopFieldFirst
          : mode == 'b' ? Y4mInterlacingMode::BottomFieldFirst
          : mode == 'm' ? Y4mInterlacingMode::Mixed
                        : Y4mInterlacingMode::Progressive;
  return Result();
}

Result CY4mInterlacingModeParameter::Write(CBinaryWriter* writer) const {
  static const char* const kTexts[] = {"p", "t", "b", "m"};
  return WriteText(writer, kTexts[static_cast<int>(mode_) & 3]);
}

namespace {

struct ColorSpaceText {
  Y4mColorSpace space;
  const char* text;
};

constexpr ColorSpaceText kColorSpaces[] = {
    {Y4mColorSpace::C420, "420"},         {Y4mColorSpace::C420jpeg, "420jpeg"}, {Y4mColorSpace::C420paldv, "420paldv"},
    {Y4mColorSpace::C411, "411"},         {Y4mColorSpace::C422, "422"},         {Y4mColorSpace::C444, "444"},
    {Y4mColorSpace::C420p10, "420p10"},   {Y4mColorSpace::C422p10, "422p10"},
};

}  // namespace

const char* CY4mColorSpaceParameter::GetText(Y4mColorSpace space) {
  for (const ColorSpaceText& entry : kColorSpaces)
    if (entry.space == space) return entry.text;
  return "420";
}

Result CY4mColorSpaceParameter::Read(CBinaryReader* reader, unsigned char& last) {
  std::string text;
  Result result = ReadText(reader, last, text, 16);
  if (result.Failed()) return result;
  space_ = Y4mColorSpace::C420;
  for (const ColorSpaceText& entry : kColorSpaces)
    if (text == entry.text) space_ = entry.space;
  return Result();
}

Result CY4mColorSpaceParameter::Write(CBinaryWriter* writer) const { return WriteText(writer, GetText(space_)); }

CY4mCommentParameter::CY4mCommentParameter(CString* text) : CY4mParameter('X'), text_(text) {
  if (text_) text_->Acquire();
}

CY4mCommentParameter::~CY4mCommentParameter() {
  if (text_) text_->Release();
}

Result CY4mCommentParameter::Read(CBinaryReader* reader, unsigned char& last) {
  std::string text;
  Result result = ReadText(reader, last, text, 4096);
  if (result.Failed()) return result;
  if (text_) text_->Release();
  text_ = CString::WithString(text.c_str());
  return Result();
}

Result CY4mCommentParameter::Write(CBinaryWriter* writer) const { return WriteText(writer, text_ ? text_->GetChars() : ""); }

}  // namespace Corvane::Mox
