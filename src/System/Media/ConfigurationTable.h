#pragma once
// CConfigurationTable: the constant table of conversions a filter class
// supports, as rows {input, output} of partial descriptions of one media kind
// (audio, subtitles). The rows live in static storage owned by the filter
// class; the table only walks them. The last row has an input Format of 0 and
// is not counted.
//
// The member functions are defined in ConfigurationTableImpl.h, which only
// the source file of each media kind's table includes; that file instantiates
// the template for its kind, so this header stays light.

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;

template <class Configuration>
struct ConfigurationRow {
  Configuration input;
  Configuration output;
};

// Configuration: the plain partial description (Matches, Create, operator==,
// an int format); ConfigurationObject: its object form; Properties: the
// description that Configuration::Create reads.
template <class Configuration, class ConfigurationObject, class Properties>
class CConfigurationTable : public CObject {
 public:
  using Row = ConfigurationRow<Configuration>;

  int GetCount() const { return count_; }
  // Null for an index outside 0..count-1.
  const Row* GetRow(int index) const;

  // The input formats of the rows whose output Format is outputFormat (of
  // every row when it is 0), in table order without repeats. Returns the
  // number found; at most capacity are stored.
  int GetInputFormats(unsigned int outputFormat, unsigned int* formats, int capacity) const;
  // The output formats of the rows whose input accepts the description.
  int GetOutputFormats(const Properties* input, unsigned int* formats, int capacity) const;
  // Every row's input configuration, in table order (acquired; never null).
  CArrayList<ConfigurationObject>* GetInputConfigurations() const;
  // The output configurations of the rows whose input equals input.
  CArrayList<ConfigurationObject>* GetOutputConfigurations(const ConfigurationObject* input) const;
  // The first row whose input accepts the description and whose output
  // Format is outputFormat (any output when 0); null when none.
  const Row* Find(const Properties* input, unsigned int outputFormat) const;

 protected:
  // rows may be null (an empty table); it must outlive the table.
  CConfigurationTable(unsigned int type, const Row* rows);

 private:
  const Row* rows_;
  int count_;
};

}  // namespace Corvane::Mox
