#include "System/Media/Filter/VideoConverters/HashableVideoProperties.h"

namespace Corvane::Mox {

namespace {

// The fields that make two descriptions the same node, in a fixed order.
void NodeFields(const CVideoProperties* p, int (&fields)[10]) {
  fields[0] = static_cast<int>(p->GetFormat());
  fields[1] = p->GetWidth();
  fields[2] = p->GetHeight();
  fields[3] = p->GetBitDepth();
  fields[4] = p->GetSubsampling();
  fields[5] = p->GetChromaSiting();
  fields[6] = p->GetMatrixCoefficients();
  fields[7] = p->GetColorPrimaries();
  fields[8] = p->GetTransferCharacteristics();
  fields[9] = p->GetVideoRange();
}

}  // namespace

size_t CHashableVideoProperties::GetNodeHash() const {
  int fields[10];
  NodeFields(this, fields);
  size_t hash = 1469598103934665603ull;
  for (int f : fields) hash = (hash ^ static_cast<unsigned int>(f)) * 1099511628211ull;
  return hash;
}

bool CHashableVideoProperties::SameNode(const CVideoProperties* other) const {
  if (!other) return false;
  int a[10], b[10];
  NodeFields(this, a);
  NodeFields(other, b);
  for (int i = 0; i < 10; ++i)
    if (a[i] != b[i]) return false;
  return true;
}

}  // namespace Corvane::Mox
