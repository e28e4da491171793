#pragma once
// CY4mWriter: writes a YUV4MPEG2 header from its parameters, then frames.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CStream;
class CY4mFrame;
class CY4mParameter;

class CY4mWriter : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("y4mw");

  CY4mWriter();
  ~CY4mWriter() override;

  // Keeps the parameter; header order is the order added.
  void AddParameter(CY4mParameter* parameter);
  // "YUV4MPEG2", each parameter after a blank, and a line feed.
  Result WriteHeader(CStream* stream) const;
  Result WriteFrame(CStream* stream, CY4mFrame* frame) const;

 private:
  std::vector<CY4mParameter*> parameters_;
};

}  // namespace Corvane::Mox
