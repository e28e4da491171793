#pragma once
// CY4mParameter: one header parameter of a YUV4MPEG2 stream, a letter
// followed by its value up to the next blank or line feed. Read returns the
// byte that ended the value so the header parser knows whether more follow.

#include "System/Object.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;

class CY4mParameter : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("y4mp");

  explicit CY4mParameter(unsigned char identifier);

  unsigned char GetIdentifier() const { return identifier_; }
  // Reads the value (the letter has been read) up to and including the byte
  // that ends it, which comes back in `last`.
  virtual Result Read(CBinaryReader* reader, unsigned char& last) = 0;
  // Writes letter and value.
  virtual Result Write(CBinaryWriter* writer) const = 0;

  // Skips the value of a parameter nobody knows.
  static Result Skip(CBinaryReader* reader, unsigned char& last);
  // The parameter class for a letter (a new object), or null when unknown.
  static CY4mParameter* Create(unsigned char identifier);

 protected:
  // Reads digits up to `stop`, a blank or a line feed; each byte adds
  // (byte - '0') to ten times the value, without further checks (the value
  // wraps rather than overflows).
  static Result ReadNumber(CBinaryReader* reader, unsigned char& last, long long& value, bool stopAtColon);
  // Writes the letter followed by formatted text.
  Result WriteText(CBinaryWriter* writer, const char* text) const;

 private:
  unsigned char identifier_;
};

}  // namespace Corvane::Mox
