// SPDX-License-Identifier: Apache-2.0
#include "page.h"

#include <ctime>
#include <fstream>

#include "resources.h"
#include "svg_plot.h"

namespace {

// The program's own command line as a shell takes it; empty where the system does not tell it.
std::string commandLine() {
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  std::string result;
  for (std::string word; std::getline(file, word, '\0');) {
    const bool plain = !word.empty() && word.find_first_of(" \t\n\"'`$\\&|;<>()*?[]#~!{}") == std::string::npos;
    std::string quoted = "'";
    for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    result += (result.empty() ? "" : " ") + (plain ? word : quoted + "'");
  }
  return result;
}

std::string footer() {
  const std::string command = commandLine();
  return command.empty() ? "" : "<footer>This page again: <code>" + escaped(command) + "</code></footer>\n";
}

}  // namespace

std::string htmlPage(const std::string& title, const std::string& body) {
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      escaped(title) + "</title>\n<style>\n";
  for (const std::string_view part : pageStyles()) html += part;
  html += "</style>\n</head>\n<body>\n<main>\n" + body +
          "<noscript><p class=\"notice\">The formulas need JavaScript.</p></noscript>\n" + footer() +
          "</main>\n<script>\n";
  for (const std::string_view part : pageScripts()) html += part;
  return html + "</script>\n</body>\n</html>\n";
}

std::string formula(const std::string& latex) {
  return "<div class=\"formula\" data-tex=\"" + escaped(latex) + "\"></div>";
}

std::string figure(const std::string& id, const std::string& legend, const std::string& svg,
                   const std::string& caption) {
  return "<figure class=\"card\" id=\"" + id + "\">\n" + legend + svg + "<figcaption>" + caption +
         "</figcaption></figure>\n";
}

std::string today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local)};
}
