#include "ssvp40xpf/sssto.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "ssvp40xpf/sslexlexeme.h"

TEST(Pool, TakesStorageFromAnotherThread) {
  std::vector<SSLexLexeme*> lexemes;
  std::thread([&] {
    for (int i = 0; i < 3000; ++i) lexemes.push_back(SSLexLexeme::make("text", 4, 1, 1, 1));
  }).join();
  for (SSLexLexeme* const lexeme : lexemes) {
    EXPECT_STREQ(lexeme->text(), "text");
    lexeme->refDec();
  }
}
