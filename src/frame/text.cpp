// SPDX-License-Identifier: Apache-2.0
#include "frame/text.h"

#include <iconv.h>

#include <cerrno>
#include <cstring>
#include <system_error>

int32_t handOut(std::string_view text, char* out, int32_t capacity) {
  const auto length = static_cast<int64_t>(text.size());
  if (length > 0 && length <= capacity) std::memcpy(out, text.data(), text.size());
  return static_cast<int32_t>(length);
}

std::string toGBK(std::string_view utf8) {
  const iconv_t converter = iconv_open("GBK", "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1)) throw std::system_error(errno, std::generic_category(), "iconv GBK");
  std::string input(utf8);
  std::string output(utf8.size(), '\0');  // no character is longer in GBK than in UTF-8
  char* from = input.data();
  char* to = output.data();
  std::size_t left = input.size();
  std::size_t room = output.size();
  const bool failed = iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
  const int error = errno;
  iconv_close(converter);
  if (failed) throw std::system_error(error, std::generic_category(), "text outside GBK");
  output.resize(output.size() - room);
  return output;
}
