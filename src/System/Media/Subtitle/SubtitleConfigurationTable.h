#pragma once
// CSubtitleConfigurationTable ("sctb"): the constant table of subtitle
// conversions a filter class supports (a caption converter's, say); see
// CConfigurationTable for the rows and the look-ups.

#include "System/Media/ConfigurationTable.h"
#include "System/Media/Subtitle/SubtitleConfiguration.h"

namespace Corvane::Mox {

using SubtitleConfigurationRow = ConfigurationRow<SubtitleConfiguration>;

extern template class CConfigurationTable<SubtitleConfiguration, CSubtitleConfiguration, CSubtitleProperties>;

class CSubtitleConfigurationTable
    : public CConfigurationTable<SubtitleConfiguration, CSubtitleConfiguration, CSubtitleProperties> {
 public:
  static constexpr unsigned int TypeCode = FourCC("sctb");

  // rows may be null (an empty table); it must outlive the table.
  explicit CSubtitleConfigurationTable(const SubtitleConfigurationRow* rows) : CConfigurationTable(TypeCode, rows) {}
};

}  // namespace Corvane::Mox
