#pragma once
// CMediaKindFilterT: what the video, audio and subtitle filter bases share.
// A filter class that supports a fixed set of conversions names them in a
// constant table of {input, output} partial descriptions ended by a row whose
// input format is 0; the input and output format lists, the configurations
// and Evaluate come from that table, narrowed by the "OutputFormat" property.
// Without a table the typed layer's format-list rules apply.
//
// The members are defined in MediaKindFilterImpl.h, instantiated once per
// kind in VideoFilter.cpp, AudioFilter.cpp and SubtitleFilter.cpp.

#include "System/Media/ConfigurationTable.h"
#include "System/Media/Filter/MediaFilterT.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;

// Copies what every kind of sample carries: a deep copy of the metadata, the
// shared analysis and user data, the property bag, Time, Hint, Duration and
// Trim.
Result CopyCommonSampleMetadata(CMediaSample* to, const CMediaSample* from);

template <class S, class P, class C, class CO>
class CMediaKindFilterT : public CMediaFilterT<S, P> {
 public:
  using Configuration = C;
  using ConfigurationObject = CO;
  using Row = ConfigurationRow<C>;

  explicit CMediaKindFilterT(unsigned int componentCode) : CMediaFilterT<S, P>(componentCode) {}

  CFormatList* GetInputFormats() const override;
  CFormatList* GetOutputFormats() const override;
  using CMediaFilterT<S, P>::Evaluate;
  int Evaluate(const P* properties) const override;

  // The table's configurations (acquired); null without a table.
  virtual CArrayList<CO>* GetInputConfigurations() const;
  virtual CArrayList<CO>* GetOutputConfigurations() const;
  virtual CArrayList<CO>* GetOutputConfigurations(const CO* input) const;
  virtual Result CopySampleMetadata(S* to, const S* from) { return CopyCommonSampleMetadata(to, from); }
  // The output formats of every row of the table, whatever the input (an
  // empty list without a table); for catalogs and inspectors.
  CFormatList* GetTableOutputFormats() const;
  // The class's constant conversion table, or null.
  virtual const Row* GetConfigurationTable() const { return nullptr; }

  // The "OutputFormat" property; 0 when unset.
  unsigned int GetRequestedOutputFormat() const;

 protected:
  // The description the output formats are worked out for (borrowed): the
  // first input.
  virtual const P* GetCurrentInput() const;

 private:
  bool RowSelected(const Row& row, unsigned int outputFormat) const;
  // One side of the selected rows.
  CArrayList<CO>* GetConfigurations(C Row::*side) const;
};

}  // namespace Corvane::Mox
