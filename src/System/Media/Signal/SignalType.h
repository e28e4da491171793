#pragma once
// SignalType: display names of the live-signal types.

namespace Corvane::Mox {

class SignalType {
 public:
  // The display name of the signal type, or null for an unknown code.
  static const char* GetName(unsigned int code);
};

}  // namespace Corvane::Mox
