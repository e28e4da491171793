#pragma once
// LineCodec: reads one picture line of a pixel format into 16-bit component
// lines and writes it back. Every stage works on these component lines, so a
// stage needs no code per pair of formats: a layout change is a decode and an
// encode, and the arithmetic stages work on the values in between.
//
// Slots: 0 luma (G for RGB), 1 Cb (B), 2 Cr (R), 3 alpha. Chroma slots hold
// one value per chroma sample of the line (the picture width divided by the
// horizontal factor, rounded up). Values keep the format's significant bits
// (0..1023 for 10-bit samples in 16-bit words).

#include <cstdint>

#include "System/Media/PixelDataReference.h"

namespace Corvane::Mox {

struct ComponentLines {
  static constexpr int SlotCount = 4;
  uint16_t* slot[SlotCount] = {};
};

struct LineCodec {
  enum SlotMask : unsigned { Luma = 1, Chroma = 6, Alpha = 8, All = 15 };
  static constexpr int MaxSteps = 12;

  // One component of a block: read from byte offset of every block.
  // One component of a block, read from a byte offset of every block; slot
  // -1 is padding (X), written all ones.
  struct Step {
    int plane;
    int slot;
    int offset;      // bytes into the block
    int perBlock;    // samples of this slot per block
    int occurrence;  // which of them
  };
  using PackedDecode = void (*)(const uint8_t* line, int width, ComponentLines& lines);
  using PackedEncode = void (*)(const ComponentLines& lines, int width, uint8_t* line, int lineBytes);

  unsigned int format = 0;
  int bitDepth = 0;
  int horizontalFactor = 1;  // chroma subsampling
  int verticalFactor = 1;
  bool rgb = false;
  bool alpha = false;
  int sampleBytes = 1;  // 1 or 2
  bool bigEndian = false;
  int planeCount = 0;
  int blockWidth[4] = {};
  int blockBytes[4] = {};
  int planeDivisor[4] = {};
  unsigned planeSlots[4] = {};  // slot mask each plane holds
  int stepCount = 0;
  Step steps[MaxSteps] = {};
  PackedDecode packedDecode = nullptr;  // the bit-packed formats
  PackedEncode packedEncode = nullptr;
  // Formats outside the regular sample layouts: Bayer mosaics (cell holds
  // the slot of each place of the 2x2 cell) and packed floats (cell holds
  // the slot of each float of a pixel).
  enum Kind { Regular, TenBit, Mosaic, Float };
  Kind kind = Regular;
  int cell[4] = {};

  // The codec of a format (aliases resolved); null when the format is not
  // one the converter can read and write.
  static const LineCodec* Find(unsigned int format);

  // The chroma width of a line of the given picture width.
  int GetChromaWidth(int width) const { return (width + horizontalFactor - 1) / horizontalFactor; }
  // Slot values a line needs room for (blocks may cover pixels beyond the width).
  static int GetSlotCapacity(int width) { return width + 64; }
  // The slot of a component letter; -1 for padding ('X'), -2 for letters no
  // codec knows.
  static int SlotOf(char letter);
  int GetMaximum() const { return (1 << bitDepth) - 1; }

  // Whether lines are read with the lines around them (the mosaics).
  bool NeedsNeighbourLines() const { return kind == Mosaic; }

  // Reads picture line y of the slots in mask. Planes with fewer lines than
  // the picture are read at line y / divisor.
  void Decode(const SamplePlanes& planes, int width, int y, ComponentLines& lines, unsigned mask = All) const;
  // Writes picture line y; a plane with fewer lines is written only on the
  // first picture line of each of its lines.
  void Encode(const ComponentLines& lines, int width, int y, SamplePlanes& planes, unsigned mask = All) const;
};

}  // namespace Corvane::Mox
