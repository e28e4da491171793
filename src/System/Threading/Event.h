#pragma once
// CEvent: a small notification object. Its object type is the kind of event
// and it carries one 32-bit code, so receivers can tell events apart with
// IsType and read the detail with GetCode.

#include "System/Object.h"

namespace Corvane::Mox {

class CEvent : public CObject {
 public:
  CEvent(unsigned int type, unsigned int code);

  unsigned int GetCode() const { return code_; }
  void SetCode(unsigned int code) { code_ = code; }

 private:
  unsigned int code_;
};

}  // namespace Corvane::Mox
