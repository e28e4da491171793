#include "System/PathTemplate/CmafPathTemplate.h"

namespace Corvane::Mox {

CCmafPathTemplate::CCmafPathTemplate() : CCmafPathTemplate(TypeCode) {}

CCmafPathTemplate::CCmafPathTemplate(unsigned int type) : CPathTemplate(type) {
  DefineNamed("presentation", "$package$.mpd");
  DefineNamed("manifest", "$package$.m3u8");
  DefineNamed("playlist", "$container$/index.m3u8");
  SetMedia("$container$/segment$segment$$init$.$extension$");
}

}  // namespace Corvane::Mox
