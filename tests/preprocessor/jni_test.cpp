// The Java entry points against a virtual machine that fails on order. A real one, which seldom
// fails, runs in tests/java.

#include <gtest/gtest.h>
#include <jni.h>

#include "include/krpre.h"
#include "preprocessor/host/jnistring.h"
#include "tests/support/javamachine.h"

namespace {

TEST(JavaHost, SeesEachFailureAndLosesNothing) {
  int failures = 0;
  for (int step = 1; step <= 20; ++step) {
    tMachine machine;
    machine.failingStep = step;
    machine.elements = {u"", u"/DA=\u00e1", nullptr, u"-T"};
    Java_Krpre_prebuild(machine.environment(), nullptr, tMachine::kArray);
    EXPECT_EQ(machine.pending, machine.failures > 0) << step;
    EXPECT_EQ(machine.callsWhilePending, 0) << step;
    EXPECT_EQ(machine.references, 0) << step;
    EXPECT_EQ(machine.pinned, 0) << step;
    failures += machine.failures;
  }
  EXPECT_EQ(failures, 15);  // five steps for each of three strings
}

TEST(JavaHost, IsToldOfAHeaderThatDoesNotFit) {
  for (int step = 0; step <= 2; ++step) {
    tMachine machine;
    machine.failingStep = step;
    jstring text = Java_Krpre_getCH(machine.environment(), nullptr, tMachine::text(u"/none"));
    EXPECT_EQ(text == nullptr, step != 0);
    EXPECT_EQ(machine.pending, step != 0);
    EXPECT_EQ(machine.callsWhilePending, 0);
    EXPECT_EQ(machine.pinned, 0);
  }
}

TEST(JavaHost, ThrowsByName) {
  tMachine machine;
  JNU_ThrowByName(machine.environment(), "java/lang/Error", nullptr);
  EXPECT_EQ(machine.thrown, "java/lang/Error");
  EXPECT_EQ(machine.references, 0);
  EXPECT_EQ(JNU_GetStringNativeChars(machine.environment(), nullptr), nullptr);
}

}  // namespace
