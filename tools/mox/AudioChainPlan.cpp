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

}  // namespace

std::vector<std::vector<unsigned int>> PlanAudioChains(const std::string& input, unsigned int target) {
  std::vector<std::vector<unsigned int>> chains;
  RObject<CString> path(CString::WithString(input.c_str()));
  if (!CFile::Exists(path)) return chains;
  RObject<CContainerReader> reader(CContainerReader::Create(path));
  if (!reader) return chains;
  if (reader->BeginIndex().Succeeded()) {
    for (int i = 0; i < reader->GetAudioMediaCount(); ++i) {
      RObject<CAudioProperties> track(reader->GetAudioProperties(i));
      if (track) chains.push_back(PlanChain(track, target));
    }
  }
  reader->EndIndex();
  reader->ClearVariances();
  return chains;
}

}  // namespace MoxTool
