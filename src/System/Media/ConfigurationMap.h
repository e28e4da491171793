#pragma once
// CConfigurationMap: the conversions a filter instance works out at run time,
// as input configurations of one media kind each with the output
// configurations it can become. Inputs keep the order in which they were first
// added; a pair is kept once.
//
// The member functions are defined in ConfigurationMapImpl.h, which only the
// source file of each media kind's map includes; that file instantiates the
// template for its kind, so this header stays light.

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CArrayList;

// Configuration, ConfigurationObject and Properties as for
// CConfigurationTable; Table: the same kind's CConfigurationTable subclass.
template <class Configuration, class ConfigurationObject, class Properties, class Table>
class CConfigurationMap : public CObject {
 public:
  ~CConfigurationMap() override;

  // Adds output under input; ResultFalse when the pair is already there.
  Result Add(const Configuration& input, const Configuration& output);
  // Adds every row of a table.
  Result AddTable(const Table* table);
  bool Contains(const Configuration& input, const Configuration& output) const;
  // The number of distinct inputs.
  int GetCount() const;
  // The distinct inputs in first-added order (acquired; never null).
  CArrayList<ConfigurationObject>* GetInputConfigurations() const;
  // The outputs of one input (acquired; empty when the input is unknown).
  CArrayList<ConfigurationObject>* GetOutputConfigurations(const Configuration& input) const;
  // The outputs of every input that accepts the description, without repeats.
  CArrayList<ConfigurationObject>* GetOutputConfigurations(const Properties* input) const;
  void Clear();

 protected:
  explicit CConfigurationMap(unsigned int type);

 private:
  struct Entry;
  Entry* Find(const Configuration& input) const;

  Entry* first_;
  Entry* last_;
  int count_;
};

}  // namespace Corvane::Mox
