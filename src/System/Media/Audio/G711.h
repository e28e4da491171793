#pragma once
// G.711 companding: A-law and µ-law codes to and from 16-bit linear values.
// The expansions give the segment midpoints of the ITU-T G.711 tables (the
// same values as the G.191 reference routines); the compressions quantise
// the top 13 (A-law) or 14 (µ-law) bits of a 16-bit value.

#include <cstdint>

namespace Corvane::Mox::G711 {

int16_t AlawExpand(uint8_t code);
int16_t UlawExpand(uint8_t code);
uint8_t AlawCompress(int16_t value);
uint8_t UlawCompress(int16_t value);

// Whole-table forms for buffer work: 256 linear values per law, and the
// compression tables indexed by the 16-bit value read as unsigned and shifted
// right by 3 (A-law, 8,192 entries) or 2 (µ-law, 16,384 entries).
const int16_t* AlawExpansionTable();
const int16_t* UlawExpansionTable();
const uint8_t* AlawCompressionTable();
const uint8_t* UlawCompressionTable();

}  // namespace Corvane::Mox::G711
