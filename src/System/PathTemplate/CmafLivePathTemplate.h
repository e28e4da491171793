#pragma once
// CCmafLivePathTemplate: the templates of live CMAF packages. The same named
// templates as CMAF, with defaults that put each session, rendition, bit
// rate and language in folders of their own.

#include "System/PathTemplate/CmafPathTemplate.h"

namespace Corvane::Mox {

class CCmafLivePathTemplate : public CCmafPathTemplate {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcml");

  CCmafLivePathTemplate();
};

}  // namespace Corvane::Mox
