#include <gtest/gtest.h>

#include <string>

#include "quillon/support/operations.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

std::string TextOf(FailureCode code) {
  char text[200];
  return support::ErrorText(code, text, sizeof text);
}

TEST(ErrorTexts, ARegisteredTextKeepsItsCodeAndIsFoundByIt) {
  const FailureCode first = support::RegisterErrorString(kSeverityError, "The form is missing.");
  const FailureCode second = support::RegisterErrorString(kSeverityError, "Try again.");
  EXPECT_GE(first, kErrorFirstRegistered);
  EXPECT_NE(first, second);
  EXPECT_EQ(support::RegisterErrorString(kSeverityError, "The form is missing."), first);
  EXPECT_EQ(TextOf(first), "The form is missing.");
  EXPECT_EQ(TextOf(second), "Try again.");
  EXPECT_EQ(test::RaisedBy([] { support::RegisterErrorString(4, nullptr); }), kErrorBadParameter);
}

TEST(ErrorTexts, TextsAreCutToTheBufferAndNothingIsWrittenWithoutOne) {
  char text[6] = "-----";
  EXPECT_STREQ(support::ErrorText(kErrorNoMemory, text, 6), "There");
  EXPECT_EQ(support::ErrorText(kErrorNoMemory, nullptr, 0), nullptr);
  char untouched = '-';
  support::ErrorText(kErrorNoMemory, &untouched, 0);
  EXPECT_EQ(untouched, '-');
}

}  // namespace
}  // namespace quillon
