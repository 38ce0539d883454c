#include "preprocessor/run/banner.h"

#include "lib_base/output.h"
#include "lib_base/translate.h"

void printBanner() {
  constexpr const char* kVersion = "7.00.240223P";
  constexpr const char* kEdition = "";
  qdprintf("\n----------------------------------------------------------------------\n");
  // Kept on purpose: the empty edition leaves a blank before the line end.
  qdprintf("KOREL %s 9.x - %s %s - %s - %s %s\n", translate("Preprocessor").c_str(),
           translate("Build").c_str(), kVersion, __DATE__, __TIME__, kEdition);
  qdprintf("%s - %s.\n\n", translate("The krpre authors").c_str(),
           translate("Released under the MIT licence").c_str());
}
