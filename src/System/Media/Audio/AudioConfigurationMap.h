#pragma once
// CAudioConfigurationMap ("acmp"): the conversions a filter instance works
// out at run time (a channel mapper's routings, say), as input
// configurations each with the output configurations it can become. Inputs
// keep the order in which they were first added; a pair is kept once.

#include "System/Media/Audio/AudioConfiguration.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;
class CAudioConfigurationTable;

class CAudioConfigurationMap : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("acmp");

  CAudioConfigurationMap();
  ~CAudioConfigurationMap() override;

  // Adds output under input; ResultFalse when the pair is already there.
  Result Add(const AudioConfiguration& input, const AudioConfiguration& output);
  // Adds every row of a table.
  Result AddTable(const CAudioConfigurationTable* table);
  bool Contains(const AudioConfiguration& input, const AudioConfiguration& output) const;
  // The number of distinct inputs.
  int GetCount() const;
  // The distinct inputs in first-added order (acquired; never null).
  CArrayList<CAudioConfiguration>* GetInputConfigurations() const;
  // The outputs of one input (acquired; empty when the input is unknown).
  CArrayList<CAudioConfiguration>* GetOutputConfigurations(const AudioConfiguration& input) const;
  // The outputs of every input that accepts the description, without repeats.
  CArrayList<CAudioConfiguration>* GetOutputConfigurations(const CAudioProperties* input) const;
  void Clear();

 private:
  struct Entry;
  Entry* Find(const AudioConfiguration& input) const;

  Entry* first_;
  Entry* last_;
  int count_;
};

}  // namespace Corvane::Mox
