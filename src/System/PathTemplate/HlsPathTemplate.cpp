#include "System/PathTemplate/HlsPathTemplate.h"

namespace Corvane::Mox {

CHlsPathTemplate::CHlsPathTemplate() : CPathTemplate(TypeCode) {
  DefineNamed("manifest", "$package$.m3u8");
  DefineNamed("playlist", "$container$/$playlist_name$");
  DefineNamed("key", "$package$_$kid$.bin");
  SetMedia("$container$/segment$_segment$.$extension$");
}

}  // namespace Corvane::Mox
