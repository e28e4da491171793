#include "AudioChainPlan.h"

#include <Mox.h>

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

CAudioConverter* NewFormatConverter() {
  return CFamilyInventory<CAudioConverter>::CreateAvailable(FourCC("afc "));
}

// What a format converter told to produce `format` makes of `input`; null
// when its table has no such step.
CMediaProperties* ConvertedBy(const CMediaProperties* input, unsigned int format) {
  RObject<CAudioConverter> converter(NewFormatConverter());
  if (!converter || !converter->Evaluate(input) || converter->AddInputMedia(input).Failed()) return nullptr;
  if (converter->SetFourProperty(CodeBookProperty::MediaFilter::OutputFormat, format).Failed()) return nullptr;
  return converter->GetOutputMedia(0);
}

std::vector<unsigned int> PlanChain(const CMediaProperties* track, unsigned int target) {
  const std::vector<unsigned int> direct{target};
  RObject<CAudioConverter> converter(NewFormatConverter());
  auto* filter = dynamic_cast<CAudioFilter*>(converter.Get());
  // A track the converter cannot take gets its decoder from the topology,
  // and the decoder's output is not known here: leave it to one converter.
  if (!filter || !filter->Evaluate(track)) return direct;
  if (RObject<CMediaProperties>(ConvertedBy(track, target))) return direct;
  RObject<CFormatList> candidates(filter->GetTableOutputFormats());
  std::vector<unsigned int> best = direct;
  float bestLoss = 0;
  for (CValue<unsigned int>* candidate : *candidates) {
    RObject<CMediaProperties> between(ConvertedBy(track, candidate->GetValue()));
    if (!between) continue;
    RObject<CMediaProperties> end(ConvertedBy(between, target));
    if (!end) continue;
    const float loss = WFL::CFidelity::GetFidelityLoss(track, between) + WFL::CFidelity::GetFidelityLoss(between, end);
    if (best.size() == 1 || loss < bestLoss) {
      best = {candidate->GetValue(), target};
      bestLoss = loss;
    }
  }
  return best;
}

// The audio track descriptions of a local file, as the reader that
// recognises it gives them; none when it cannot be opened.
std::vector<RObject<CAudioProperties>> ReadAudioTracks(const std::string& input) {
  std::vector<RObject<CAudioProperties>> tracks;
  RObject<CString> path(CString::WithString(input.c_str()));
  if (!CFile::Exists(path)) return tracks;
  RObject<CContainerReader> reader(CContainerReader::Create(path));
  if (!reader) return tracks;
  if (reader->BeginIndex().Succeeded()) {
    for (int i = 0; i < reader->GetAudioMediaCount(); ++i) {
      RObject<CAudioProperties> track(reader->GetAudioProperties(i));
      if (track) tracks.push_back(track);
    }
  }
  reader->EndIndex();
  reader->ClearVariances();
  return tracks;
}

// Whether a new writer of writerType takes the track as it is.
bool WriterTakes(unsigned int writerType, CAudioProperties* track) {
  RObject<CContainerWriter> writer(CContainerWriterInventory::Create(writerType));
  return writer && writer->AddAudioMedia(track).Succeeded();
}

}  // namespace

AudioPlan PlanAudio(const std::string& input, unsigned int requested, unsigned int writerType) {
  AudioPlan plan;
  const std::vector<RObject<CAudioProperties>> tracks = ReadAudioTracks(input);
  plan.format = requested;
  if (!requested) {
    // 16-bit PCM, where the writer takes that but not some track as it is.
    constexpr unsigned int Pcm16 = FourCC("sowt");
    for (const RObject<CAudioProperties>& track : tracks) {
      if (WriterTakes(writerType, track)) continue;
      RObject<CAudioProperties> converted(new CAudioProperties(track.Get()));
      converted->SetFormat(Pcm16);
      converted->SetBitsPerSample(16);
      plan.chosen = WriterTakes(writerType, converted);
      break;
    }
    if (!plan.chosen) return plan;
    plan.format = Pcm16;
  }
  for (const RObject<CAudioProperties>& track : tracks) plan.chains.push_back(PlanChain(track, plan.format));
  return plan;
}

}  // namespace MoxTool
