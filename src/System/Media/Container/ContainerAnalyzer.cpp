#include "System/Media/Container/ContainerAnalyzer.h"

#include "System/Media/Container/AudioChannelCodingAnalyzer.h"

namespace Corvane::Mox {

CContainerAnalyzer::CContainerAnalyzer(unsigned int type, CContainerReader* reader) : CObject(type), reader_(reader) {}

CContainerAnalyzer* CContainerAnalyzer::Create(CContainerReader* reader, unsigned int type) {
  if (!reader) return nullptr;
  if (type == CAudioChannelCodingAnalyzer::TypeCode) return new CAudioChannelCodingAnalyzer(reader);
  return nullptr;
}

}  // namespace Corvane::Mox
