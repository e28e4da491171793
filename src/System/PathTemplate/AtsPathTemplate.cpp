#include "System/PathTemplate/AtsPathTemplate.h"

namespace Corvane::Mox {

CAtsPathTemplate::CAtsPathTemplate() : CPathTemplate(TypeCode) {
  DefineNamed("presentation", "$package$.mpd");
  SetMedia("$container$.ts");
}

}  // namespace Corvane::Mox
