#pragma once
// MediaPropertyName: the names of the format-specific facts that travel in a
// description's property bag (an MPEG profile, an MXF wrapping, a loudness
// value, a caption source). Each constant's text is its identifier.

#include "System/PropertyName.h"

namespace Corvane::Mox::MediaPropertyName {

#define MOX_MEDIA_PROPERTY(group, name) inline constexpr PropertyName name{#name};
#include "System/Media/MediaPropertyName.def"
#undef MOX_MEDIA_PROPERTY

enum Group : int { Media = 0, Video = 1, Audio = 2, Subtitle = 3 };

struct Entry {
  PropertyName name;
  Group group;
};

// Every name, in table order.
int GetCount();
const Entry* GetEntry(int index);
// The entry of a name's text; null when it is not a media property.
const Entry* Find(const char* text);

}  // namespace Corvane::Mox::MediaPropertyName
