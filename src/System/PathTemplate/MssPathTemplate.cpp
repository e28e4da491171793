#include "System/PathTemplate/MssPathTemplate.h"

namespace Corvane::Mox {

CMssPathTemplate::CMssPathTemplate() : CPathTemplate(TypeCode) {
  DefineNamed("client", "$package$.ismc");
  DefineNamed("server", "$package$.ism");
  SetMedia("$package$_$kbps$kbps.$extension$");
  SetVideo("$package$_$kbps$.ismv");
  SetAudio("$package$_a$kbps$_$language3$.isma");
  SetSubtitle("$package$_s$language3$.ismt");
}

}  // namespace Corvane::Mox
