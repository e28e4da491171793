#pragma once
// Shared parts of the descriptive representations of readers and writers.

namespace Corvane::Mox {

class CContainer;
class CProperties;
class CString;

// "%lld B", "%.3f kB", "%.3f MB" or "%.3f GB" in decimal units.
CString* DescribeByteSize(long long size);
// "type" (described by the format name), "manifest", "properties" and, when
// there are any, "extension".
void DescribeContainer(const CContainer* container, CProperties* bag);

}  // namespace Corvane::Mox
