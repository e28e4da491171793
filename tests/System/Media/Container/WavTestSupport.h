#pragma once
// WAVE bytes for the WAV tests: little-endian fields, chunks with their pad
// byte, format structures, and whole RIFF / RF64 / Wave64 files.

#include <cstdint>
#include <string>
#include <vector>

namespace WavTest {

inline std::string Le(uint64_t value, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
  return bytes;
}

// A chunk: ID, size (the payload's unless given), payload, pad byte when odd.
inline std::string Chunk(const std::string& id, const std::string& payload, int64_t size = -1) {
  std::string bytes = id + Le(size < 0 ? payload.size() : static_cast<uint64_t>(size), 4) + payload;
  if (payload.size() & 1) bytes.push_back('\0');
  return bytes;
}

inline std::string Format(int tag, int channels, int rate, int bits, int blockAlign = 0, const std::string& extra = "") {
  if (!blockAlign) blockAlign = channels * bits / 8;
  std::string bytes = Le(tag, 2) + Le(channels, 2) + Le(rate, 4) + Le(static_cast<uint64_t>(rate) * blockAlign, 4) +
                      Le(blockAlign, 2) + Le(bits, 2);
  if (tag != 1 || !extra.empty()) bytes += Le(extra.size(), 2) + extra;
  return bytes;
}

// "RIFF" (or another ID), its size, "WAVE", then the chunks.
inline std::string Riff(const std::string& chunks, const std::string& id = "RIFF", int64_t size = -1) {
  return id + Le(size < 0 ? chunks.size() + 4 : static_cast<uint64_t>(size), 4) + "WAVE" + chunks;
}

// Frames of interleaved samples whose bytes count up.
inline std::string Essence(size_t bytes) {
  std::string essence(bytes, '\0');
  for (size_t i = 0; i < bytes; ++i) essence[i] = static_cast<char>((i * 7 + 3) & 0xFF);
  return essence;
}

// The 602 fixed bytes of "bext" with text fields and a time reference.
inline std::string BroadcastExtension(const std::string& description, const std::string& originator,
                                      uint64_t timeReference, const std::string& history = "") {
  std::string bytes = description;
  bytes.resize(256, '\0');
  std::string field = originator;
  field.resize(32, '\0');
  bytes += field;
  bytes += std::string(32, '\0');   // originator reference
  bytes += "2026-11-23";            // origination date
  bytes += "22:30:00";              // origination time
  bytes += Le(timeReference, 8);
  bytes += Le(2, 2);                // version
  bytes += std::string(64, '\0');   // UMID
  bytes += Le(static_cast<uint16_t>(-2300), 2) + Le(450, 2) + Le(static_cast<uint16_t>(-100), 2) +
           Le(static_cast<uint16_t>(-1800), 2) + Le(static_cast<uint16_t>(-2000), 2);
  bytes += std::string(180, '\0');
  return bytes + history;
}

// A Wave64 GUID of a four-character name under the common tail.
inline std::string Guid64(const std::string& name) {
  const unsigned char tail[12] = {0xF3, 0xAC, 0xD3, 0x11, 0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A};
  return name + std::string(reinterpret_cast<const char*>(tail), 12);
}

inline std::string Wave64Chunk(const std::string& guid, const std::string& payload) {
  std::string bytes = guid + Le(payload.size() + 24, 8) + payload;
  while (bytes.size() % 8) bytes.push_back('\0');
  return bytes;
}

inline std::string Wave64(const std::string& chunks) {
  const unsigned char riff[16] = {'r', 'i', 'f', 'f', 0x2E, 0x91, 0xCF, 0x11,
                                  0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};
  return std::string(reinterpret_cast<const char*>(riff), 16) + Le(chunks.size() + 40, 8) + Guid64("wave") + chunks;
}

}  // namespace WavTest
