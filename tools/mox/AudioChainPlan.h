#pragma once
// The audio format converter converts in one step only between the pairs of
// its table: 24-bit integers, for one, have no step to mu-law. PlanAudioChains
// looks at the audio tracks of an input and gives, for each, the formats its
// converters must produce in order: the target alone where one converter
// does it, otherwise an intermediate format first, the one through which the
// conversion loses least (the loss the topology ranks converter chains by).

#include <string>
#include <vector>

namespace MoxTool {

// One list of converter output formats per audio track, in track order;
// empty when the input cannot be opened or has no audio.
std::vector<std::vector<unsigned int>> PlanAudioChains(const std::string& input, unsigned int target);

}  // namespace MoxTool
