#include "preprocessor/run/runhost.h"

#include "preprocessor/convert/foreign.h"

tString tRunHost::converterDirectory() const {
  return programDirectory();
}

void tRunHost::addOptions(tRunOptions& /*options*/) const {}
void tRunHost::takeOutput(const tString& /*source*/, const std::string& /*text*/) {}
void tRunHost::sessionBegins(precomp::KorelPre16& /*session*/, const tString& /*copy*/,
                             const tString& /*source*/) {}
void tRunHost::sessionBeginsAgain(precomp::KorelPre16& /*session*/) {}
void tRunHost::sessionDone(precomp::KorelPre16& /*session*/) {}
void tRunHost::sourceRead(const tString& /*source*/) {}
void tRunHost::outputDone(const tString& /*source*/, const tString& /*name*/, bool /*written*/) {}
void tRunHost::diagnosed(const precomp::tDiagnosis& /*diagnosis*/) {}
void tRunHost::diagnosedInBrief(int /*code*/) noexcept {}
