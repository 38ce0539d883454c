#include "preprocessor/run/failure.h"

#include <exception>

#include "lib_base/fatal.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"

tString reportException() {
  try {
    throw;
  } catch (const tFatalError& error) {
    qdprintf("%s %s %s %s %u\n", error.text(), translate("in file").c_str(), error.unit(),
             translate("at line").c_str(), error.line());
    return tString::format("%s in file %s at line %u", error.text(), error.unit(), error.line());
  } catch (const std::exception& error) {
    qdprintf("KOREL %s: %s\n", translate("Preprocessor").c_str(), error.what());
    return {error.what()};
  } catch (...) {
    qdprintf("KOREL %s: %s\n", translate("Preprocessor").c_str(),
             translate("unknown failure").c_str());
    return tString::borrow("unknown failure");
  }
}
