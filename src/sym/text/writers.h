// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "sym/node/node.h"

/// The two written forms of a node. Writers recurse: they bear trees as deep as the stack.
namespace Sym {

// Text columns of the table of kinds: each fills the cached text of a node.
void textNumber(const SymObject& node);
void textVariable(const SymObject& node);
void textAdd(const SymObject& node);
void textMul(const SymObject& node);
void textPow(const SymObject& node);
void textCall(const SymObject& node);  ///< the kind's name and the arguments in brackets

/// The cached text, built when there is none.
const std::string& plainText(const SymObject& node);

/// The LaTeX form of a kind, a column of the table of kinds.
struct LatexForm {
  enum Layout : uint8_t {
    Whole,    ///< a writer of its own
    Around,   ///< coefficient, open, the arguments joined by ",", close
    Name,     ///< the same with \mathbf{name}( and )
    Indexed,  ///< \mathbf{name}_{first}(second); as Name with one argument
  };
  Layout layout;
  const char* open = "";
  const char* close = "";
  void (*whole)(const SymObject& node, std::string& out) = nullptr;
};

inline constexpr LatexForm texName{LatexForm::Name};
inline constexpr LatexForm texIndexed{LatexForm::Indexed};
constexpr LatexForm tex(const char* open, const char* close = ")") { return {LatexForm::Around, open, close}; }
constexpr LatexForm texBy(void (*whole)(const SymObject& node, std::string& out)) {
  return {LatexForm::Whole, "", "", whole};
}

void latexNumber(const SymObject& node, std::string& out);
void latexVariable(const SymObject& node, std::string& out);
void latexAdd(const SymObject& node, std::string& out);
void latexMul(const SymObject& node, std::string& out);
void latexPow(const SymObject& node, std::string& out);

/// Appends the LaTeX form.
void writeLatex(const SymObject& node, std::string& out);

// Shared by both forms.

/// The coefficient before a function: nothing for 1, "-" for -1, else the number and the sign of multiplication.
void coefPrefix(double coef, const char* times, std::string& out);

/// Whether an operand of a power or a factor below a fraction line stands in brackets.
bool needsBrackets(const SymObject& operand);

/// The factors of a product, those to a negative power apart.
struct Fraction {
  explicit Fraction(const SymObject& product);
  std::vector<const SymObject*> numerator, denominator;  ///< the latter as powers
};

/// Whether a factor above the fraction line stands in brackets.
bool factorNeedsBrackets(const SymObject& factor);

}  // namespace Sym
