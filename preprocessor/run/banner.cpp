#include "preprocessor/run/banner.h"

#include "preprocessor/messages/messages.h"

void printBanner() {
  constexpr const char* kVersion = "7.00.240223P";
  // Kept on purpose: the edition is empty and leaves a blank before the line end.
  constexpr const char* kEdition = "";
  printMessage(eMessage::kBanner, {kVersion, __DATE__ " - " __TIME__, kEdition});
}
