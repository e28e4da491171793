#pragma once
// CTextReader: reads text, a piece or a line at a time. Strings returned
// are new and owned by the caller; null means there is nothing more.

#include "System/Object.h"

namespace Corvane::Mox {

class CTextReader : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("txtr");

  CTextReader();

  // Accepts "txtr" as well as the subclass's own code.
  bool IsType(unsigned int type) const override;

  // Up to count bytes decoded as text; null for a negative count or a failed read.
  virtual CString* Read(int count) = 0;
  // The next line without its terminator; null at the end of the data.
  virtual CString* ReadLine() = 0;
  virtual void Close() = 0;

 protected:
  explicit CTextReader(unsigned int type);
};

}  // namespace Corvane::Mox
