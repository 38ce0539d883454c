#include "preprocessor/run/banner.h"

#include "preprocessor/messages/messages.h"

void printBanner() {
  constexpr const char* kVersion = KRPRE_BANNER_VERSION;
  // Kept on purpose: the edition is empty and leaves a blank before the line end.
  constexpr const char* kEdition = "";
  printMessage(eMessage::kBanner, {kVersion, __DATE__ " - " __TIME__, kEdition});
}
