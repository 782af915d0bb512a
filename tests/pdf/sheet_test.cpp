// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <iconv.h>

#include <algorithm>
#include <string>

#include "pdf/distribution_support.h"

namespace {

const std::string kEnd = "\n\\\\\\\\\n";  // four backslashes between line feeds

/// GBK to UTF-8; fails the test on bytes that are not GBK.
std::string decoded(const char* gbk) {
  const iconv_t converter = iconv_open("UTF-8", "GBK");
  std::string input = gbk, output(2 * input.size() + 4, '\0');
  char *from = input.data(), *to = output.data();
  std::size_t left = input.size(), room = output.size();
  EXPECT_NE(iconv(converter, &from, &left, &to, &room), static_cast<std::size_t>(-1)) << gbk;
  iconv_close(converter);
  output.resize(output.size() - room);
  return output;
}

std::string sheet(const Distribution& fun) { return decoded(pdf_getLatexExpress(fun)); }

TEST(Sheet, Normal) {
  EXPECT_EQ(sheet(Distribution(43, {0.5, 2})),
            "\\text{Normal}\\begin{cases}\n"
            "概率密度函数:&PDF(x)=\\dfrac{1}{b\\sqrt{2\\pi}}\\exp(-\\dfrac{(x-a)^2}{2b^2})" +
                kEnd + "累积分布函数:&CDF(x)=\\dfrac{1}{2}(1+\\mathbf{erf}(\\dfrac{x-a}{\\sqrt{2}b}))" + kEnd +
                "分布均值:&a" + kEnd + "分布方差:&b^2" + kEnd + "参数范围:&b>0" + kEnd +
                "参数取值:&a=0.5,b=2\n\\end{cases}\n");
}

TEST(Sheet, WrapperTakesTheNextLetters) {
  const std::string inner = "概率密度函数:&\\psi(x)=\\dfrac{1}{b\\sqrt{2\\pi}}\\exp(-\\dfrac{(x-a)^2}{2b^2})" + kEnd +
                            "累积分布函数:&\\Psi(x)=\\dfrac{1}{2}(1+\\mathbf{erf}(\\dfrac{x-a}{\\sqrt{2}b}))" + kEnd +
                            "分布均值:&a" + kEnd + "分布方差:&b^2" + kEnd + "参数范围:&b>0" + kEnd +
                            "参数取值:&a=0,b=1\n\\end{cases}\n" + kEnd;
  EXPECT_EQ(sheet(Distribution(100010043)), "\\text{GenExp-Normal}\\begin{cases}子模型:&\\begin{cases}\n" + inner +
                                                "主模型:&\\begin{cases}\n"
                                                "概率密度函数:&PDF(x)=\\dfrac{c}{\\exp(c)-1}\\psi(x)\\exp(c\\Psi(x))" +
                                                kEnd + "累积分布函数:&CDF(x)=\\dfrac{\\exp(c\\Psi(x))-1}{\\exp(c)-1}" +
                                                kEnd + "参数范围:&c>0" + kEnd +
                                                "参数取值:&c=1\n\\end{cases}\n\\end{cases}");
  EXPECT_EQ(sheet(Distribution(100030043)), "\\text{GenPower-Normal}\\begin{cases}子模型:&\\begin{cases}\n" + inner +
                                                "主模型:&\\begin{cases}\n"
                                                "概率密度函数:&PDF(x)=\\psi(x)(cd\\Psi(x)^{d-1}+(1-c)f\\Psi(x)^{f-1})" +
                                                kEnd + "累积分布函数:&CDF(x)=c\\Psi(x)^d+(1-c)\\Psi(x)^f" + kEnd +
                                                "参数范围:&0 \\leq c \\leq 1, d > 0, f > 0" + kEnd +
                                                "参数取值:&c=0.5,d=1,f=1\n\\end{cases}\n\\end{cases}");
}

TEST(Sheet, LettersSkipE) {
  // Three inner parameters: d, f, g. Four: f, g, h.
  EXPECT_NE(sheet(Distribution(100030021)).find("参数取值:&d=0.5,f=1,g=1\n"), std::string::npos);
  EXPECT_NE(sheet(Distribution(100030001)).find("参数取值:&f=0.5,g=1,h=1\n"), std::string::npos);
}

TEST(Sheet, UniformHasItsLinesShifted) {  // Uniform_sheet
  const std::string text = sheet(Distribution(55));
  EXPECT_NE(text.find("分布均值:&a\\leq x\\leq b" + kEnd + "分布方差:&\\dfrac{a+b}{2}" + kEnd +
                      "参数范围:&\\dfrac{1}{12}(b-a)^2" + kEnd + "参数取值:&a=100,b=-100\n"),
            std::string::npos)
      << text;
}

TEST(Sheet, EveryOneIsWholeAndShowsItsParameters) {
  for (int32_t code : allCodes()) {
    const Distribution fun(code);
    const std::string text = sheet(fun);
    EXPECT_EQ(std::ranges::count(text, '{'), std::ranges::count(text, '}')) << text;
    EXPECT_EQ(std::ranges::count(text, '('), std::ranges::count(text, ')')) << text;
    EXPECT_EQ(text.find('#'), std::string::npos) << text;
    EXPECT_EQ(text.rfind("\\text{" + std::string(pdf_getName(fun)) + "}\\begin{cases}", 0), 0u);
    EXPECT_EQ(text.find("PMF(") != std::string::npos, code == 46) << text;
    std::size_t shown = 0;
    for (char letter = 'a'; letter <= 'z'; ++letter)
      for (const char before : {'&', ','}) shown += text.find({before, letter, '='}) != std::string::npos;
    EXPECT_EQ(shown, fun.params().size()) << text;
    EXPECT_EQ(text.find("e=", text.find("参数取值:")), std::string::npos) << text;
  }
}

}  // namespace
