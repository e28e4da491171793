#pragma once
// CBinary: the vocabulary of binary reading and writing. Byte orders, and the
// field types with which container formats of variable field width describe
// how many bytes an integer field takes.

#include "System/Result.h"

namespace Corvane::Mox {

class CBinary {
 public:
  // The host order is little-endian; values are swapped exactly for BigEndian.
  enum ByteOrder : int {
    LittleEndian = 1,
    BigEndian = 2,
  };

  // Note the order: three bytes come after four.
  enum FieldType : int {
    FieldAbsent = 0,
    FieldOneByte = 1,
    FieldTwoBytes = 2,
    FieldFourBytes = 3,
    FieldThreeBytes = 4,
  };

  // Maps a byte size of 0 to 4 to its field type; 5 or more is not supported.
  static Result ToFieldType(int size, FieldType& type);

  CBinary() = delete;
};

}  // namespace Corvane::Mox
