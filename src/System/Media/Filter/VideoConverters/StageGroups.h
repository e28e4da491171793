#pragma once
// Builds a stage map from groups of formats: every ordered pair of a group
// that the filter accepts becomes a row (matrix 2 on both sides).

#include <initializer_list>
#include <vector>

#include "System/Media/Filter/VideoConverters/Stage.h"

namespace Corvane::Mox {

template <class Accept>
void AddGroupRows(std::vector<CStage::Row>& rows, std::initializer_list<unsigned int> group, Accept accept) {
  for (unsigned int in : group)
    for (unsigned int out : group)
      if (accept(in, out)) rows.push_back({{in, 2}, {out, 2}});
}

}  // namespace Corvane::Mox
