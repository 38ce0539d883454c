#include "preprocessor/inlineblock.h"

bool DoBCPreprocessor(tDiskMan&, tAutoArray<tString>&) {
  return false;
}

void ClearTempBCFiles(tDiskMan&, tAutoArray<tString>&) {}
