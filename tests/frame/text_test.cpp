// SPDX-License-Identifier: Apache-2.0
#include "frame/text.h"

#include <gtest/gtest.h>

#include <system_error>

namespace {

TEST(HandOut, CopiesOnlyWhatFitsAndNeverTerminates) {
  char buffer[8] = "#######";
  EXPECT_EQ(handOut("abcd", buffer, 3), 4);
  EXPECT_STREQ(buffer, "#######");
  EXPECT_EQ(handOut("abcd", buffer, 4), 4);
  EXPECT_STREQ(buffer, "abcd###");
  EXPECT_EQ(handOut("", nullptr, 0), 0);
  EXPECT_EQ(handOut("abcd", nullptr, -1), 4);
}

TEST(GBK, EncodesChineseInTwoBytes) {
  EXPECT_EQ(toGBK("概率a"),
            "\xb8\xc5\xc2\xca"
            "a");  // GB 2312: 2437, 2042 in rows 24 and 34
  EXPECT_THROW(toGBK("\xff"), std::system_error);
}

}  // namespace
