#pragma once
// Builds a stage map from an X-macro table of rows
// MOX_STAGE_ROW(InputFormat, InputMatrix, OutputFormat, OutputMatrix),
// where F("code") names a four-character code.

#include <vector>

#include "System/Media/Filter/VideoConverters/Stage.h"

#define MOX_STAGE_MAP(file)                                                                       \
  [] {                                                                                            \
    std::vector<CStage::Row> rows;                                                                \
    auto F = [](const char(&code)[5]) { return FourCC(code); };                                   \
    auto add = [&](unsigned int in, int inMatrix, unsigned int out, int outMatrix) {              \
      rows.push_back({{in, static_cast<unsigned char>(inMatrix)}, {out, static_cast<unsigned char>(outMatrix)}}); \
    };
#define MOX_STAGE_ROW(in, inMatrix, out, outMatrix) add(in, inMatrix, out, outMatrix);
#define MOX_STAGE_MAP_END \
  return rows;            \
  }()
