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

// The format to convert the input's audio to when none was asked for: 16-bit
// little-endian PCM ("sowt") when a container writer of writerType refuses
// some audio track as it is (IMA ADPCM into WAV, say) but takes that format;
// 0 when every track goes in as it is or nothing would help.
unsigned int ChooseAudioFormat(const std::string& input, unsigned int writerType);

}  // namespace MoxTool
