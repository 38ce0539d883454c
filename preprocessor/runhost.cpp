#include "preprocessor/runhost.h"

void tRunHost::sessionBegins(precomp::KorelPre16& /*session*/, const tString& /*copy*/,
                             const tString& /*source*/) {}
void tRunHost::sessionDone(precomp::KorelPre16& /*session*/) {}
