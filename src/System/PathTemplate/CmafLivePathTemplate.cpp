#include "System/PathTemplate/CmafLivePathTemplate.h"

namespace Corvane::Mox {

CCmafLivePathTemplate::CCmafLivePathTemplate() : CCmafPathTemplate(TypeCode) {
  SetPlaylist("$session/$$container$/$media$/$kbps$/$language3/$$playlist_name$");
  SetMedia("$session/$$container$/Media/$kbps$$directory:/dir%d$/segment$-segment$$-time$$_init$.$extension$");
  SetVideo("$session/$$container$/Video/$kbps$$directory:/dir%d$/segment$-segment$$-time$$_init$.$extension$");
  SetAudio(
      "$session/$$container$/Audio/$kbps$$/language3$$directory:/dir%d$/segment$-segment$$-time$$_init$.$extension$");
  SetSubtitle("$session/$$container$/Subtitle/$kbps$/segment$-segment$$-time$.$extension$");
}

}  // namespace Corvane::Mox
