#pragma once
// CAudioConfigurationTable ("actb"): the constant table of audio conversions
// a filter class supports (a format converter's, say); see
// CConfigurationTable for the rows and the look-ups.

#include "System/Media/Audio/AudioConfiguration.h"
#include "System/Media/ConfigurationTable.h"

namespace Corvane::Mox {

using AudioConfigurationRow = ConfigurationRow<AudioConfiguration>;

extern template class CConfigurationTable<AudioConfiguration, CAudioConfiguration, CAudioProperties>;

class CAudioConfigurationTable
    : public CConfigurationTable<AudioConfiguration, CAudioConfiguration, CAudioProperties> {
 public:
  static constexpr unsigned int TypeCode = FourCC("actb");

  // rows may be null (an empty table); it must outlive the table.
  explicit CAudioConfigurationTable(const AudioConfigurationRow* rows) : CConfigurationTable(TypeCode, rows) {}
};

}  // namespace Corvane::Mox
