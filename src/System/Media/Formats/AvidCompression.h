#pragma once
// AvidCompression: the numeric compression identifiers found in Avid-style
// media files, each with the family code it belongs to, the format code it is
// equivalent to and a short detail text.

namespace Corvane::Mox::AvidCompression {

// The family code ("AVdn", "AVin", ...); 0 for an unknown identifier.
unsigned int GetFormat(int id);
// The equivalent format code ("dn8h", "ai5q", ...); 0 for an unknown identifier.
unsigned int GetEquivalentFormat(int id);
// The detail text ("HD HQ 1080p"); null for an unknown identifier.
const char* GetDetail(int id);
int GetCount();

}  // namespace Corvane::Mox::AvidCompression
