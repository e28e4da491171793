#pragma once
// The audio format converter converts in one step only between the pairs of
// its table: 24-bit integers, for one, have no step to mu-law. PlanAudio looks
// at the audio tracks of an input and gives, for each, the formats its
// converters must produce in order: the target alone where one converter
// does it, otherwise an intermediate format first, the one through which the
// conversion loses least (the loss the topology ranks converter chains by).

#include <string>
#include <vector>

namespace MoxTool {

// What a convert job does with the audio of its input.
struct AudioPlan {
  // The format the audio is converted to; 0 for none (the tracks go to the
  // writer as they are).
  unsigned int format = 0;
  // True when format was not asked for but chosen because the writer refuses
  // some track as it is (IMA ADPCM into WAV, say): 16-bit PCM ("sowt").
  bool chosen = false;
  // Per audio track, in track order, the output formats of its converters.
  std::vector<std::vector<unsigned int>> chains;
};

// The audio plan for converting input into a container writer of
// writerType, to the requested format or (0) to whatever the writer takes.
// The input is opened once; one that cannot be opened has an empty plan.
AudioPlan PlanAudio(const std::string& input, unsigned int requested, unsigned int writerType);

}  // namespace MoxTool
