#include "preprocessor/htmlpage.h"

bool DoKRHPreprocessor(tDiskMan&, tAutoArray<tString>&, bool, bool) {
  return false;
}

void ClearTempKRHFiles(tDiskMan&, tAutoArray<tString>&) {}
