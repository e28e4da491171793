#include "System/PathTemplate/DashPathTemplate.h"

namespace Corvane::Mox {

CDashPathTemplate::CDashPathTemplate() : CPathTemplate(TypeCode) {
  DefineNamed("presentation", "$package$.mpd");
  SetMedia("$container$/segment$segment$$time$$init$.$extension$");
}

}  // namespace Corvane::Mox
