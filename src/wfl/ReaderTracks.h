#pragma once
// The "tracks" member of a reader's script value: { video, audio, subtitle },
// each an object whose members "0", "1", ... are the reader's tracks of that
// kind, with members taken from the track descriptions.

namespace Corvane::Mox {
class CContainerReader;
}

namespace Corvane::Mox::WFL {

class CComponentValue;
class CSymbolDictionary;

// Adds "tracks" to `members`; a null reader gives empty kinds.
void AddReaderTracks(CSymbolDictionary* members, CComponentValue* readerValue, CContainerReader* reader);

}  // namespace Corvane::Mox::WFL
